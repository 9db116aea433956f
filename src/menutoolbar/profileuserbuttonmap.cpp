#include "menutoolbar/profileuserbuttonmap.h"

namespace connectdialog {

void ProfileUserButtonMap::LoadButtons(VProfileKey* key, const VUnicodeString& valueName) {
    LoadNamed(key, valueName);
    DecodeLines();
}

void ProfileUserButtonMap::SetLines(const VStringArray& lines) {
    Set(lines);
    DecodeLines();
}

void ProfileUserButtonMap::DecodeLines() {
    buttons.Clear();
    VStringArray kept;
    for (const VUnicodeString& line : Get()) {
        UserButton button = DecodeButtonLine(line);
        if (button.function == UserButton::kNoFunction) continue;
        buttons.Add(std::move(button));
        kept.Add(line);
    }
    if (kept.GetCount() != Get().GetCount()) Set(kept);
}

}  // namespace connectdialog
