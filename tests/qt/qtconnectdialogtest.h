// The connect dialog on real widgets, over an empty memory store.
#pragma once

#include <memory>

#include "qtuser.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {

/// Everything that ConnectDialogTest has for the store and the neighbours, with the user in front of the desktop.
class QtConnectDialogTest : public ConnectDialogTest {
  protected:
    ~QtConnectDialogTest() override {
        user.reset();
        dialog.reset();
        EXPECT_EQ(qt.TakeFaults(), "");
    }

    void Open(const ConnectDialogOptions& dialogOptions = {}) {
        user.reset();
        ConnectDialogTest::Open(dialogOptions);
        auto& window = dynamic_cast<QtDialogWindow&>(*dialog->GetWindow());
        window.GetWidget()->activateWindow();  // a screen without a window manager gives the focus to nobody by itself
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.GetWidget()));
        user = std::make_unique<QtUserDialog>(*window.GetWidget());
    }
    QtUserDialog& Window() { return *user; }
    QtUserTree& Tree() { return *user->GetTree(ConnectDialogIds::kTree); }
    void Click(std::u16string_view path, KeyModifiers modifiers = 0) {
        EXPECT_TRUE(Tree().Click(At(path), modifiers)) << Escape(path);
    }
    void Expand(std::u16string_view path) {
        if (dialog->Items().HasState(At(path), kTreeExpanded)) return;
        EXPECT_TRUE(Tree().ClickExpander(At(path))) << Escape(path);
    }

    QtPlayedKit qt;  // installed behind the headless one, which is not used
    std::unique_ptr<QtUserDialog> user;
};

}  // namespace connectdialog::test
