#include "menutoolbar/vcustomtoolbar.h"

#include "imports/dialogkit/idialogwindow.h"
#include "imports/hostcallbacks.h"

namespace connectdialog {

void VCustomToolbar::Create(IDialogWindow& newWindow, int newId, std::span<const int> commands) {
    window = &newWindow;
    id = newId;
    state = VToolbarState();
    for (const int command : commands) {
        VUnicodeString tip;
        if (command == 0)
            state.AddSeparator();
        else
            state.Add(command, OnUserToolTip(command, tip) ? tip : VUnicodeString());
    }
    Show();
}

void VCustomToolbar::EnableButton(int command, bool isEnabled) {
    state.Enable(command, isEnabled);
    Show();
}

void VCustomToolbar::Show() {
    if (window == nullptr) return;
    const VRef<ISynchObject> lock = GetHostCallbacks().toolbarLock;
    if (!lock) return window->ShowToolbar(id, state);
    const VSynchGuard guard(*lock);
    window->ShowToolbar(id, state);
}

}  // namespace connectdialog
