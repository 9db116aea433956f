#include "connectdialog/ui/connecttoolbar.h"

#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/idialogwindow.h"
#include "resources/connectmenus.h"
#include "resources/dialogids.h"

namespace connectdialog {

namespace {
constexpr std::int32_t kRoomBesideBar = 30;
/// Connect, quick connect and the separator behind them.
constexpr std::size_t kConnectButtons = 3;
}  // namespace

ConnectToolbar::ConnectToolbar()
    : toolbarId(IsTerminalHost() ? ConnectDialogIds::kTerminalToolbar : ConnectDialogIds::kTransferToolbar) {}

void ConnectToolbar::CreateBar(IDialogWindow& window, bool browseMode) {
    Create(window, toolbarId, kConnectToolbarCommands.subspan(browseMode ? kConnectButtons : 0));
    const VRectangle place = window.GetRectangle(toolbarId);
    minBarWidth = place.right - place.left + kRoomBesideBar;
}

bool ConnectToolbar::OnUserToolTip(int command, VUnicodeString& text) const {
    text = GetCommandText(command);
    const std::size_t lineBreak = text.ReverseFind(u'\n');
    if (lineBreak != VUnicodeString::kNotFound) text = text.Mid(lineBreak + 1);
    return true;
}

}  // namespace connectdialog
