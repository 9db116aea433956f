// The toolkit's side of a dialog: hands on what the user does.
#pragma once

#include <QDialog>
#include <QPointer>

namespace connectdialog {

class IDialogEvents;
class QtDialogWindow;

/// Belongs to a QtDialogWindow until that goes; without one it tells nobody anything any more. That of a page lies in
/// the frame of the dialog.
class QtDialogFrame : public QDialog {
  public:
    /// Stands round each event that is told: a frame that is given up meanwhile is destroyed later.
    class EventScope {
      public:
        explicit EventScope(QtDialogFrame* told) : frame(told) { ++frame->eventDepth; }
        ~EventScope() {
            if (frame != nullptr) --frame->eventDepth;
        }
        EventScope(const EventScope&) = delete;
        EventScope& operator=(const EventScope&) = delete;

      private:
        QPointer<QtDialogFrame> frame;
    };

    QtDialogFrame(QtDialogWindow& window, IDialogEvents& events, QWidget* parent);
    ~QtDialogFrame() override;

    /// Tells nobody anything from now on, and is destroyed as soon as nothing of it runs any more.
    void GiveUp();
    bool IsGivenUp() const { return window == nullptr; }
    QtDialogWindow* GetWindow() const { return window; }
    /// Nothing is told when the inside takes this size.
    void ExpectSize(QSize size) { knownSize = size; }

    void TellCommand(int id);
    void TellText(int id);

    /// Escape and the frame's button; those of a page are the dialog's.
    void reject() override;

  protected:
    /// Watches the controls: keys come to the dialog before a control sees them.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    bool TakeKey(QKeyEvent& event);

    QtDialogWindow* window;
    IDialogEvents& events;
    QSize knownSize;
    int eventDepth = 0;
};

}  // namespace connectdialog
