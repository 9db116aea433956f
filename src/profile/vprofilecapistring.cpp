#include "profile/vprofilecapistring.h"

#include <cstring>
#include <string>
#include <vector>

#include "foundation/hextext.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vtrace.h"
#include "platform/lasterror.h"
#include "platform/usersecrets.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kPrefix = u"CAPI:";

/// The wide text at the start of a block, up to its first zero or the block's end.
VUnicodeString TextOf(const std::uint8_t* data, std::size_t size) {
    const std::size_t room = size / sizeof(char16_t);
    VUnicodeString text;
    text.MarkSensitive();
    text.Resize(room);
    std::memcpy(&text.MutableAt(0), data, room * sizeof(char16_t));
    return text.Left(std::char_traits<char16_t>::length(text.GetData()));
}

}  // namespace

VUnicodeString VProfileCapiString::Protect(const VUnicodeString& text) {
    report.Clear();
    if (text.IsEmpty()) return {};
    std::vector<std::uint8_t> blob;
    if (!platform::ProtectForUser(text.GetData(), (text.GetLength() + 1) * sizeof(char16_t), blob))
        return FailFromSystem(kReportNotProtected);
    return EncodeHex(kPrefix, blob, HexCase::kUpper, Str::SensitiveState::kPlain);
}

VUnicodeString VProfileCapiString::Unprotect(const VUnicodeString& text) {
    report.Clear();
    std::u16string_view digits = text;
    if (digits.empty()) return {};
    if (digits.starts_with(kPrefix)) digits.remove_prefix(kPrefix.size());
    if (digits.size() % 2 != 0) return Fail(kReportOddDigits);
    std::vector<std::uint8_t> blob(digits.size() / 2);
    VBasicBuffer plain(blob.size());
    plain.SetSensitive(true);
    std::size_t size = 0;
    const bool isHex = DecodeHex(digits, blob.data()) == blob.size() || platform::FailWith(platform::kInvalidData);
    if (!isHex || !platform::UnprotectForUser(blob.data(), blob.size(), plain.GetData(), size))
        return FailFromSystem(kReportNotUnprotected);
    VUnicodeString result = TextOf(plain.GetData(), size);
    result.SetState(Str::SensitiveState::kPlain);
    return result;
}

VUnicodeString VProfileCapiString::Fail(std::uint32_t code) {
    report.SetMessage(code);
    report.AddInsert(GetName().GetData());
    VTrace(u"%1", report.GetText());
    return {};
}

VUnicodeString VProfileCapiString::FailFromSystem(std::uint32_t code) {
    VReportMessageParams cause(platform::GetLastErrorCode());
    report.SetMessage(code);
    report.AddInsert(GetName().GetData());
    report.AddInsert(cause.GetTextOneLine());
    VTrace(u"%1", report.GetText());
    return {};
}

bool VProfileCapiString::Read(VProfileKey* key) {
    VUnicodeString text;
    if (!ReadStored(key, text)) return false;
    VUnicodeString plain = Unprotect(text);
    plain.SetState(Get().GetState());
    Edit() = plain;
    unreadable = report.GetCode() == 0 ? VUnicodeString() : text;
    return true;
}

void VProfileCapiString::Save(VProfileKey& key, bool force) {
    if (!force && !IsMissing() && !IsChanged()) return;
    if (IsChanged()) unreadable.Empty();
    WriteStored(key, unreadable.IsEmpty() ? Protect(Get()) : unreadable);
    EditStored() = Get();
}

bool IsProtectedText(std::u16string_view stored) {
    return stored.starts_with(kPrefix);
}

bool ReadProtectedText(const VUnicodeString& valueName, const VUnicodeString& stored, VUnicodeString& text) {
    VProfileCapiString value;
    value.SetName(valueName);
    text = value.Unprotect(stored);
    text.MarkSensitive();
    return value.GetLastReport()->GetCode() == 0;
}

}  // namespace connectdialog
