#include "profile/vprofileblowfishstring.h"

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

template <>
bool VProfile2<VBlowfishString, VProfileSz>::GetVariant(VVariant& out, VReportMessageParams&) const {
    out = VVariant(current.GetCipherText());
    return true;
}
template <>
bool VProfile2<VBlowfishString, VProfileSz>::PutValue(IProfileValueExchange& exchange, const char16_t* name) const {
    return exchange.PutString(current.GetCipherText().GetData(), name);
}
template <>
bool VProfile2<VBlowfishString, VProfileSz>::SetVariant(const VVariant& in, VReportMessageParams& report) {
    VUnicodeString text;
    if (!SetVariantInto(in, &text, sizeof text, report)) return false;
    current.Set(current.DecipherBlowfish(text));
    return true;
}
template <>
bool VProfile2<VBlowfishString, VProfileSz>::GetValue(IProfileValueExchange& exchange, const char16_t* name) {
    VUnicodeString text;
    if (!exchange.GetString(text, name)) return false;
    current.Set(current.DecipherBlowfish(text));
    return true;
}

template <>
bool VProfile2<VBlowfishString, VProfileSz>::Read(VProfileKey* key) {
    VUnicodeString text;
    if (!ReadStored(key, text)) return false;
    current.Set(text);
    return true;
}

template <>
void VProfile2<VBlowfishString, VProfileSz>::Save(VProfileKey& key, bool force) {
    if (!force && !IsMissing() && !IsChanged()) return;
    WriteStored(key, current.GetText().IsEmpty() ? VUnicodeString() : current.EncipherBlowfish());
    stored.Set(current.GetText());
}

bool VProfileBlowfishString::Read(VProfileKey* key) {
    VUnicodeString text;
    if (!ReadStored(key, text)) return false;
    Edit().Set(Edit().DecipherBlowfish(text));
    EditStored().Set(GetText());
    SetMissing(false);
    return true;
}

bool VProfileBlowfishString::Load(VProfileKey* key, const VUnicodeString& defaultValue) {
    if (Read(key)) return true;
    Edit().Set(defaultValue);
    EditStored().Set(GetText());
    SetMissing(true);
    return false;
}

bool VProfileBlowfishString::Load(VProfileKey* key, const VUnicodeString& name, const VUnicodeString& defaultValue) {
    SetName(name);
    return Load(key, defaultValue);
}

}  // namespace connectdialog
