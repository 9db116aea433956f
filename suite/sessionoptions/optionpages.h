// The pages of the session options as data: which settings stand on which page, under which label.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "suite/protocols/launchmessages.h"

namespace connectdialog {

/// How a setting is shown and typed. What is shown is a text for each of them; see optionfield.h.
enum class FieldKind : std::uint8_t {
    kName,  ///< no setting: what the session is called
    kText,
    kNumber,
    kSwitch,  ///< a check box
    kChoice,  ///< one of OptionField::choices, or what is stored now
    kProtocol,
    kFirewall,
    kEmulation,
    kLines,
    kColor,     ///< #RRGGBB
    kFontFace,  ///< of a font
    kFontSize,  ///< of a font; points
    kSecret     ///< never shown; what is typed replaces it
};

/// A text for the user and the one of config/settingtext.h that it stands for.
struct FieldChoice {
    std::u16string_view shown;
    std::u16string_view stored;
};

struct OptionField {
    FieldKind kind;
    const char16_t* label;
    std::u16string_view setting;
    /// Of a kNumber; both 0: what its type has room for.
    std::int32_t least = 0;
    std::int32_t most = 0;
    std::span<const FieldChoice> choices = {};
    /// What a text must be unless it is empty; null: any text.
    LaunchFault (*check)(std::u16string_view text) = nullptr;
};

struct OptionPage {
    /// As the global settings remember it: the names from the outermost page on, with `\` between them.
    std::u16string_view path;
    const char16_t* title;
    std::span<const OptionField> fields;
};

/// In the order of the list; a page stands behind the one that it belongs to. The last has no fields: it shows every
/// setting of the session.
std::span<const OptionPage> GetOptionPages();
/// The first field of that setting; null when no page has it.
const OptionField* FindOptionField(std::u16string_view setting);

/// The first is a tick.
inline constexpr FieldChoice kSwitchWords[] = {{u"是", u"true"}, {u"否", u"false"}};
inline constexpr FieldChoice kTriStateWords[] = {{u"按全局设置", u"global"}, {u"开", u"on"}, {u"关", u"off"}};

}  // namespace connectdialog
