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
    /// A page of `owner`, which outlives it; see CreatePage.
    QtDialogWindow(const DialogTemplate& dialog, IDialogEvents& events, QtDialogWindow& owner, const VRectangle& place);
    ~QtDialogWindow() override;

    /// Null when it went together with the window that it stood over.
    QtDialogFrame* GetWidget() const { return frame; }
    /// The control of the id, or null.
    QWidget* GetControl(int id) const;
    int GetTemplateId() const { return dialog.id; }
    /// The dialog in which it lies as a page, or null.
    QtDialogWindow* GetOwner() const { return owner; }
    /// The page that shows in it, or null.
    QtDialogWindow* GetPage() const;

    // For the frame.
    bool IsTimer(int timer) const { return timers.contains(timer); }
    /// Whether the user types lines, so that the Return key begins a new one.
    bool IsInMemo() const;
    /// Presses the button with the focus, else the default button; that of a page is the dialog's.
    void PressReturn();
    /// Goes to the control whose label marks the letter, where there is one; in a dialog with a page to one of either.
    void FollowMnemonic(QChar letter);

    // IDialogWindow.
    void RunModal() override;
    void ShowModeless() override;
    void Hide() override;
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
    void SetIcon(int id, const VIcon& icon) override;
    VPoint ToScreen(int id, VPoint point) const override;
    VRectangle GetInside() const override;
    void SetInside(std::int32_t width, std::int32_t height) override;
    void LetResize(std::int32_t leastWidth, std::int32_t leastHeight) override;
    VWindowPlacement GetPlacement() const override;
    int StartTimer(unsigned milliseconds) override;
    void StopTimer(int timer) override;
    ITreeView* AttachTree(int id, VTreeItems& items, ITreeEvents& events) override;
    void ShowToolbar(int id, const VToolbarState& toolbar) override;
    std::unique_ptr<IDialogWindow> CreatePage(const DialogTemplate& page, IDialogEvents& events,
                                              const VRectangle& place, int behindId) override;

  private:
    struct Control {
        ControlKind kind;
        int id;
        QPointer<QWidget> widget;
        QString label;  ///< with the mark of its letter; nothing where the text is the user's
    };

    void MakeControls();
    QWidget* MakeControl(const ControlTemplate& row);
    Control* Find(int id);
    void SetLabel(Control& control, const QString& label);
    void PlaceControls();
    void MeasureUnits();
    void NameForReading();
    /// Lets the label underline its letter and belong to the control that follows.
    void SetBuddy(Control& label);
    /// The first control behind that one that takes the focus and can be used, or null.
    Control* FindFollowing(const Control& control);
    bool Follow(QChar letter);
    void Activate(Control& control);
    /// Lets the Tab key come from `previous` to the controls, and gives the last of them. `previous` may be null.
    QWidget* ChainControls(QWidget* previous) const;

    const DialogTemplate& dialog;
    QtDialogWindow* owner = nullptr;
    QPointer<QtDialogFrame> frame;
    std::vector<Control> controls;
    std::set<int> timers;
    QPointer<QToolBar> toolBar;
    std::vector<QtDialogWindow*> pages;
    double unitAcross = 0;  ///< pixels
    double unitDown = 0;
};

}  // namespace connectdialog
