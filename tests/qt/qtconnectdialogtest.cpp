#include "qtconnectdialogtest.h"

#include <QTest>

namespace connectdialog::test {

void QtConnectDialogTest::Open(const ConnectDialogOptions& dialogOptions) {
    user.reset();
    ConnectDialogTest::Open(dialogOptions);
    auto& window = dynamic_cast<QtDialogWindow&>(*dialog->GetWindow());
    window.GetWidget()->activateWindow();  // a screen without a window manager gives the focus to nobody by itself
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.GetWidget()));
    user = std::make_unique<QtUserDialog>(*window.GetWidget());
}

TreeItem QtConnectDialogTest::At(std::u16string_view path) {
    const TreeItem item = Tree().Find(path);
    EXPECT_NE(item, TreeItem::kNone) << Escape(path) << " in\n" << Tree().Read();
    return item;
}

}  // namespace connectdialog::test
