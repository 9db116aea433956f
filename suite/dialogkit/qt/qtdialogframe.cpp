#include "suite/dialogkit/qt/qtdialogframe.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QTimerEvent>

#include "imports/dialogkit/idialogwindow.h"
#include "resources/accelerators.h"
#include "resources/dialogtemplate.h"
#include "suite/dialogkit/qt/qtdialogwindow.h"
#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

QtDialogFrame::QtDialogFrame(QtDialogWindow& window, IDialogEvents& events, QWidget* parent)
    : QDialog(parent), window(&window), events(events) {}

QtDialogFrame::~QtDialogFrame() {
    // Destroyed together with the window of the host that it stands over.
    if (window == nullptr) return;
    events.OnWindowGone();
}

void QtDialogFrame::GiveUp() {
    window = nullptr;
    hide();
    if (eventDepth > 0)
        deleteLater();
    else
        delete this;
}

void QtDialogFrame::TellCommand(int id) {
    if (window == nullptr) return;
    const EventScope scope(this);
    events.OnCommandEvent(id);
}

void QtDialogFrame::TellText(int id) {
    if (window == nullptr) return;
    const EventScope scope(this);
    events.OnTextChanged(id);
}

void QtDialogFrame::reject() {
    QtDialogWindow* const owner = window != nullptr ? window->GetOwner() : nullptr;
    if (owner != nullptr && owner->GetWidget() != nullptr) return owner->GetWidget()->reject();
    TellCommand(kIdCancel);
}

void QtDialogFrame::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

void QtDialogFrame::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (window == nullptr || size() == knownSize) return;
    knownSize = size();
    const EventScope scope(this);
    events.OnSize(knownSize.width(), knownSize.height());
}

void QtDialogFrame::timerEvent(QTimerEvent* event) {
    if (window == nullptr || !window->IsTimer(event->timerId())) return QDialog::timerEvent(event);
    const EventScope scope(this);
    events.OnTimer(event->timerId());
}

bool QtDialogFrame::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    // A key that the control with the focus leaves alone comes by once more on its way up.
    QObject* const first = focusWidget() != nullptr ? focusWidget() : static_cast<QObject*>(this);
    if (!isKey || window == nullptr || watched != first) return QDialog::eventFilter(watched, event);
    // The toolkit's own shortcuts would come before the accelerators.
    if (event->type() == QEvent::KeyPress) return TakeKey(*static_cast<QKeyEvent*>(event));
    event->accept();
    return true;
}

void QtDialogFrame::keyPressEvent(QKeyEvent* event) {
    event->ignore();  // whatever it means was done when it came
}

bool QtDialogFrame::TakeKey(QKeyEvent& event) {
    const std::uint16_t key = VirtualKeyOf(event);
    const KeyModifiers modifiers = FromQt(event.modifiers());
    // To the end: what the key does to a dialog may take its page away.
    const EventScope scope(this);
    if (key != 0 && events.OnKeyEvent(key, modifiers)) return true;
    if (window == nullptr) return true;
    if (key == kKeyEscape && modifiers == Accelerator::kNone) {
        reject();
        return true;
    }
    if (key == kKeyReturn && modifiers == Accelerator::kNone && !window->IsInMemo()) {
        window->PressReturn();
        return true;
    }
    // An edit control would type the letter all the same.
    const bool isLetter = modifiers == Accelerator::kAlt && event.key() < Qt::Key_Escape;
    if (isLetter) window->FollowMnemonic(QChar(event.key()).toUpper());
    return isLetter;
}

}  // namespace connectdialog
