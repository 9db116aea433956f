#include "imports/dialogkit/textmetrics.h"

#include <string>
#include <string_view>

#include "imports/dialogkit/idialogwindow.h"
#include "platform/utf16.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kDots = u"...";

/// How many characters of the text fit, with the dots behind them. A character outside the basic plane is never cut.
std::size_t CountFitting(std::u16string_view text, const IDialogWindow& window, int id, std::int32_t width) {
    std::size_t fits = 0;
    for (std::size_t beyond = text.size(); fits + 1 < beyond;) {
        const std::size_t middle = fits + (beyond - fits) / 2;
        const bool isWide = window.GetTextWidth(id, std::u16string(text.substr(0, middle)).append(kDots)) > width;
        (isWide ? beyond : fits) = middle;
    }
    return fits > 0 && platform::IsHighSurrogate(text[fits - 1]) ? fits - 1 : fits;
}

}  // namespace

VUnicodeString AbbreviatePathname(const IDialogWindow& window, int id, const VUnicodeString& path) {
    const VRectangle place = window.GetRectangle(id);
    const std::int32_t width = place.right - place.left;
    const auto fits = [&](std::u16string_view text) { return width <= 0 || window.GetTextWidth(id, text) <= width; };
    const std::u16string_view whole = path;
    if (fits(whole)) return path;

    const std::size_t first = whole.find(u'\\');
    if (first != whole.npos) {
        const std::u16string head(whole.substr(0, first + 1));
        for (std::size_t next = whole.find(u'\\', first + 1); next != whole.npos; next = whole.find(u'\\', next + 1)) {
            const std::u16string shorter = head + std::u16string(kDots) + std::u16string(whole.substr(next));
            if (fits(shorter)) return VUnicodeString(shorter);
        }
    }
    const std::size_t last = whole.rfind(u'\\');
    const std::u16string leaf = (last != whole.npos ? std::u16string(kDots) : std::u16string()) +
                                std::u16string(last != whole.npos ? whole.substr(last) : whole);
    if (fits(leaf)) return VUnicodeString(leaf);
    return VUnicodeString(leaf.substr(0, CountFitting(leaf, window, id, width)).append(kDots));
}

VUnicodeString EscapeAmpersand(const VUnicodeString& text) {
    VUnicodeString escaped = text;
    escaped.Replace(u"&", u"&&");
    return escaped;
}

}  // namespace connectdialog
