#include "config/loginscript.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "foundation/byteorder.h"
#include "foundation/texttools.h"
#include "foundation/vnarrowstring.h"
#include "profile/vprofileencodedstring.h"

namespace connectdialog {

namespace {

constexpr char16_t kUnitSeparator = 31;
constexpr std::size_t kTerminator = 2;  ///< zero bytes that decoding appends
constexpr std::uint8_t kInitialCarriageReturn = 1 << 2;
constexpr std::array<std::uint8_t, 7> kItemFlags = {1 << 7, 1 << 6, 1 << 5, 1 << 4, 1 << 3, 1 << 1, 1 << 0};

enum class Strings { kNarrow, kWide, kUnread };

Strings StringsOf(char16_t letter) {
    if (letter == u'u') return Strings::kWide;
    return letter == u'm' || letter == u'l' ? Strings::kUnread : Strings::kNarrow;
}

VUnicodeString TakeNarrow(std::string_view& bytes) {
    const std::size_t length = strnlen(bytes.data(), bytes.size());
    VNarrowString narrow;
    narrow.MarkSensitive();
    narrow.Append(bytes.data(), length);
    bytes.remove_prefix(length < bytes.size() ? length + 1 : length);
    return VUnicodeString(narrow);
}

VUnicodeString TakeWide(std::string_view& bytes) {
    const auto unitAt = [&](std::size_t i) {
        return LoadLittleEndian<std::uint16_t>(reinterpret_cast<const std::uint8_t*>(bytes.data()) + 2 * i);
    };
    const std::size_t units = bytes.size() / 2;
    std::size_t length = 0;
    while (length < units && unitAt(length) != 0) ++length;
    VUnicodeString text;
    text.MarkSensitive();
    text.Resize(length);
    for (std::size_t i = 0; i < length; ++i) text.MutableAt(i) = unitAt(i);
    bytes.remove_prefix(length < units ? 2 * (length + 1) : bytes.size());
    return text;
}

VUnicodeString ConvertItems(std::string_view bytes, std::uint8_t flags, Strings strings) {
    std::vector<VUnicodeString> texts;
    for (std::size_t item = 0; !bytes.empty(); ++item) {
        const bool flag = item < kItemFlags.size() && (flags & kItemFlags[item]) != 0;
        VUnicodeString expect = strings == Strings::kWide ? TakeWide(bytes) : TakeNarrow(bytes);
        VUnicodeString send = strings == Strings::kWide ? TakeWide(bytes) : TakeNarrow(bytes);
        if (!flag && expect.IsEmpty() && send.IsEmpty()) continue;
        texts.push_back(flag ? u"1"_v : u"0"_v);
        texts.push_back(std::move(expect));
        texts.push_back(std::move(send));
    }
    std::vector<std::u16string_view> pieces;
    for (const VUnicodeString& text : texts) pieces.insert(pieces.end(), {text.View(), {&kUnitSeparator, 1}});
    return VConcatenate(pieces, Str::SensitiveState::kSensitive);
}

}  // namespace

ConvertedLoginScript ConvertLoginScript(std::u16string_view oldForm) {
    const Strings strings = oldForm.empty() ? Strings::kNarrow : StringsOf(oldForm.back());
    if (strings != Strings::kNarrow) oldForm.remove_suffix(1);
    const VNarrowString decoded = VProfileEncodedString::DecodeScrambled(oldForm.data(), oldForm.size());
    ConvertedLoginScript script;
    script.text.MarkSensitive();
    if (decoded.GetLength() <= kTerminator) return script;
    std::string_view bytes = decoded.View().substr(0, decoded.GetLength() - kTerminator);
    const auto flags = static_cast<std::uint8_t>(bytes.front());
    bytes.remove_prefix(1);
    script.sendInitialCarriageReturn = (flags & kInitialCarriageReturn) != 0;
    if (strings != Strings::kUnread) script.text = ConvertItems(bytes, flags, strings);
    return script;
}

}  // namespace connectdialog
