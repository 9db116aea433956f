#include "imports/dialogkit/vmessagebox.h"

#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/idialogkit.h"

namespace connectdialog {

int VMessageBox(VWindow* parent, const VUnicodeString& text, unsigned flags) {
    IDialogKit* kit = GetDialogKit();
    return kit != nullptr ? kit->ShowMessageBox(parent, VGetAppName(), text, flags) : kAnswerCancel;
}

int VMessageBox(VWindow* parent, IReportMessageParams& report) {
    // The two highest bits of a message code are its severity. An error number of the system has none of them.
    constexpr unsigned kPictures[] = {kBoxWarning, kBoxInformation, kBoxWarning, kBoxError};
    return VMessageBox(parent, report.GetText(), kBoxOk | kPictures[report.GetCode() >> 30]);
}

}  // namespace connectdialog
