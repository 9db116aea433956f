#include "qtuser.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolBar>
#include <QToolTip>

#include "qtinput.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qtlabeleditor.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog::test {

// The dialog.

QtUserDialog::QtUserDialog(QtDialogFrame& frame) : frame(frame), window(*frame.GetWindow()) {}

QWidget* QtUserDialog::FindUsable(int id) const {
    QWidget* control = GetControl(id);
    return !IsClosed() && control != nullptr && control->isEnabled() && control->isVisible() ? control : nullptr;
}

bool QtUserDialog::Type(int id, const VUnicodeString& text) {
    QWidget* edit = FindUsable(id);
    const bool takesText = qobject_cast<QLineEdit*>(edit) != nullptr || qobject_cast<QPlainTextEdit*>(edit) != nullptr;
    if (!takesText) return false;
    ClickWidget(*edit, edit->rect().center());
    if (GetText(id) != text) TypeInto(*edit, ToQt(text));
    return true;
}

bool QtUserDialog::Pick(int id, const VUnicodeString& text) {
    auto* box = qobject_cast<QComboBox*>(FindUsable(id));
    const int place = box != nullptr ? box->findText(ToQt(text)) : -1;
    if (place < 0) return false;
    box->setFocus();
    while (box->currentIndex() != place) PressKey(box->currentIndex() < place ? kKeyDown : kKeyUp);
    return true;
}

bool QtUserDialog::Tick(int id, bool isChecked) {
    auto* box = qobject_cast<QAbstractButton*>(FindUsable(id));
    if (box == nullptr || !box->isCheckable()) return false;
    if (box->isChecked() == isChecked) return true;
    ClickWidget(*box, {8, box->height() / 2});
    return true;
}

bool QtUserDialog::Press(int id) {
    if (IsClosed()) return false;
    QApplication::processEvents();  // whoever clicks has seen what was shown last
    for (const QToolBar* bar : frame.findChildren<QToolBar*>()) {
        for (QAction* action : bar->actions()) {
            if (action->data().toInt() != id || !action->isEnabled() || !bar->isVisible()) continue;
            QWidget& button = *bar->widgetForAction(action);
            ClickWidget(button, button.rect().center());
            return true;
        }
    }
    const auto* button = qobject_cast<QAbstractButton*>(FindUsable(id));
    if (button == nullptr || button->isCheckable()) return false;
    ClickWidget(*FindUsable(id), button->rect().center());
    return true;
}

bool QtUserDialog::PressLabelled(const VUnicodeString& label) {
    for (const auto* button : frame.findChildren<QAbstractButton*>())
        if (button->text() == ToQt(label) && Press(button->objectName().toInt())) return true;
    return false;
}

bool QtUserDialog::PressKey(std::uint16_t key, KeyModifiers modifiers) {
    if (IsClosed()) return false;
    SendKey(frame, key, modifiers);
    return true;
}

bool QtUserDialog::CloseByFrame() {
    if (IsClosed()) return false;
    frame.close();
    return true;
}

bool QtUserDialog::Resize(std::int32_t width, std::int32_t height) {
    if (IsClosed()) return false;
    frame.resize(width, height);
    QApplication::processEvents();
    return true;
}

bool QtUserDialog::IsClosed() const {
    return frame.IsGivenUp() || !frame.isVisible();
}

QtUserDialog* QtUserDialog::GetPage() {
    QtDialogWindow* const shown = window.GetPage();
    if (shown == nullptr)
        page.reset();
    else if (page == nullptr || &page->window != shown || &page->frame != shown->GetWidget())
        page = std::make_unique<QtUserDialog>(*shown->GetWidget());
    return page.get();
}

QtUserTree* QtUserDialog::GetTree(int id) {
    for (auto& [known, tree] : trees)
        if (known == id) return &tree;
    auto* widget = dynamic_cast<QtTree*>(GetControl(id));
    if (widget == nullptr) return nullptr;
    trees.emplace_back(id, QtUserTree(*widget));
    return &trees.back().second;
}

// The tree.

VPoint QtUserTree::PointOn(TreeItem item, std::int32_t dy) const {
    tree->EnsureVisible(item);
    VRectangle label;
    if (!tree->GetItemRectangle(item, true, label)) return {-1, -1};
    // Away from the edges, where a drag would scroll.
    const std::int32_t rowHeight = label.bottom - label.top;
    if (label.top == 0) tree->ScrollRows(-1);
    if (label.bottom > tree->GetClientRectangle().bottom - rowHeight) tree->ScrollRows(1);
    tree->GetItemRectangle(item, true, label);
    return {label.left + 3, label.top + (dy < 0 ? (label.bottom - label.top) / 2 : dy)};
}

bool QtUserTree::Click(TreeItem item, KeyModifiers modifiers) {
    const VPoint point = PointOn(item);
    if (point.x < 0) return false;
    ClickAt(point, modifiers);
    return true;
}

bool QtUserTree::RightClick(TreeItem item) {
    const VPoint point = PointOn(item);
    if (point.x < 0) return false;
    ClickWidget(*tree->viewport(), ToQt(point), 0, Qt::RightButton);
    return true;
}

bool QtUserTree::DoubleClick(TreeItem item) {
    const VPoint point = PointOn(item);
    if (point.x < 0) return false;
    DoubleClickWidget(*tree->viewport(), ToQt(point));
    return true;
}

bool QtUserTree::ClickExpander(TreeItem item) {
    VPoint point = PointOn(item);
    while (point.x >= 0 && tree->HitTest(point).part != TreePart::kExpander) --point.x;
    if (point.x < 0) return false;
    ClickAt(point);
    return true;
}

bool QtUserTree::PressKey(std::uint16_t key, KeyModifiers modifiers) {
    SendKey(*tree->window(), key, modifiers);
    return true;
}

bool QtUserTree::TypeLabel(const VUnicodeString& text) {
    if (!IsEditing()) return false;
    TypeInto(*tree->GetEditor(), ToQt(text));
    return PressKey(kKeyReturn);
}

bool QtUserTree::CancelLabel() {
    return IsEditing() && PressKey(kKeyEscape);
}

std::string QtUserTree::Read() const {
    std::vector<TreeItem> rows;
    for (int i = 0; i < tree->GetRows().GetCount(); ++i) rows.push_back(tree->GetRows()[i].item);
    return ReadTreeRows(*tree->GetItems(), rows);
}

VUnicodeString QtUserTree::GetTip(TreeItem item) const {
    const auto hide = [] {
        for (QWidget* shown : QApplication::topLevelWidgets())
            if (shown->windowType() == Qt::ToolTip) shown->hide();
    };
    hide();
    RestPointer(*tree->viewport(), ToQt(PointOn(item)));
    const QString markup = QToolTip::isVisible() ? QToolTip::text() : QString();
    hide();
    return FromQt(QTextDocumentFragment::fromHtml(markup).toPlainText());
}

VUnicodeString QtUserTree::GetEditText() const {
    return tree->GetEditor() != nullptr ? FromQt(tree->GetEditor()->text()) : VUnicodeString();
}

// Drags.

bool QtUserTree::Drag(TreeItem item, const DragScript& script) {
    const VPoint point = PointOn(item);
    if (point.x < 0) return false;
    bool wasDragged = false;
    const auto play = [&] {
        if (!tree->IsDragging()) return;
        wasDragged = true;
        QtUserDrag drag(*tree);
        script(drag);
        drag.Finish();
    };
    PullWidget(*tree->viewport(), ToQt(point), play);
    return wasDragged;
}

DropEffect QtUserDrag::MoveTo(VPoint newPoint, KeyModifiers newModifiers) {
    point = newPoint;
    modifiers = newModifiers;
    MoveDrag(*tree.viewport(), ToQt(point), modifiers);
    isInside = true;
    return GetEffect();
}

void QtUserDrag::Leave() {
    if (std::exchange(isInside, false)) MoveDrag(*tree.viewport(), {-1, -40}, 0);
}

bool QtUserDrag::Drop() {
    const bool isTaken = isInside && GetEffect() != DropEffect::kNone;
    LetGo(*tree.viewport(), ToQt(point), modifiers);
    isInside = false;
    isOver = true;
    return isTaken;
}

void QtUserDrag::Finish() {
    if (std::exchange(isOver, true)) return;
    Leave();
    SendKey(*tree.window(), kKeyEscape, 0);
}

}  // namespace connectdialog::test
