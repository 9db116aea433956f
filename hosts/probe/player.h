// A user at the keyboard.
#pragma once

#include <QObject>
#include <QStringList>

class QWidget;

namespace connectdialog::hosts {

/// The host's main window where it shows, or null.
QWidget* FindMainWindow();

/// Presses keys; a window that comes up in between gets the next one, and after the last one windows are closed. The
/// main window gets them while no dialog stands over it.
class Player : public QObject {
  public:
    /// `keys` as "Alt+N Down", with blanks between them. `parent` owns the object.
    Player(QObject* parent, const QString& keys);

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    QStringList keys;
};

}  // namespace connectdialog::hosts
