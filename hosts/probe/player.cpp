#include "hosts/probe/player.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMainWindow>
#include <QPointer>
#include <QTimerEvent>
#include <QWidget>

namespace connectdialog::hosts {

namespace {
constexpr int kPause = 20;  // milliseconds
}

QWidget* FindMainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr) return window;
    return nullptr;
}

Player::Player(QObject* parent, const QString& keys) : QObject(parent), keys(keys.split(u' ')) {
    startTimer(kPause);
}

void Player::timerEvent(QTimerEvent* event) {
    // Another one each time: a timer does not run out in an event loop that it began.
    killTimer(event->timerId());
    startTimer(kPause);
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr) window = FindMainWindow();
    if (window == nullptr) return;
    window->activateWindow();
    if (keys.isEmpty()) return (void)window->close();
    const QKeyCombination key = QKeySequence(keys.takeFirst())[0];
    const bool isLetter = key.key() < Qt::Key_Escape && key.keyboardModifiers() == Qt::NoModifier;
    const QString text = isLetter ? QString(QChar(key.key())).toLower() : QString();
    QKeyEvent press(QEvent::KeyPress, key.key(), key.keyboardModifiers(), text);
    QKeyEvent release(QEvent::KeyRelease, key.key(), key.keyboardModifiers());
    const QPointer<QWidget> target = window->focusWidget() != nullptr ? window->focusWidget() : window;
    QApplication::sendEvent(target, &press);
    if (target != nullptr) QApplication::sendEvent(target, &release);
}

}  // namespace connectdialog::hosts
