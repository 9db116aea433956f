// A toolbar in which an edit control may stand: which keys are the control's, and how it looks.
#pragma once

#include <cstdint>
#include <optional>

#include "foundation/isynchobject.h"
#include "imports/hostcallbacks.h"

namespace connectdialog {

/// A message of the keyboard on its way to a window, and whether the Ctrl key was down.
struct ToolbarKeyMessage {
    static constexpr std::uint32_t kFirst = 256;
    static constexpr std::uint32_t kKeyDown = 256;
    static constexpr std::uint32_t kLast = 265;

    std::uint32_t message = 0;  ///< from kFirst to kLast; other numbers are messages of something else
    std::uint32_t key = 0;      ///< a virtual key
    bool isControlDown = false;
};

/// The receiver of an edit control in a toolbar.
class IToolbarEditSink {
  public:
    virtual ~IToolbarEditSink() = default;
    /// The toolbar is shown or hidden, with that size in pixels.
    virtual void OnShowPane(bool isShown, std::int32_t width, std::int32_t height) = 0;
    /// Return was pressed in the control.
    virtual void OnEnterKey(bool isControlDown, const ToolbarKeyMessage& message) = 0;
};

/// Colours of an edit control: red, green and blue, 8 bits each from the lowest on, and a colour of the system's by its
/// number.
struct ToolbarEditColours {
    std::optional<std::uint32_t> text;  ///< none: the control's own
    int systemBackground = 0;
};

class VCustomToolbarBase {
  public:
    VCustomToolbarBase() = default;
    VCustomToolbarBase(const VCustomToolbarBase&) = delete;
    VCustomToolbarBase& operator=(const VCustomToolbarBase&) = delete;
    virtual ~VCustomToolbarBase() = default;

    /// Null: the bar has no edit control. Requires: the sink outlives the bar, or is taken away before it goes.
    void SetEditSink(IToolbarEditSink* newSink) { sink = newSink; }

    /// Sees each message before the toolbar does. True when that was all. Keys with which a text is edited (Back,
    /// Delete, Return, Ctrl+C, Ctrl+V) reach the edit control past all accelerators, and Return its sink.
    bool PreTranslateMessage(const ToolbarKeyMessage& message);

    /// Whether the control shows its hint in place of a text; at first it does.
    void ShowHint(bool isShown) { isHintShown = isShown; }
    /// What the control asks for when it is drawn.
    ToolbarEditColours GetEditColours() const;

  protected:
    IToolbarEditSink* GetEditSink() const { return sink; }
    /// Hands the message to the edit control, at once.
    virtual void DispatchToEdit(const ToolbarKeyMessage& /*message*/) {}

    /// Runs what lays out or draws the bar while the host's lock of toolbars, if there is one, is held.
    template <class Operation>
    static void RunGuarded(Operation operation) {
        const VRef<ISynchObject> lock = GetHostCallbacks().toolbarLock;
        if (!lock) return operation();
        const VSynchGuard guard(*lock);
        operation();
    }

  private:
    IToolbarEditSink* sink = nullptr;
    bool isHintShown = true;
};

}  // namespace connectdialog
