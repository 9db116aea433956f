#include "connectdialog/shortcutnamedialog.h"

#include "connectdialog/desktopshortcut.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/textmetrics.h"
#include "imports/dialogkit/vmessagebox.h"
#include "resources/dialogids.h"

namespace connectdialog {

ShortcutNameDialog::ShortcutNameDialog(const VUnicodeString& sessionPath, bool multiple, VWindow* parent)
    : VDialog(ShortcutNameIds::kDialog, parent),
      shortcutName(OfferShortcutLabel(sessionPath, multiple, VGetAppName())) {
    if (!multiple && !sessionPath.IsEmpty()) {
        sessionPathText = sessionPath;
        introText.Format(u"%1 will create a shortcut on the\nDesktop to the following session or folder:",
                         VGetAppName());
    } else {
        introText.Format(u"%1 will create a shortcut on the\nDesktop to the selected sessions.", VGetAppName());
    }
}

void ShortcutNameDialog::OnInitDialog() {
    sessionPathText = EscapeAmpersand(AbbreviatePathname(*GetWindow(), ShortcutNameIds::kPath, sessionPathText));
    VDialog::OnInitDialog();
}

void ShortcutNameDialog::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, ShortcutNameIds::kName, shortcutName);
    DDX_Text(exchange, ShortcutNameIds::kPath, sessionPathText);
    DDX_Text(exchange, ShortcutNameIds::kIntro, introText);
    if (!exchange.IsSaving()) return;
    shortcutName.TrimLeft();
    shortcutName.TrimRight();
    if (!shortcutName.IsEmpty()) return;
    VMessageBox(this, u"Shortcut name error.\n\nShortcut name must be non-empty."_v, kBoxWarning);
    exchange.Refuse(ShortcutNameIds::kName);
}

}  // namespace connectdialog
