// The window of a dialog that nobody sees: what a user would read there, and what a user can do.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "imports/dialogkit/idialogwindow.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "resources/dialogtemplate.h"

namespace connectdialog {

class HeadlessDialogKit;
class HeadlessTree;

/// A text's width where nothing is drawn: 6 pixels a character, 12 for those of East Asian scripts.
std::int32_t HeadlessTextWidth(std::u16string_view text);

class HeadlessDialog : public IDialogWindow {
  public:
    /// `owner` is given for a page and outlives it.
    HeadlessDialog(HeadlessDialogKit& kit, const DialogTemplate& dialog, IDialogEvents& events,
                   HeadlessDialog* owner = nullptr);
    ~HeadlessDialog() override;

    // What the user does. Each is false, and nothing happens, when the user could not do it: the control is not there,
    // of another kind, hidden or disabled, the dialog is closed, or the click is lost to a label that is still edited.

    /// Replaces the text of an edit control.
    bool Type(int id, const VUnicodeString& text);
    /// Chooses a text that the combo box offers.
    bool Pick(int id, const VUnicodeString& text);
    bool Tick(int id, bool isChecked);
    /// A button, also one of the toolbar.
    bool Press(int id);
    /// The button that shows this label.
    bool PressLabelled(const VUnicodeString& label);
    /// A key: to the dialog, then to the focused tree, then Return to a button and Escape to the frame.
    bool PressKey(std::uint16_t key, KeyModifiers modifiers = 0);
    bool CloseByFrame();
    /// A command from a menu, whose state the user has seen. A label that is edited stays so.
    bool Choose(int command);
    /// Time passes: timers run out in their order.
    void Elapse(unsigned milliseconds);
    /// As far as the window lets itself be made smaller.
    bool Resize(std::int32_t width, std::int32_t height);

    // What the user sees.

    /// The page that shows in the dialog, or null.
    HeadlessDialog* GetPage() const;
    int GetTemplateId() const { return dialog.id; }
    const VUnicodeString& GetTitle() const { return title; }
    bool IsClosed() const { return isClosed; }
    /// The tree control of the id, or null.
    HeadlessTree* GetTree(int id) const;
    /// Null while there is none.
    const VToolbarState* GetToolbar() const { return toolbar; }
    /// "family,points" of a control whose font was set.
    VUnicodeString GetFont(int id) const;

    // IDialogWindow.
    void RunModal() override;
    void ShowModeless() override { isHidden = false; }
    void Hide() override { isHidden = owner != nullptr; }
    void Close() override { isClosed = true; }
    void SetTitle(const VUnicodeString& newTitle) override { title = newTitle; }
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
    int GetFocus() const override { return focus; }
    VRectangle GetRectangle(int id) const override;
    void SetRectangle(int id, const VRectangle& place) override;
    VRectangle ToPixels(const DialogRectangle& place) const override;
    std::int32_t GetTextWidth(int id, std::u16string_view text) const override;
    void SetFont(int id, const VUnicodeString& family, int points) override;
    VPoint ToScreen(int id, VPoint point) const override;
    VRectangle GetInside() const override { return inside; }
    void SetInside(std::int32_t width, std::int32_t height) override;
    void LetResize(std::int32_t leastWidth, std::int32_t leastHeight) override;
    VWindowPlacement GetPlacement() const override;
    int StartTimer(unsigned milliseconds) override;
    void StopTimer(int timer) override;
    ITreeView* AttachTree(int id, VTreeItems& items, ITreeEvents& treeEvents) override;
    void ShowToolbar(int id, const VToolbarState& newToolbar) override;
    std::unique_ptr<IDialogWindow> CreatePage(const DialogTemplate& page, IDialogEvents& pageEvents,
                                              const VRectangle& place, int behindId) override;

  private:
    struct Control {
        ControlKind kind;
        int id;
        VUnicodeString text;
        VRectangle place;
        bool isChecked = false;
        bool isEnabled = true;
        bool isShown = true;
        std::unique_ptr<HeadlessTree> tree;
        VUnicodeString font;
        std::vector<VUnicodeString> choices;
    };
    struct Timer {
        int number;
        unsigned period;
        unsigned left;
    };

    /// Whether the user can reach it: pages only while they show.
    bool IsOpen() const { return !isClosed && !isHidden && (owner == nullptr || owner->IsOpen()); }
    const Control* Find(int id) const;
    Control* Find(int id) { return const_cast<Control*>(std::as_const(*this).Find(id)); }
    /// The control when the user can use it, and it is of that kind.
    Control* FindUsable(int id, ControlKind kind);
    Control* FindUsable(int id);
    /// The user put a text into the control.
    bool Enter(Control& control, const VUnicodeString& text);
    Control* FindUsableButton(int id);
    /// The button that the Return key presses, when it can be.
    Control* FindReturnButton();
    Control* FindDefaultButton();
    /// From a page, which has the focus.
    bool PressDefaultButton();
    /// What a click outside of the edit box does. False when the click is lost.
    bool EndLabelEdits();
    bool PressToolbar(int command);

    HeadlessDialogKit& kit;
    const DialogTemplate& dialog;
    IDialogEvents& events;
    VUnicodeString title;
    std::vector<Control> controls;
    std::vector<Timer> timers;
    const VToolbarState* toolbar = nullptr;
    VRectangle inside;
    VPoint least{-1, -1};  ///< the least inside; negative: not to be resized
    int lastTimer = 0;
    int focus = kNoId;
    bool isClosed = false;
    HeadlessDialog* owner;
    bool isHidden;
    std::vector<HeadlessDialog*> pages;
};

}  // namespace connectdialog
