// The menus and toolbars of the process, and the commands that they fire.
#pragma once

#include <cstdint>
#include <unordered_set>

#include "foundation/varray.h"
#include "foundation/vmap.h"
#include "menutoolbar/vmenutoolbartextrep.h"

namespace connectdialog {

/// A command id as the key of a map.
struct MenuCommandId {
    std::uint32_t value = 0;
    friend bool operator==(MenuCommandId, MenuCommandId) = default;
};
/// One step of the minimal standard generator (Park and Miller, 1988) in Schrage's form.
std::uint32_t VMapHash(MenuCommandId id);

/// The host names the file and the command table in the representation, parses it, registers its commands, makes its
/// menus and toolbars (BuildMenuToolbar) and resets it: what is registered here is copied and stays. Belongs to the
/// user-interface thread.
class VCustomMenuToolbar {
  public:
    /// Items with an argument get commands from here on, each its own: the function's number alone would not tell what
    /// to send or to open.
    static constexpr std::uint32_t kFirstArgumentCommand = 0x9000;
    static constexpr std::uint32_t kLastArgumentCommand = 0xDFFF;

    /// The one of the process, made when it is first asked for.
    static VCustomMenuToolbar& Get();

    VMenuToolbarTextRep& GetRep() { return rep; }

    /// Adds the items of the block and its submenus to the commands, and their accelerators. An item with an argument
    /// gets a command id of its own first, in the block and in its accelerator too; when these have run out it is not
    /// registered. Where items share a command the first one stays, unless only a later one has a tool tip.
    void RegisterCommands(VMenuToolbar& block);
    void RemoveCommands();

    /// Copies the item of a command. On failure: false, and `item` stays, when the command is not known.
    bool FindCommand(std::uint32_t command, VMenuToolbarItem& item) const;
    /// False when the command is not known; `text` is empty then, and for an item without a tool tip.
    bool FindToolTip(std::uint32_t command, VUnicodeString& text) const;
    /// In the order in which they were registered. Of those with one key and the same modifiers the first counts, and
    /// the others are not here.
    const VArray<VMenuAccelerator>& GetAccelerators() const { return accelerators; }

  private:
    static constexpr std::uint32_t kBucketCount = 17;
    static constexpr std::uint64_t kFirstSize = 3;

    bool TakeCommandOfItsOwn(VMenuToolbarItem& item);
    void RegisterItem(VMenuToolbarItem& item);
    void AddAccelerator(const VMenuAccelerator& accelerator);

    VMenuToolbarTextRep rep;
    VMap<MenuCommandId, VMenuToolbarItem> commands{kBucketCount};
    VArray<VMenuAccelerator> accelerators{kFirstSize};
    std::unordered_set<std::uint32_t> acceleratorKeys;  ///< flags and key of each accelerator
    std::uint32_t nextArgumentCommand = kFirstArgumentCommand;
};

}  // namespace connectdialog
