#include "imports/protocolpagefault.h"

#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/vmessagebox.h"

namespace connectdialog {

void TellNoProtocolPage(VWindow* parent, const VUnicodeString& protocolName) {
    VReportMessageParams report;
    report.Fail(kNoProtocolPage, protocolName.GetData());
    VMessageBox(parent, report);
}

}  // namespace connectdialog
