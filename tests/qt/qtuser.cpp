#include "qtuser.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolBar>
#include <QToolTip>
#include <QWindow>

#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qtlabeleditor.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog::test {

namespace {

struct KeyRow {
    std::uint16_t virtualKey;
    Qt::Key key;
};

constexpr KeyRow kKeys[] = {
    {kKeyReturn, Qt::Key_Return},     {kKeyEscape, Qt::Key_Escape},
    {kKeyLeft, Qt::Key_Left},         {kKeyUp, Qt::Key_Up},
    {kKeyRight, Qt::Key_Right},       {kKeyDown, Qt::Key_Down},
    {kKeyHome, Qt::Key_Home},         {kKeyEnd, Qt::Key_End},
    {kKeyPageUp, Qt::Key_PageUp},     {kKeyTab, Qt::Key_Tab},
    {kKeyPageDown, Qt::Key_PageDown}, {kKeyDelete, Qt::Key_Delete},
    {kKeyBack, Qt::Key_Backspace},    {kKeySpace, Qt::Key_Space},
    {kKeyMenu, Qt::Key_Menu},         {kKeyMultiply, Qt::Key_Asterisk},
    {kKeyAdd, Qt::Key_Plus},          {kKeySubtract, Qt::Key_Minus},
};

Qt::Key KeyOf(std::uint16_t virtualKey) {
    if (virtualKey >= kKeyF1 && virtualKey < kKeyF1 + 24)
        return static_cast<Qt::Key>(Qt::Key_F1 + (virtualKey - kKeyF1));
    for (const KeyRow& row : kKeys)
        if (row.virtualKey == virtualKey) return row.key;
    return static_cast<Qt::Key>(virtualKey);
}

Qt::KeyboardModifiers ToModifiers(KeyModifiers bits) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, (bits & Accelerator::kControl) != 0);
    modifiers.setFlag(Qt::AltModifier, (bits & Accelerator::kAlt) != 0);
    modifiers.setFlag(Qt::ShiftModifier, (bits & Accelerator::kShift) != 0);
    return modifiers;
}

QWindow* WindowOf(const QWidget& widget) {
    return widget.window()->windowHandle();
}

/// While it lives, what the real pointer does is told to nobody: it would come between the moves of a drag.
class OnlyTheUsersMoves : public QObject {
  public:
    OnlyTheUsersMoves() { qApp->installEventFilter(this); }

    static inline QPoint expected;  ///< on the screen

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::MouseMove) return false;
        return static_cast<QMouseEvent*>(event)->globalPosition().toPoint() != expected;
    }
};

/// Where the window system has a pointer of its own, its way there is over then.
void PutPointer(QPoint onScreen) {
    QCursor::setPos(onScreen);
    (void)QTest::qWaitFor([&] { return QCursor::pos() == onScreen; });
    QApplication::processEvents();
}

QPoint InWindow(const QWidget& widget, QPoint point) {
    return widget.mapTo(widget.window(), point);
}

}  // namespace

void ClickWidget(QWidget& widget, QPoint point, KeyModifiers modifiers, Qt::MouseButton button) {
    QTest::mouseClick(WindowOf(widget), button, ToModifiers(modifiers), InWindow(widget, point));
}

void DoubleClickWidget(QWidget& widget, QPoint point) {
    QTest::mouseDClick(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, point));
}

void SendKey(QWidget& window, std::uint16_t key, KeyModifiers modifiers) {
    QTest::keyClick(WindowOf(window), KeyOf(key), ToModifiers(modifiers));
}

void TypeInto(QWidget& edit, const QString& text) {
    QMetaObject::invokeMethod(&edit, "selectAll");
    const bool hasKeys = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x7F; });
    if (text.isEmpty()) return SendKey(edit, kKeyDelete, 0);
    if (hasKeys) {
        for (const QChar c : text) {
            if (c == u'\n')
                SendKey(edit, kKeyReturn, 0);
            else
                QTest::keyClick(WindowOf(edit), c.toLatin1());
        }
        return;
    }
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&edit, &event);
}

void RestPointer(QWidget& widget, QPoint point) {
    QHelpEvent event(QEvent::ToolTip, point, widget.mapToGlobal(point));
    QApplication::sendEvent(&widget, &event);
}

void PullWidget(QWidget& widget, QPoint point, const std::function<void()>& play) {
    QWindow* const window = WindowOf(widget);
    const QPoint start = InWindow(widget, point);
    const QPoint pulled = start + QPoint(QApplication::startDragDistance() + 1, 0);
    // A drag begins where the real pointer is. Its own way there is to be over before it does.
    PutPointer(window->mapToGlobal(pulled));
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    bool isPlayed = false;
    const auto once = [&] {
        if (std::exchange(isPlayed, true)) return;
        OnlyTheUsersMoves moves;
        play();
    };
    QMetaObject::invokeMethod(&widget, once, Qt::QueuedConnection);
    // The pointer's first move begins the drag, which runs an event loop of its own.
    QTest::mouseEvent(QTest::MouseMove, window, Qt::LeftButton, {}, pulled);
    once();
    QTest::mouseRelease(window, Qt::LeftButton, {}, pulled);
}

void MoveDrag(QWidget& widget, QPoint point, KeyModifiers modifiers) {
    OnlyTheUsersMoves::expected = widget.mapToGlobal(point);
    QTest::mouseEvent(QTest::MouseMove, WindowOf(widget), Qt::LeftButton, ToModifiers(modifiers),
                      InWindow(widget, point));
}

void LetGo(QWidget& widget, QPoint point, KeyModifiers modifiers) {
    QTest::mouseRelease(WindowOf(widget), Qt::LeftButton, ToModifiers(modifiers), InWindow(widget, point));
}

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
