#include "foundation/vsid.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/casefold.h"
#include "foundation/hextext.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

constexpr std::uint8_t kRevision = 1;
constexpr std::size_t kCountOffset = 1;
constexpr std::size_t kAuthorityOffset = 2;
constexpr std::uint64_t kLargestDecimalAuthority = 0xFFFFFFFF;

/// Takes the number up to the next `-`, or to the end, off the text, and the `-` with it.
bool TakeNumber(std::u16string_view& text, std::uint64_t limit, std::uint64_t& number) {
    std::u16string_view digits = text.substr(0, text.find(u'-'));
    text.remove_prefix(std::min(digits.size() + 1, text.size()));
    const bool isHexadecimal = digits.starts_with(u"0x") || digits.starts_with(u"0X");
    const std::uint64_t base = isHexadecimal ? 16 : 10;
    if (isHexadecimal) digits.remove_prefix(2);
    number = 0;
    for (const char16_t character : digits) {
        const unsigned value = HexDigitValue(character);
        if (value >= base) return false;
        number = number * base + value;
        if (number > limit) return false;
    }
    return !digits.empty();
}

}  // namespace

VSid::VSid(std::uint64_t authority, std::span<const std::uint32_t> subAuthorities) {
    if (authority > kMaxAuthority || subAuthorities.size() > kMaxSubAuthorities) return;
    std::uint8_t wide[sizeof(authority)];
    StoreBigEndian(authority, wide);
    std::copy(wide + 2, wide + sizeof(wide), bytes.begin() + kAuthorityOffset);
    bytes[0] = kRevision;
    bytes[kCountOffset] = static_cast<std::uint8_t>(subAuthorities.size());
    length = kHeaderLength;
    for (const std::uint32_t subAuthority : subAuthorities) {
        StoreLittleEndian(subAuthority, bytes.data() + length);
        length += sizeof(subAuthority);
    }
}

bool VSid::Load(std::span<const std::uint8_t> source) {
    const bool hasHeader = source.size() >= kHeaderLength && source[0] == kRevision;
    if (!hasHeader || source[kCountOffset] > kMaxSubAuthorities) return platform::FailWith(platform::kInvalidSid);
    const std::size_t needed = kHeaderLength + 4 * std::size_t{source[kCountOffset]};
    if (source.size() < needed) return platform::FailWith(platform::kInvalidSid);
    length = needed;
    std::copy_n(source.begin(), length, bytes.begin());
    return true;
}

bool VSid::LoadText(std::u16string_view text) {
    constexpr std::u16string_view kStart = u"S-1-";
    std::uint64_t authority = 0;
    bool isRead = EqualsNoCase(text.substr(0, kStart.size()), kStart);
    if (isRead) text.remove_prefix(kStart.size());
    // A `-` at the end would be dropped with the number before it.
    isRead = isRead && !text.ends_with(u'-') && TakeNumber(text, kMaxAuthority, authority);
    std::uint32_t subAuthorities[kMaxSubAuthorities] = {};
    std::size_t count = 0;
    for (std::uint64_t number = 0; isRead && !text.empty(); ++count) {
        isRead = count < kMaxSubAuthorities && TakeNumber(text, UINT32_MAX, number);
        if (isRead) subAuthorities[count] = static_cast<std::uint32_t>(number);
    }
    if (!isRead || count == 0) return platform::FailWith(platform::kInvalidSid);
    *this = VSid(authority, std::span(subAuthorities).first(count));
    return true;
}

VUnicodeString VSid::ToText() const {
    VUnicodeString text;
    if (!IsValid()) return text;
    const std::uint64_t authority = std::uint64_t{LoadBigEndian<std::uint16_t>(bytes.data() + kAuthorityOffset)} << 32 |
                                    LoadBigEndian<std::uint32_t>(bytes.data() + kAuthorityOffset + 2);
    text.Format(authority > kLargestDecimalAuthority ? u"S-1-0x%1!012llX!" : u"S-1-%1!llu!", authority);
    for (std::size_t at = kHeaderLength; at < length; at += 4) {
        VUnicodeString number;
        number.Format(u"-%1!u!", LoadLittleEndian<std::uint32_t>(bytes.data() + at));
        text += number;
    }
    return text;
}

bool operator==(const VSid& a, const VSid& b) {
    return a.IsValid() && std::ranges::equal(a.GetBytes(), b.GetBytes());
}

}  // namespace connectdialog
