#include "connectdialog/multiconnectwarningdialog.h"

#include "imports/dialogkit/appname.h"
#include "resources/dialogids.h"

namespace connectdialog {

MultiConnectWarningDialog::MultiConnectWarningDialog(bool& suppressed, VWindow* parent)
    : VDialog(MultiConnectIds::kDialog, parent), suppressValue(suppressed) {}

void MultiConnectWarningDialog::OnInitDialog() {
    VDialog::OnInitDialog();
    SetTitle(VGetAppName());
    VUnicodeString text;
    text.Format(GetControlText(MultiConnectIds::kText).GetData(), limit);
    SetControlText(MultiConnectIds::kText, text);
}

void MultiConnectWarningDialog::DoDataExchange(VDataExchange& exchange) {
    DDX_Check(exchange, MultiConnectIds::kDontShowAgain, dontShowAgain);
    if (exchange.IsSaving()) suppressValue = dontShowAgain;
}

}  // namespace connectdialog
