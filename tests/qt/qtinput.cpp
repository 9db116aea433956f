#include "qtinput.h"

#include <QApplication>
#include <QCursor>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTest>
#include <QWindow>

#include "resources/accelerators.h"

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

}  // namespace connectdialog::test
