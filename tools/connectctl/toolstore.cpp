#include "tools/connectctl/toolstore.h"

#include <memory>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "stores/openstore.h"
#include "stores/userstore.h"
#include "suite/hostsetup/hostsetup.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {
std::unique_ptr<VProfileStoreFactory> openStore;
VUnicodeString openUrl;

/// That a store may not be written is told with its place, which the report does not know.
std::string RefusalText(VReportMessageParams& report) {
    std::string text = ReportText(report);
    if (report.GetCode() != platform::kAccessDenied) return text;
    return Quoted(stores::GetAbsoluteStoreUrl(openUrl.IsEmpty() ? stores::GetDefaultStoreUrl() : openUrl)) + ": " +
           text;
}
}  // namespace

Failure OpenToolStore(const std::string& url) {
    VUnicodeString text;
    if (Failure failure = DecodeArgument(url, text)) return failure;
    VUnicodeString notice;
    openStore = OpenReferenceStore(u"connectctl"_v, text, notice);
    openUrl = text;
    if (!openStore) return platform::ToNarrow(notice);
    if (!notice.IsEmpty()) PrintNotice(platform::ToNarrow(notice));
    return kDone;
}

VUnicodeString GetToolStoreUrl() {
    return openUrl;
}

void CloseToolStore() {
    openStore.reset();
}

Failure ChangeStore(const std::function<Failure()>& change, bool isDryRun) {
    VProfileStore unit(false);
    Failure failure = kDone;
    const auto steps = [&] {
        failure = change();
        return !failure && !isDryRun;
    };
    const bool isKept = RunAsUnit(unit, steps);
    VReportMessageParams& report = *unit.GetLastReport();
    const bool isToldByStep = report.GetCode() == 0 || (failure && !TellsCause(report));
    return isKept || isToldByStep ? failure : RefusalText(report);
}

Failure CheckAndChange(const std::function<Failure()>& check, const std::function<Failure()>& change, bool isDryRun) {
    if (Failure failure = check()) return failure;
    const auto steps = [&] {
        Failure failure = check();
        return failure ? failure : change();
    };
    return ChangeStore(steps, isDryRun);
}

std::string ReportText(VReportMessageParams& report) {
    return platform::ToNarrow(DescribeReport(report));
}

}  // namespace connectdialog::connectctl
