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

VUnicodeString GetHost(bool hasProtocol, const ConnectConfig* config) {
    VUnicodeString host;
    if (hasProtocol && config != nullptr) config->GetHostName(host);
    return host;
}

}  // namespace

bool TextMatches(std::u16string_view text, const FindOptions& options) {
    const std::u16string_view wanted = options.text;
    if (options.matchCase) return text.find(wanted) != std::u16string_view::npos;
    const auto isSame = [](char16_t a, char16_t b) { return ToUpper(a) == ToUpper(b); };
    return wanted.empty() || std::search(text.begin(), text.end(), wanted.begin(), wanted.end(), isSame) != text.end();
}

bool NameMatches(std::u16string_view label, bool isSession, const FindOptions& options) {
    return (isSession ? options.inSessionNames : options.inFolderNames) && TextMatches(label, options);
}

SearchedTexts GetSearchedTexts(ISessionConfig& session) {
    SearchedTexts texts;
    texts.host = GetHost(session.HasProtocol(), session.GetConnectConfig());
    texts.transferHost = GetHost(session.HasTransferProtocol(), session.GetTransferConnectConfig());
    const auto* description = dynamic_cast<VProfileMultiLineString*>(session.FindValue(u"Description"));
    if (description != nullptr) description->GetText(texts.description, true);
    return texts;
}

bool SessionMatches(const SearchedTexts& texts, const FindOptions& options) {
    const bool isHost = TextMatches(texts.host, options) || TextMatches(texts.transferHost, options);
    return (options.inHostnames && isHost) || (options.inDescriptions && TextMatches(texts.description, options));
}

VUnicodeString DescribeNotFound(const FindOptions& options) {
    VReportMessageParams report(kNotFoundMessage);
    report.AddInsert(options.text.GetData());
    return VUnicodeString(report.GetText());
}

}  // namespace connectdialog
