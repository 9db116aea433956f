#include "sessiondb/entrysearch.h"

#include <algorithm>

#include "config/isessionconfig.h"
#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "imports/connectconfig.h"
#include "profile/vprofilemultilinestring.h"

namespace connectdialog {

namespace {

constexpr std::uint32_t kNotFoundMessage = 0x61090001;

bool HostMatches(const ConnectConfig* config, const FindOptions& options) {
    VUnicodeString host;
    if (config != nullptr) config->GetHostName(host);
    return TextMatches(host, options);
}

}  // namespace

bool TextMatches(std::u16string_view text, const FindOptions& options) {
    const std::u16string_view wanted = options.text;
    if (options.matchCase) return text.find(wanted) != std::u16string_view::npos;
    const auto isSame = [](char16_t a, char16_t b) { return ToUpper(a) == ToUpper(b); };
    return wanted.empty() || std::ranges::search(text, wanted, isSame).begin() != text.end();
}

bool NameMatches(std::u16string_view label, bool isSession, const FindOptions& options) {
    return (isSession ? options.inSessionNames : options.inFolderNames) && TextMatches(label, options);
}

bool SessionMatches(ISessionConfig& session, const FindOptions& options) {
    if (options.inHostnames) {
        if (session.HasProtocol() && HostMatches(session.GetConnectConfig(), options)) return true;
        if (session.HasTransferProtocol() && HostMatches(session.GetTransferConnectConfig(), options)) return true;
    }
    const auto* description = dynamic_cast<VProfileMultiLineString*>(session.FindValue(u"Description"));
    if (!options.inDescriptions || description == nullptr) return false;
    VUnicodeString lines;
    description->GetText(lines, true);
    return TextMatches(lines, options);
}

VUnicodeString DescribeNotFound(const FindOptions& options) {
    VReportMessageParams report(kNotFoundMessage);
    report.AddInsert(options.text.GetData());
    return VUnicodeString(report.GetText());
}

}  // namespace connectdialog
