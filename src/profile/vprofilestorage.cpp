#include "profile/vprofilestorage.h"

#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "profile/vprofilekey.h"
#include "profile/vvariant.h"

namespace connectdialog {

bool VProfileDword::ReadStored(VProfileKey* key, std::uint32_t& value) const {
    return key != nullptr && key->ReadDword(GetName().GetData(), value);
}
void VProfileDword::WriteStored(VProfileKey& key, std::uint32_t value) {
    key.WriteDword(GetName().GetData(), value);
    SetMissing(false);
}

bool VProfileSz::ReadStored(VProfileKey* key, VUnicodeString& value) const {
    return key != nullptr && key->ReadString(GetName().GetData(), value);
}
void VProfileSz::WriteStored(VProfileKey& key, const VUnicodeString& value) {
    key.WriteString(GetName().GetData(), value.GetData());
    SetMissing(false);
}

bool VProfileSz::Decode(VUnicodeString& value, const char* text, IProfileTextDecoder& decoder,
                        VReportMessageParams& report) {
    VNarrowString narrow;
    narrow.MarkSensitive();  // the text may be a password
    if (decoder.DecodeText(narrow, text, report, 1)) {
        value = VUnicodeString(narrow);
        return true;
    }
    if (report.GetCode() != kReportPlainText) return false;
    report.Clear();
    value = VUnicodeString(text);
    return true;
}

bool VProfileSz::GetVariantFrom(VVariant& out, const void* value, std::size_t, VReportMessageParams&) const {
    out = VVariant(*static_cast<const VUnicodeString*>(value));
    return true;
}
bool VProfileSz::PutValueFrom(IProfileValueExchange& exchange, const void* value, std::size_t,
                              const char16_t* name) const {
    return exchange.PutString(static_cast<const VUnicodeString*>(value)->GetData(), name);
}
bool VProfileSz::SetVariantInto(const VVariant& in, void* value, std::size_t, VReportMessageParams& report) const {
    VVariant text;
    if (!VVariant::Convert(in, VVariantType::kText, text)) return ReportFailure(report, kReportBadVariant);
    *static_cast<VUnicodeString*>(value) = text.GetText();
    return true;
}
bool VProfileSz::GetValueInto(IProfileValueExchange& exchange, void* value, std::size_t, const char16_t* name) const {
    return exchange.GetString(*static_cast<VUnicodeString*>(value), name);
}

bool VProfileMultiSz::ReadStored(VProfileKey* key, VStringArray& value) const {
    return key != nullptr && key->ReadMultiString(GetName().GetData(), value);
}
void VProfileMultiSz::WriteStored(VProfileKey& key, const VStringArray& value) {
    key.WriteMultiString(GetName().GetData(), value);
    SetMissing(false);
}
bool VProfileMultiSz::Decode(VStringArray& value, const char* text, IProfileTextDecoder& decoder,
                             VReportMessageParams& report) const {
    return decoder.DecodeArray(value, text, report, !splits);
}

bool VProfileMultiSz::SetVariantInto(const VVariant& in, void* value, std::size_t, VReportMessageParams& report) const {
    return StringsFromVariant(in, *static_cast<VStringArray*>(value)) || ReportFailure(report, kReportBadVariant);
}
bool VProfileMultiSz::GetValueInto(IProfileValueExchange& exchange, void* value, std::size_t,
                                   const char16_t* name) const {
    return exchange.GetStringArray(*static_cast<VStringArray*>(value), name);
}
bool VProfileMultiSz::GetVariantOf(const VStringArray& value, VVariant& out) const {
    out = VariantFromStrings(value);
    return true;
}
bool VProfileMultiSz::PutValueOf(const VStringArray& value, IProfileValueExchange& exchange,
                                 const char16_t* name) const {
    return exchange.PutStringArray(value, name);
}

bool VProfileBinary::ReadRecord(VProfileKey* key, const VUnicodeString& name, std::span<std::byte> record) {
    auto size = static_cast<std::uint32_t>(record.size());
    return key != nullptr && key->ReadBinary(name.GetData(), record.data(), size) && size == record.size();
}
void VProfileBinary::WriteRecord(VProfileKey& key, std::span<const std::byte> record) {
    key.WriteBinary(GetName().GetData(), record.data(), static_cast<std::uint32_t>(record.size()));
    SetMissing(false);
}

}  // namespace connectdialog
