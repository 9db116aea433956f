// The window of a dialog on the desktop, with its controls laid out as the template says.
#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>
#include <set>
#include <vector>

#include "imports/dialogkit/idialogwindow.h"
#include "resources/dialogtemplate.h"
#include "suite/dialogkit/qt/qtdialogframe.h"

class QToolBar;

namespace connectdialog {

class QtDialogWindow final : public IDialogWindow {
  public:
    /// `parent` may be null. Requires: `events` and the template outlive the window.
    QtDialogWindow(const DialogTemplate& dialog, IDialogEvents& events, QWidget* parent);
    ~QtDialogWindow() override;

    /// Null when it went together with the window that it stood over.
    QtDialogFrame* GetWidget() const { return frame; }
    /// The control of the id, or null.
    QWidget* GetControl(int id) const;
    int GetTemplateId() const { return dialog.id; }

    // For the frame.
    bool IsTimer(int timer) const { return timers.contains(timer); }
    /// Whether the user types lines, so that the Return key begins a new one.
    bool IsInMemo() const;
    /// Presses the button with the focus, else the default button.
    void PressReturn();
    /// Goes to the control whose label marks the letter, where there is one.
    void FollowMnemonic(QChar letter);

    // IDialogWindow.
    void RunModal() override;
    void ShowModeless() override;
    void Close() override;
    void SetTitle(const VUnicodeString& title) override;
    VUnicodeString GetText(int id) const override;
    void SetText(int id, const VUnicodeString& text) override;
    void SetChoices(int id, std::span<const VUnicodeString> choices) override;
    bool IsChecked(int id) const override;
    void SetChecked(int id, bool isChecked) override;
    bool IsEnabled(int id) const override;
    void SetEnabled(int id, bool isEnabled) override;
    bool IsShown(int id) const override;
    void SetShown(int id, bool isShown) override;
    void SetFocus(int id) override;
    int GetFocus() const override;
    VRectangle GetRectangle(int id) const override;
    void SetRectangle(int id, const VRectangle& place) override;
    VRectangle ToPixels(const DialogRectangle& place) const override;
    std::int32_t GetTextWidth(int id, std::u16string_view text) const override;
    void SetFont(int id, const VUnicodeString& family, int points) override;
    VPoint ToScreen(int id, VPoint point) const override;
    VRectangle GetInside() const override;
    void SetInside(std::int32_t width, std::int32_t height) override;
    void LetResize(std::int32_t leastWidth, std::int32_t leastHeight) override;
    VWindowPlacement GetPlacement() const override;
    int StartTimer(unsigned milliseconds) override;
    void StopTimer(int timer) override;
    ITreeView* AttachTree(int id, VTreeItems& items, ITreeEvents& events) override;
    void ShowToolbar(int id, const VToolbarState& toolbar) override;

  private:
    struct Control {
        ControlKind kind;
        int id;
        QPointer<QWidget> widget;
        QString label;  ///< with the mark of its letter; nothing where the text is the user's
    };

    QWidget* MakeControl(const ControlTemplate& row);
    Control* Find(int id);
    void SetLabel(Control& control, const QString& label);
    void LayOut();
    void MeasureUnits();
    void NameForReading();
    /// Lets the label underline its letter and belong to the control that follows.
    void SetBuddy(Control& label);
    /// The first control behind that one that takes the focus and can be used, or null.
    Control* FindFollowing(const Control& control);
    void Activate(Control& control);

    const DialogTemplate& dialog;
    QPointer<QtDialogFrame> frame;
    std::vector<Control> controls;
    std::set<int> timers;
    QPointer<QToolBar> toolBar;
    double unitAcross = 0;  ///< pixels
    double unitDown = 0;
};

}  // namespace connectdialog
