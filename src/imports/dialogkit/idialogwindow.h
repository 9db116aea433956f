// The window of one dialog: its controls by id, and what the user does with them.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "foundation/vunicodestring.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

class ITreeEvents;
class ITreeView;
class VIcon;
class VToolbarState;
class VTreeItems;
struct DialogRectangle;
struct DialogTemplate;

/// Bits of Accelerator::Modifier.
using KeyModifiers = std::uint8_t;

/// What a back end tells a dialog. What code sets raises no event.
class IDialogEvents {
  public:
    virtual ~IDialogEvents() = default;
    /// A button or a check box was clicked (its new state is set already), or a button of the toolbar. Closing the
    /// window by its frame or by the Escape key is a click on kIdCancel, the Return key one on the button that has the
    /// focus, else on the default button, unless that is disabled or lines are typed.
    virtual void OnCommandEvent(int id) = 0;
    /// The user changed the text of an edit control, or chose in a combo box.
    virtual void OnTextChanged(int id) = 0;
    /// A key, before any control sees it; a capital letter, a digit or one of kKey…. True when that was all.
    virtual bool OnKeyEvent(std::uint16_t key, KeyModifiers modifiers) = 0;
    /// A timer of IDialogWindow::StartTimer ran out; it goes on until it is stopped.
    virtual void OnTimer(int timer) = 0;
    /// The user gave the inside of the window another size, pixels.
    virtual void OnSize(std::int32_t width, std::int32_t height) = 0;
    /// The window goes, with all its controls still there.
    virtual void OnWindowGone() = 0;
};

/// Where an id names no control, nothing happens, texts are empty and answers false. Rectangles are pixels of the
/// window's inside.
class IDialogWindow {
  public:
    virtual ~IDialogWindow() = default;

    /// Shows the window and handles what the user does until Close was called.
    virtual void RunModal() = 0;
    /// Shows it and comes back at once.
    virtual void ShowModeless() = 0;
    /// Ends RunModal as soon as the event at hand is over.
    virtual void Close() = 0;

    virtual void SetTitle(const VUnicodeString& title) = 0;
    /// The label, or what the user typed or chose: that of a password is sensitive, lines have a line feed between
    /// them.
    virtual VUnicodeString GetText(int id) const = 0;
    /// In a combo box a text that it does not offer chooses none.
    virtual void SetText(int id, const VUnicodeString& text) = 0;
    /// The texts that a combo box offers; none of them is chosen then.
    virtual void SetChoices(int id, std::span<const VUnicodeString> choices) = 0;
    virtual bool IsChecked(int id) const = 0;
    virtual void SetChecked(int id, bool isChecked) = 0;
    virtual bool IsEnabled(int id) const = 0;
    virtual void SetEnabled(int id, bool isEnabled) = 0;
    virtual bool IsShown(int id) const = 0;
    virtual void SetShown(int id, bool isShown) = 0;
    /// Moves the focus; an edit control has its text selected by it.
    virtual void SetFocus(int id) = 0;
    /// The control that has it, or kNoId.
    virtual int GetFocus() const = 0;
    virtual VRectangle GetRectangle(int id) const = 0;
    virtual void SetRectangle(int id, const VRectangle& place) = 0;
    virtual VRectangle ToPixels(const DialogRectangle& place) const = 0;
    /// The width of a text in the control's font, pixels.
    virtual std::int32_t GetTextWidth(int id, std::u16string_view text) const = 0;
    /// The font of a control; a size of 0 leaves the size as it is.
    virtual void SetFont(int id, const VUnicodeString& family, int points) = 0;
    /// The picture of an icon control; one that the back end cannot show leaves the control's own.
    virtual void SetIcon(int /*id*/, const VIcon& /*icon*/) {}
    /// From a point of the control to one of the screen.
    virtual VPoint ToScreen(int id, VPoint point) const = 0;

    /// The size of the window's inside: right and bottom.
    virtual VRectangle GetInside() const = 0;
    /// As far as the screen has room.
    virtual void SetInside(std::int32_t width, std::int32_t height) = 0;
    /// Lets the user give the window another size, of whose inside this is the least. Without it the size is fixed.
    virtual void LetResize(std::int32_t leastWidth, std::int32_t leastHeight) = 0;
    /// Where it stands; the normal rectangle has the size of the window's inside.
    virtual VWindowPlacement GetPlacement() const = 0;

    /// Gives a number for the timer. Milliseconds.
    virtual int StartTimer(unsigned milliseconds) = 0;
    virtual void StopTimer(int timer) = 0;

    /// Lets a tree control show `items` and tell `events`. The view is owned by the window; null when there is no tree
    /// control of that id. Requires: both outlive the window.
    virtual ITreeView* AttachTree(int id, VTreeItems& items, ITreeEvents& events) = 0;
    /// Shows a toolbar in the upper left corner, as large as its buttons need, or shows it anew after `toolbar`
    /// changed, where it stands. It is a control of that id from then on. Requires: `toolbar` outlives the window.
    virtual void ShowToolbar(int id, const VToolbarState& toolbar) = 0;

    /// Makes a dialog that lies in this one as a page, hidden: `place` is its whole inside, and its controls come
    /// behind the control `behindId` in the order of the Tab key, or before all others where there is none.
    /// ShowModeless and Hide show and hide it; its Return and Escape keys are those of this window. Requires: `events`
    /// outlives the page, and the page goes before this window. On failure: null.
    virtual std::unique_ptr<IDialogWindow> CreatePage(const DialogTemplate& /*page*/, IDialogEvents& /*events*/,
                                                      const VRectangle& /*place*/, int /*behindId*/) {
        return nullptr;
    }
    /// Hides a page; another window stays.
    virtual void Hide() {}
};

}  // namespace connectdialog
