// What a dialog looks like, as data.
#pragma once

#include <cstdint>
#include <span>

namespace connectdialog {

enum class ControlKind : std::uint8_t {
    kStatic,    ///< a text that the user cannot change; "&" in it marks the letter of the control that follows
    kIcon,      ///< one of the system's pictures, by the label: "warning"
    kEdit,      ///< one line of text
    kPassword,  ///< one line of text that nobody reads over the user's shoulder
    kMemo,      ///< lines of text; the Return key begins a new one
    kComboBox,  ///< one of several texts: see IDialogWindow::SetChoices
    kButton,
    kDefaultButton,  ///< the button that the Return key presses; at most one in a dialog
    kCheckBox,
    kGroupBox,   ///< a frame with a heading round the controls that lie in it
    kSeparator,  ///< a line
    kTree,
    kToolbar  ///< of no template: IDialogWindow::ShowToolbar makes it
};

/// Whether the control's text is the user's; its name is then that of the label before it.
constexpr bool HoldsInput(ControlKind kind) {
    return kind == ControlKind::kEdit || kind == ControlKind::kPassword || kind == ControlKind::kMemo ||
           kind == ControlKind::kComboBox;
}

/// Whether the Tab key stops at such a control.
constexpr bool TakesFocus(ControlKind kind) {
    return HoldsInput(kind) || kind == ControlKind::kButton || kind == ControlKind::kDefaultButton ||
           kind == ControlKind::kCheckBox || kind == ControlKind::kTree;
}

/// Dialog units: a quarter of the average width, an eighth of the height, of the dialog's font.
struct DialogRectangle {
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::int16_t width = 0;
    std::int16_t height = 0;
};

/// The ids that every dialog has in common.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;
/// For controls that the logic never names.
inline constexpr int kNoId = -1;

struct ControlTemplate {
    ControlKind kind;
    int id;  ///< of its own in the dialog, or kNoId
    const char16_t* label;
    DialogRectangle place;
};

/// Controls stand in the order in which the Tab key walks them.
struct DialogTemplate {
    std::int32_t id;
    std::int16_t width;
    std::int16_t height;
    const char16_t* title;
    std::span<const ControlTemplate> controls;
    /// The window class that gives the dialog its icon (see imports/dialogkit/windowclass.h); empty: none.
    const char16_t* windowClass = u"";
};

/// All that the library has.
std::span<const DialogTemplate> GetDialogTemplates();
/// The template of that number, or null.
const DialogTemplate* FindDialogTemplate(int id);

}  // namespace connectdialog
