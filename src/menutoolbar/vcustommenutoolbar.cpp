#include "menutoolbar/vcustommenutoolbar.h"

namespace connectdialog {

namespace {
constexpr std::int64_t kMultiplier = 16807;
constexpr std::int64_t kQuotient = 127773;  // of the modulus by the multiplier
constexpr std::int64_t kRemainder = 2836;
constexpr std::int64_t kModulus = 2147483647;
}  // namespace

std::uint32_t VMapHash(MenuCommandId id) {
    const std::int64_t hash = kMultiplier * (id.value % kQuotient) - kRemainder * (id.value / kQuotient);
    return static_cast<std::uint32_t>(hash < 0 ? hash + kModulus : hash);
}

VCustomMenuToolbar& VCustomMenuToolbar::Get() {
    static VCustomMenuToolbar instance;
    return instance;
}

void VCustomMenuToolbar::RegisterCommands(VMenuToolbar& block) {
    for (const MenuEntryPtr<VMenuToolbarItem>& item : block.GetItems()) {
        if (auto* popup = dynamic_cast<VMenuToolbar*>(item.get()))
            RegisterCommands(*popup);
        else if (item->GetType() != kMenuTypeSeparator)
            RegisterItem(*item);
    }
}

void VCustomMenuToolbar::RegisterItem(VMenuToolbarItem& item) {
    if (item.GetTakesArgument() && !TakeCommandOfItsOwn(item)) return;
    if (const VMenuAccelerator accelerator = item.GetAccelerator(); accelerator != VMenuAccelerator())
        AddAccelerator(accelerator);
    const MenuCommandId id{item.GetCommandId()};
    VUnicodeString knownTip;
    VUnicodeString tip;
    item.GetToolTip(tip);
    const bool isKnown = FindToolTip(id.value, knownTip);
    if (!isKnown || (knownTip.IsEmpty() && !tip.IsEmpty())) commands[id] = item;
}

bool VCustomMenuToolbar::TakeCommandOfItsOwn(VMenuToolbarItem& item) {
    if (nextArgumentCommand > kLastArgumentCommand) return false;
    item.SetCommandId(nextArgumentCommand++);
    VMenuAccelerator accelerator = item.GetAccelerator();
    if (accelerator == VMenuAccelerator()) return true;
    accelerator.command = static_cast<std::uint16_t>(item.GetCommandId());
    item.SetAccelerator(accelerator);
    return true;
}

void VCustomMenuToolbar::AddAccelerator(const VMenuAccelerator& accelerator) {
    const std::uint32_t key = std::uint32_t{accelerator.flags} << 16 | accelerator.key;
    if (acceleratorKeys.insert(key).second) accelerators.Add(accelerator);
}

void VCustomMenuToolbar::RemoveCommands() {
    commands.RemoveAll();
    accelerators.Clear();
    acceleratorKeys.clear();
    nextArgumentCommand = kFirstArgumentCommand;
}

bool VCustomMenuToolbar::FindCommand(std::uint32_t command, VMenuToolbarItem& item) const {
    const VMenuToolbarItem* found = commands.Find({command});
    if (found != nullptr) item = *found;
    return found != nullptr;
}

bool VCustomMenuToolbar::FindToolTip(std::uint32_t command, VUnicodeString& text) const {
    text.Empty();
    const VMenuToolbarItem* found = commands.Find({command});
    if (found != nullptr) found->GetToolTip(text);
    return found != nullptr;
}

}  // namespace connectdialog
