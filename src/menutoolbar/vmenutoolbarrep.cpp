#include "menutoolbar/vmenutoolbarrep.h"

#include "foundation/vpath.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kToolTipMark = u"\\n";

template <class T>
const T* FindIn(const MenuNameMap<T>& map, std::u16string_view name) {
    const auto found = map.find(name);
    return found != map.end() ? &found->second : nullptr;
}

}  // namespace

MenuString::MenuString(std::u16string_view text) : MenuString(text, text.find(kToolTipMark)) {}

MenuString::MenuString(std::u16string_view text, std::size_t mark)
    : prompt(text.substr(0, mark)),
      toolTip(mark == text.npos ? prompt : VUnicodeString(text.substr(mark + kToolTipMark.size()))) {}

void VMenuToolbarRep::SetFileName(const VUnicodeString& name) {
    fileName = name;
    VUnicodeString leaf;
    folder = VSplitPath(name, leaf);
}

void VMenuToolbarRep::Reset() {
    DropContents();
    commandTable = nullptr;
}

void VMenuToolbarRep::DropContents() {
    menus.clear();
    menusByName = MenuNameMap<VMenuToolbar*>(&memory);
    accelerators = MenuNameMap<AcceleratorRep>(&memory);
    strings = MenuNameMap<MenuString>(&memory);
    memory.release();
    error.Clear();
    warnings.Clear();
    font.Empty();
}

void VMenuToolbarRep::AddMenu(const VUnicodeString& name, MenuEntryPtr<VMenuToolbar> menu) {
    menusByName.emplace(KeepMenuName(memory, name), menu.get());
    menus.push_back(std::move(menu));
}

VMenuToolbar* VMenuToolbarRep::FindMenu(std::u16string_view name) const {
    VMenuToolbar* const* found = FindIn(menusByName, name);
    return found != nullptr ? *found : nullptr;
}

const AcceleratorRep* VMenuToolbarRep::FindAccelerator(std::u16string_view key) const {
    return FindIn(accelerators, key);
}

const MenuString* VMenuToolbarRep::FindString(std::u16string_view key) const {
    return FindIn(strings, key);
}

}  // namespace connectdialog
