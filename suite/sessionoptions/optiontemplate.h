// What the session options look like: a list of pages, and the controls of all pages in one place.
#pragma once

#include "resources/dialogtemplate.h"
#include "suite/sessionoptions/optionpages.h"

namespace connectdialog {

namespace OptionIds {
inline constexpr int kDialog = 6100;
inline constexpr int kPages = 6101;
inline constexpr int kPageFrame = 6102;
inline constexpr int kNote = 6103;
// The page of all settings.
inline constexpr int kFilterLabel = 6104;
inline constexpr int kFilter = 6105;
inline constexpr int kSettings = 6106;
inline constexpr int kSettingLabel = 6107;
inline constexpr int kSettingText = 6108;
inline constexpr int kSettingSecret = 6109;
inline constexpr int kSettingLines = 6110;
inline constexpr int kSettingChoice = 6111;
inline constexpr int kForget = 6112;
inline constexpr int kFirstField = 6200;  ///< of GetOptionControls
}  // namespace OptionIds

/// A field of a page and the ids of what shows it.
struct OptionControl {
    const OptionField& field;
    const OptionPage& page;
    int label;
    int control;
};
/// Of all fields, in the order of the pages.
std::span<const OptionControl> GetOptionControls();

/// Dialog units.
struct OptionRowPlaces {
    DialogRectangle label;  ///< empty where the control has one of its own
    DialogRectangle control;
    std::int16_t height;  ///< down to the next row
};
/// The places in a row that begins `top` units below the top of the page.
OptionRowPlaces PlaceRow(FieldKind kind, std::int16_t top);

ControlKind GetControlKind(FieldKind kind);

/// With the controls of all pages.
const DialogTemplate& GetOptionTemplate();
/// How far the rows of a page may go, units below its top.
inline constexpr std::int16_t kOptionPageHeight = 12 * 17;

}  // namespace connectdialog
