#include "menutoolbar/vcustomtoolbar.h"

#include "imports/dialogkit/idialogwindow.h"
#include "menutoolbar/vcustommenutoolbar.h"

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

void VCustomToolbar::ShowPane(bool isShown, std::int32_t newWidth, std::int32_t newHeight) {
    width = newWidth;
    height = newHeight;
    if (IToolbarEditSink* sink = GetEditSink()) sink->OnShowPane(isShown, width, height);
}

bool VCustomToolbar::OnUserToolTip(int command, VUnicodeString& text) const {
    return VCustomMenuToolbar::Get().FindToolTip(static_cast<std::uint32_t>(command), text);
}

void VCustomToolbar::Show() {
    if (window != nullptr) RunGuarded([this] { window->ShowToolbar(id, state); });
}

}  // namespace connectdialog
