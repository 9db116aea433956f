#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "imports/dialogkit/vmessagebox.h"
#include "platform/paths.h"
#include "qtuser.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"

namespace connectdialog::test {

QtPlayedKit::QtPlayedKit() {
    qApp->installEventFilter(this);
}

QtPlayedKit::~QtPlayedKit() = default;

int QtPlayedKit::ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                                unsigned flags) {
    boxes.push_back({title, text, flags});
    return QtDialogKit::ShowMessageBox(parent, title, text, flags);
}

int QtPlayedKit::TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) {
    tracked = &menu;
    return QtDialogKit::TrackPopupMenu(owner, menu, point);
}

/// Whatever stops the application is played once its own event loop runs.
bool QtPlayedKit::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = event->type() == QEvent::Show && watched->isWidgetType() ? static_cast<QWidget*>(watched) : nullptr;
    const bool stops = widget != nullptr && (widget->isModal() || qobject_cast<QMenu*>(widget) != nullptr);
    // The inner menus of one that is played belong to it.
    const bool isInner = widget != nullptr && qobject_cast<QMenu*>(widget) != nullptr && tracked == nullptr;
    if (stops && !isInner) QTimer::singleShot(0, widget, [this, widget] { Play(*widget); });
    return false;
}

void QtPlayedKit::Play(QWidget& shown) {
    (void)QTest::qWaitForWindowExposed(&shown);
    if (auto* menu = qobject_cast<QMenu*>(&shown))
        PlayMenu(*menu);
    else if (auto* box = qobject_cast<QMessageBox*>(&shown))
        PlayBox(*box);
    else if (auto* frame = dynamic_cast<QtDialogFrame*>(&shown))
        PlayDialog(*frame);
    else
        PlayFolder(shown);
}

void QtPlayedKit::PlayDialog(QtDialogFrame& frame) {
    (void)QTest::qWaitForWindowActive(&frame);
    QtUserDialog dialog(frame);
    Expectation taken;
    if (TakeDialog(dialog.GetTemplateId(), taken)) taken.script(dialog);
    dialog.CloseByFrame();
    if (dialog.IsClosed()) return;
    AddFault("a dialog did not close");
    frame.done(QDialog::Rejected);
}

void QtPlayedKit::PlayBox(QMessageBox& box) {
    (void)QTest::qWaitForWindowActive(&box);
    if (lookAtBox) std::exchange(lookAtBox, nullptr)(box);
    Expectation taken;
    if (!TakeBox(boxes.back().text, taken)) return box.reject();
    for (QAbstractButton* button : box.buttons()) {
        if (button->property("answer").toInt() != taken.number) continue;
        return ClickWidget(*button, button->rect().center());
    }
    SendKey(box, kKeyEscape, 0);
    if (!box.isVisible()) return;
    AddFault("no such answer");
    box.done(0);
}

void QtPlayedKit::PlayFolder(QWidget& dialog) {
    auto& chooser = dynamic_cast<QFileDialog&>(dialog);
    Expectation taken;
    if (!Take(Kind::kFolder, "folder question", taken) || taken.isGivenUp) return chooser.reject();
    const QString path = QString::fromStdString(platform::ToNativePath(taken.text));
    auto* edit = chooser.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    TypeInto(*edit, path);
    SendKey(chooser, kKeyReturn, 0);
}

void QtPlayedKit::PlayMenu(QMenu& menu) {
    Expectation taken;
    const int command = Take(Kind::kMenu, "menu", taken) ? taken.choice(*std::exchange(tracked, nullptr)) : 0;
    tracked = nullptr;
    const auto click = [](QMenu& shown, QAction* action) {
        ClickWidget(shown, shown.actionGeometry(action).center());
        QApplication::processEvents();
    };
    for (QAction* action : menu.actions()) {
        if (action->data().toInt() == command && command != 0) click(menu, action);
        if (action->menu() == nullptr || !menu.isVisible()) continue;
        for (QAction* inner : action->menu()->actions()) {
            if (inner->data().toInt() != command || command == 0) continue;
            click(menu, action);
            click(*action->menu(), inner);
        }
    }
    if (!menu.isVisible()) return;
    if (command != 0) AddFault("not to be chosen: command " + std::to_string(command));
    menu.close();
}

}  // namespace connectdialog::test
