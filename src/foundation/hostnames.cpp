#include "foundation/hostnames.h"

#include <algorithm>
#include <string_view>

#include "foundation/casefold.h"
#include "foundation/texttools.h"
#include "foundation/vaddressipv4.h"
#include "foundation/vaddressipv6.h"
#include "foundation/vnarrowstring.h"

namespace connectdialog {

namespace {

/// What cannot stand in a session's name, or would look like a port there.
constexpr std::u16string_view kSeparators = u":\\/";

bool ReadPort(std::u16string_view text, std::uint16_t& port) {
    const bool isWhole = text.find(u'\0') == text.npos;  // else only its beginning would be read
    return isWhole && VParseUnsigned16(VNarrowString(text.data(), text.size()).GetData(), port);
}

/// The host of a text with several colons, and whether the last of them is in front of a port.
bool SplitBrackets(std::u16string_view text, std::u16string_view& host, bool& hasPort) {
    const std::size_t open = text.find(u'[');
    const std::size_t close = text.find(u']');
    host = text;
    hasPort = false;
    if (open == text.npos && close == text.npos) return true;
    if (open != 0 || close == text.npos) return false;
    host = text.substr(1, close - 1);
    hasPort = text.rfind(u':') > close;
    return true;
}

}  // namespace

bool VIsDottedNumeric(const VUnicodeString& text) {
    std::u16string_view rest = text;
    if (rest.empty() || !IsDigit(rest[0])) return false;
    int dots = 0;
    for (std::size_t dot = rest.find(u'.'); dot != rest.npos; dot = rest.find(u'.')) {
        rest.remove_prefix(dot + 1);
        if (++dots > 3 || rest.empty() || !IsDigit(rest[0])) return false;
    }
    return dots == 3 && std::all_of(rest.begin(), rest.end(), IsDigit);
}

bool VIsNumericHost(const VUnicodeString& text, platform::AddressFamily* family) {
    platform::NumericAddress read;
    if (!platform::ReadNumericAddress(text, platform::kAnyFamily, read)) return false;
    if (read.family == platform::kFamilyIpv4 && !VIsDottedNumeric(text)) return false;
    if (family != nullptr) *family = read.family;
    return true;
}

VRef<IInternetAddress> VMakeAddressFromText(const VUnicodeString& text) {
    auto family = platform::kAnyFamily;
    if (!VIsNumericHost(text, &family)) return nullptr;
    VRef<IInternetAddress> address;
    if (family == platform::kFamilyIpv4) {
        address = VRef<IInternetAddress>::Adopt(new VAddressIPv4());
    } else {
        address = VRef<IInternetAddress>::Adopt(new VAddressIPv6());
    }
    if (!address->SetFromText(text, 0)) return nullptr;
    return address;
}

VUnicodeString VSafeHostName(const VUnicodeString& text) {
    VUnicodeString name = text;
    name.MakeLower();
    if (const VRef<IInternetAddress> address = VMakeAddressFromText(name)) address->ToText(name, false);
    for (std::size_t i = 0; i < name.GetLength(); ++i) {
        if (kSeparators.find(name[i]) != kSeparators.npos) name.MutableAt(i) = u'_';
    }
    return name;
}

bool VSplitHostPort(const VUnicodeString& text, VUnicodeString& host, std::uint16_t& port) {
    const std::u16string_view whole = text;
    const std::size_t firstColon = whole.find(u':');
    const std::size_t lastColon = whole.rfind(u':');
    std::u16string_view hostPart = whole.substr(0, firstColon);
    bool hasPort = firstColon != whole.npos;
    if (firstColon != lastColon && !SplitBrackets(whole, hostPart, hasPort)) return false;
    std::uint16_t portPart = 0;
    if (hasPort && !ReadPort(whole.substr(lastColon + 1), portPart)) return false;
    const VUnicodeString found(hostPart);  // `host` may be `text`
    host = found;
    port = portPart;
    return true;
}

}  // namespace connectdialog
