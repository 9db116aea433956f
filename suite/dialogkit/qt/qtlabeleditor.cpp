#include "suite/dialogkit/qt/qtlabeleditor.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>
#include <algorithm>
#include <limits>
#include <utility>

namespace connectdialog {

namespace {
constexpr int kRoomForTyping = 24;
constexpr int kNarrowest = 80;
}  // namespace

QtLabelEditor::QtLabelEditor(const QString& text, EndFunction end, QWidget* parent)
    : QLineEdit(parent), end(std::move(end)) {
    setMaxLength(std::numeric_limits<int>::max());
    setText(text);
    selectAll();
    // The row leaves no room for the margins of an edit control.
    setTextMargins(-1, 0, 0, 0);
    qApp->installEventFilter(this);
}

void QtLabelEditor::Stop() {
    end = nullptr;
    qApp->removeEventFilter(this);
}

void QtLabelEditor::Cover(const QRect& label, const QRect& inside) {
    const int needed = std::max(fontMetrics().horizontalAdvance(text()) + kRoomForTyping, kNarrowest);
    const int left = std::max(label.left(), inside.left());
    const int width = std::min(std::max(label.width(), needed), std::max(kNarrowest, inside.right() + 1 - left));
    setGeometry(left, label.top(), width, label.height());
}

bool QtLabelEditor::End(bool keepText) {
    const EndFunction call = end;  // Stop may come meanwhile
    return call == nullptr || call(keepText);
}

bool QtLabelEditor::eventFilter(QObject* watched, QEvent* event) {
    // On its way to the window, before a control takes the focus for it.
    if (event->type() != QEvent::MouseButtonPress || watched != window()->windowHandle()) return false;
    const QPoint point = mapFrom(window(), static_cast<QMouseEvent*>(event)->position().toPoint());
    if (rect().contains(point)) return false;
    // The click is lost when the user has to stay in the edit, or when a box came up and the button is up again.
    const bool hasEnded = End(true);
    return !hasEnded || QApplication::mouseButtons() == Qt::NoButton;
}

bool QtLabelEditor::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) return QLineEdit::event(event);
    event->accept();  // all keys are the edit's: no letter of a button counts meanwhile
    return true;
}

void QtLabelEditor::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            End(true);
            break;
        case Qt::Key_Escape:
            End(false);
            break;
        default:
            // The letter would be typed all the same.
            if (event->modifiers() != Qt::AltModifier) QLineEdit::keyPressEvent(event);
    }
    event->accept();
}

void QtLabelEditor::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const bool staysHere = event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason ||
                           event->reason() == Qt::MenuBarFocusReason;
    if (!staysHere) End(true);
}

}  // namespace connectdialog
