#include "suite/protocols/launchchecks.h"

#include <algorithm>
#include <string>

#include "foundation/textchecks.h"
#include "foundation/texttools.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

namespace {

constexpr std::size_t kLongestHost = 255;
constexpr std::size_t kLongestUser = 255;
constexpr std::size_t kLongestJumpHost = 2048;
constexpr std::size_t kLongestPath = 4096;
constexpr std::size_t kLongestText = 16384;

bool Contains(std::u16string_view set, char16_t character) {
    return set.find(character) != std::u16string_view::npos;
}

bool HoldsOnly(std::u16string_view text, std::u16string_view besidesLettersAndDigits) {
    return std::all_of(text.begin(), text.end(), [&](char16_t character) {
        return IsAsciiLetterOrDigit(character) || Contains(besidesLettersAndDigits, character);
    });
}

/// What every text must be.
LaunchFault CheckCommon(std::u16string_view text, std::size_t longest) {
    if (text.empty()) return kLaunchMissing;
    if (text.size() > longest) return kLaunchTooLong;
    if (text.front() == u'-') return kLaunchLeadingDash;
    return HasControl(text) || HasHalfCharacter(text) ? kLaunchControl : kLaunchFine;
}

bool IsHexOrSeparator(char16_t character) {
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f') ||
           (character >= u'A' && character <= u'F') || character == u':' || character == u'.';
}

bool IsPort(std::u16string_view text) {
    unsigned number = 0;
    if (text.empty() || text.size() > 5) return false;
    for (const char16_t digit : text) {
        if (digit < u'0' || digit > u'9') return false;
        number = number * 10 + (digit - u'0');
    }
    return number >= 1 && number <= 65535;
}

/// The port behind a hop's host, cut off the hop; false when what stands there is none.
bool CutPort(std::u16string_view& hop) {
    const std::size_t behindAddress = hop.front() == u'[' ? hop.find(u']') : 0;
    if (behindAddress == std::u16string_view::npos) return false;
    const std::size_t colon = hop.find(u':', behindAddress);
    if (colon == std::u16string_view::npos) return true;
    const bool isPort = IsPort(hop.substr(colon + 1));
    hop = hop.substr(0, colon);
    return isPort;
}

bool IsHop(std::u16string_view hop) {
    if (const std::size_t at = hop.rfind(u'@'); at != std::u16string_view::npos) {
        // The hop's user enters a command that a shell runs: there a backslash has a meaning too.
        const std::u16string_view user = hop.substr(0, at);
        if (CheckLaunchUser(user) != kLaunchFine || Contains(user, u'\\')) return false;
        hop.remove_prefix(at + 1);
    }
    return !hop.empty() && CutPort(hop) && CheckLaunchHost(hop) == kLaunchFine;
}

}  // namespace

bool IsNumericIpv6(std::u16string_view host) {
    if (host.size() > 2 && host.front() == u'[' && host.back() == u']') host = host.substr(1, host.size() - 2);
    const std::size_t percent = host.find(u'%');
    const std::u16string_view address = host.substr(0, percent);
    if (percent != std::u16string_view::npos) {
        const std::u16string_view scope = host.substr(percent + 1);
        if (scope.empty() || !HoldsOnly(scope, u"._-")) return false;
    }
    return std::count(address.begin(), address.end(), u':') >= 2 &&
           std::all_of(address.begin(), address.end(), IsHexOrSeparator);
}

LaunchFault CheckLaunchHost(std::u16string_view host) {
    if (const LaunchFault fault = CheckCommon(host, kLongestHost); fault != kLaunchFine) return fault;
    return IsNumericIpv6(host) || HoldsOnly(host, u".-_") ? kLaunchFine : kLaunchNoHostName;
}

LaunchFault CheckLaunchUser(std::u16string_view user) {
    if (const LaunchFault fault = CheckCommon(user, kLongestUser); fault != kLaunchFine) return fault;
    if (user.back() == u'\\') return kLaunchNoUserName;
    // A backslash joins a domain to its user.
    const auto isFine = [](char16_t character) {
        return IsAsciiLetterOrDigit(character) || Contains(u"._-+@\\", character) ||
               (character > 0xA0 && !(character >= 0x2000 && character <= 0x206F) && character != 0x3000);
    };
    return std::all_of(user.begin(), user.end(), isFine) ? kLaunchFine : kLaunchNoUserName;
}

LaunchFault CheckLaunchJumpHost(std::u16string_view hops) {
    if (const LaunchFault fault = CheckCommon(hops, kLongestJumpHost); fault != kLaunchFine) return fault;
    while (true) {
        const std::size_t comma = hops.find(u',');
        if (!IsHop(hops.substr(0, comma))) return kLaunchNoJumpHost;
        if (comma == std::u16string_view::npos) return kLaunchFine;
        hops.remove_prefix(comma + 1);
    }
}

LaunchFault CheckLaunchPath(std::u16string_view path) {
    return CheckCommon(path, kLongestPath);
}

LaunchFault CheckLaunchText(std::u16string_view text) {
    return CheckCommon(text, kLongestText);
}

LaunchFault CheckLaunchCommand(std::u16string_view command) {
    VStringArray words;
    return SplitLaunchCommand(command, words);
}

LaunchFault SplitLaunchCommand(std::u16string_view command, VStringArray& words) {
    if (const LaunchFault fault = CheckLaunchText(command); fault != kLaunchFine) return fault;
    if (!VTokenize(command, words, {u" "}, {u"\"\""}, true, true)) return kLaunchOpenQuote;
    return words.IsEmpty() ? kLaunchMissing : CheckLaunchPath(words[0]);
}

bool FailOutOfRange(VReportMessageParams& report, const VUnicodeString& name, int least, int most) {
    report.Fail(kLaunchOutOfRange, name.GetData());
    report.AddInsert(std::to_string(least).c_str());
    report.AddInsert(std::to_string(most).c_str());
    return false;
}

}  // namespace connectdialog
