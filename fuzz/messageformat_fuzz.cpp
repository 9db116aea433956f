// Any text as a message template with arguments of every kind: counting and writing agree, and a template that does not
// fit its arguments gives its own text.
//
// The first byte chooses the flags and how many arguments there are.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>

#include "foundation/messageformat.h"
#include "foundation/stringerrors.h"
#include "foundation/vunicodestring.h"
#include "fuzz/require.h"
#include "platform/codepage.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

constexpr std::uint32_t kFlags[] = {kMessagePlain, kMessageOneLine, kMessageIgnoreInserts,
                                    kMessageOneLine | kMessageIgnoreInserts};

/// Nothing when the template or its arguments do not fit.
std::optional<std::u16string> Expand(const char16_t* text, const FormatArgument* arguments, std::size_t count,
                                     std::uint32_t flags) {
    try {
        std::u16string message(ExpandMessage(text, arguments, count, flags, nullptr), u'?');
        const std::size_t length = ExpandMessage(text, arguments, count, flags, message.data());
        Require(length == message.size(), "the count is what is written");
        return message;
    } catch (const InvalidParameter&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const FormatArgument arguments[] = {FormatArgument(u"wide \u4E00"),
                                        FormatArgument(-1),
                                        FormatArgument("narrow \xC3\xA4\xFF"),
                                        FormatArgument(UINT64_MAX),
                                        FormatArgument(-0.00125),
                                        FormatArgument(u'\u00E9'),
                                        FormatArgument(INT64_MIN),
                                        FormatArgument(1e300),
                                        FormatArgument(u""),
                                        FormatArgument(0)};
    const std::size_t count = (data[0] >> 2) % (std::size(arguments) + 1);
    const std::uint32_t flags = kFlags[data[0] % 4];
    std::u16string text = platform::ToWide({reinterpret_cast<const char*>(data + 1), size - 1});
    text.resize(std::min(text.find(u'\0'), text.size()));

    const auto expanded = Expand(text.c_str(), arguments, count, flags);
    const auto plain = Expand(text.c_str(), arguments, count, kMessagePlain);
    const auto own = Expand(text.c_str(), arguments, count, kMessageIgnoreInserts);
    if (text.find(u'%') == text.npos)
        Require(plain == text && own == text, "a text without inserts is its own message");
    if (expanded) Require(expanded->size() <= text.size() * (kMaxMessageField + 1), "fields are bounded");
    VUnicodeString formatted(u"before");
    formatted.FormatList(text.c_str(), arguments, count);
    const std::u16string before = u"before";
    Require(formatted == plain.value_or(own.value_or(before)), "a template that does not fit gives its own text");
    return 0;
}
