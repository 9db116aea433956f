// The edit box that lies over the label of a tree item while it is edited.
#pragma once

#include <QLineEdit>
#include <functional>

namespace connectdialog {

/// Return, Escape, a click elsewhere in the window and another control's taking the focus end the edit. It takes every
/// other key itself.
class QtLabelEditor : public QLineEdit {
  public:
    /// Called with true when the text is to be kept; true when nothing is edited any more. May destroy the editor
    /// later, not at once.
    using EndFunction = std::function<bool(bool keepText)>;

    /// Watches the whole application until it is destroyed or Stop is called.
    QtLabelEditor(const QString& text, EndFunction end, QWidget* parent);

    /// Ends nothing any more.
    void Stop();
    /// Covers the label, and as much more as the text needs, inside of `inside`.
    void Cover(const QRect& label, const QRect& inside);

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    bool End(bool keepText);

    EndFunction end;
};

}  // namespace connectdialog
