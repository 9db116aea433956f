#include "tools/connectctl/toolstore.h"

#include <memory>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "suite/hostsetup/hostsetup.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {
std::unique_ptr<VProfileStoreFactory> openStore;
}  // namespace

Failure OpenToolStore(const std::string& url) {
    VUnicodeString text;
    if (Failure failure = DecodeArgument(url, text)) return failure;
    VUnicodeString notice;
    openStore = OpenReferenceStore(u"connectctl"_v, text, notice);
    if (!openStore) return platform::ToNarrow(notice);
    if (!notice.IsEmpty()) PrintNotice(platform::ToNarrow(notice));
    return kDone;
}

void CloseToolStore() {
    openStore.reset();
}

Failure ChangeStore(const std::function<Failure()>& change, bool isDryRun) {
    VProfileStore unit(false);
    if (!unit.JoinUnitOfWork()) return ReportText(*unit.GetLastReport());
    Failure failure = change();
    if (!failure && isDryRun) {
        unit.Abandon();
        return kDone;
    }
    if (!failure) return unit.Close() ? Failure(kDone) : ReportText(*unit.GetLastReport());
    // A unit that failed tells why when it is asked to go on, unless a step gave it up, which has told why.
    if (!unit.JoinUnitOfWork() && unit.GetLastReport()->GetCode() != platform::kCancelled)
        failure = ReportText(*unit.GetLastReport());
    unit.Abandon();
    return failure;
}

std::string ReportText(VReportMessageParams& report) {
    return platform::ToNarrow(DescribeReport(report));
}

}  // namespace connectdialog::connectctl
