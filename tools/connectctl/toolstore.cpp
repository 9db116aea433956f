#include "tools/connectctl/toolstore.h"

#include <memory>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "profile/iprofilestore.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"
#include "tools/connectctl/entrypath.h"

namespace connectdialog::connectctl {

namespace {
std::unique_ptr<VProfileStoreFactory> openStore;
/// What the store adds to a refusal: what it is about, and the cause.
std::string InsertsText(const VReportMessageParams& report) {
    std::string text;
    for (std::size_t i = 0; i < report.GetInsertCount(); ++i)
        text += (i == 0 ? " (" : ": ") + platform::ToNarrow(report.GetInserts()[i]);
    return text.empty() ? text : text + ')';
}

}  // namespace

Failure OpenToolStore(const std::string& url) {
    VUnicodeString text = stores::GetDefaultStoreUrl();
    if (!url.empty())
        if (Failure failure = DecodeArgument(url, text)) return failure;
    VReportMessageParams report;
    openStore = stores::OpenProfileStoreFactory(text, report);
    if (!openStore) return "the store cannot be opened: " + ReportText(report) + InsertsText(report);
    InstallReferenceSuite(u"connectctl"_v, *openStore);
    return kDone;
}

void CloseToolStore() {
    openStore.reset();
}

std::string ReportText(IReportMessageParams& report) {
    std::string text = platform::ToNarrow(report.GetTextOneLine());
    while (!text.empty() && (text.back() == ' ' || text.back() == '.')) text.pop_back();
    return text;
}

}  // namespace connectdialog::connectctl
