#include "sessiondb/userbuttonbar.h"

#include <algorithm>
#include <vector>

#include "profile/unitofwork.h"
#include "sessiondb/buttonbarupgrade.h"

namespace connectdialog {

namespace {

using Lines = std::vector<VUnicodeString>;

/// `edit` changes the lines.
template <class Edit>
bool EditLines(ProfileUserButtonMap& map, Edit edit) {
    Lines lines(map.GetLines().begin(), map.GetLines().end());
    edit(lines);
    VStringArray changed;
    for (const VUnicodeString& line : lines) changed.Add(line);
    map.SetLines(changed);
    return true;
}

Lines::iterator At(Lines& lines, std::size_t place) {
    return lines.begin() + static_cast<std::ptrdiff_t>(place);
}

}  // namespace

bool UserButtonBar::Load(const VUnicodeString& barName) {
    name = barName;
    map = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
    UpgradeButtonBars();
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), kButtonBarsKey, 0);
    stored.Clear();
    const bool isStored = key.ReadMultiString(barName.GetData(), stored);
    const std::uint32_t code = key.GetImpl()->GetLastReport()->GetCode();
    map->LoadButtons(&key, barName);
    isThere = isStored || barName == kDefaultButtonBar;
    return isStored || code == platform::kSuccess || code == platform::kFileNotFound;
}

bool UserButtonBar::IsOutdated() const {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), kButtonBarsKey, 0);
    VStringArray lines;
    key.ReadMultiString(name.GetData(), lines);
    return lines != stored;
}

bool UserButtonBar::Insert(std::size_t place, const UserButton& button) {
    if (place > GetCount() || FindButtonFault(button) != ButtonFault::kNone) return false;
    return EditLines(*map, [&](Lines& lines) { lines.insert(At(lines, place), EncodeButtonLine(button)); });
}

bool UserButtonBar::Set(std::size_t place, const UserButton& button) {
    if (place >= GetCount() || FindButtonFault(button) != ButtonFault::kNone) return false;
    return EditLines(*map, [&](Lines& lines) { lines[place] = EncodeButtonLine(button); });
}

bool UserButtonBar::Remove(std::size_t place) {
    if (place >= GetCount()) return false;
    return EditLines(*map, [&](Lines& lines) { lines.erase(At(lines, place)); });
}

bool UserButtonBar::Move(std::size_t from, std::size_t to) {
    if (from >= GetCount() || to >= GetCount()) return false;
    return EditLines(*map, [&](Lines& lines) {
        if (from < to)
            std::rotate(At(lines, from), At(lines, from + 1), At(lines, to + 1));
        else
            std::rotate(At(lines, to), At(lines, from), At(lines, from + 1));
    });
}

bool UserButtonBar::Save() {
    if (!WriteToKey(kButtonBarsKey, [this](VProfileKey& key) { map->Save(key, true); })) return false;
    stored = map->GetLines();
    return true;
}

}  // namespace connectdialog
