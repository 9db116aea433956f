// A menu, a toolbar or a popup: a list of entries with a name.
#pragma once

#include <memory>
#include <memory_resource>
#include <vector>

#include "menutoolbar/vmenutoolbaritem.h"

namespace connectdialog {

enum class MenuBlockKind : std::uint8_t { kMenu = 1, kToolbar = 2, kPopup = 3 };

/// Ends an entry; its memory is the description's and goes with it.
struct EndMenuEntry {
    void operator()(VMenuToolbarItem* entry) const { std::destroy_at(entry); }
};
template <class Entry>
using MenuEntryPtr = std::unique_ptr<Entry, EndMenuEntry>;

/// Requires: the memory outlives the entry.
template <class Entry, class... Arguments>
MenuEntryPtr<Entry> MakeMenuEntry(std::pmr::memory_resource& memory, Arguments&&... arguments) {
    std::pmr::polymorphic_allocator<> allocator(&memory);
    return MenuEntryPtr<Entry>(allocator.new_object<Entry>(std::forward<Arguments>(arguments)...));
}

/// Its text is its name; that of a submenu is its label. Owns its entries.
class VMenuToolbar : public VMenuToolbarItem {
  public:
    using Items = std::pmr::vector<MenuEntryPtr<VMenuToolbarItem>>;

    VMenuToolbar(MenuBlockKind kind, std::pmr::memory_resource& memory) : kind(kind), items(&memory) {
        items.reserve(kUsualSize);
    }
    VMenuToolbar(const VMenuToolbar&) = delete;
    VMenuToolbar& operator=(const VMenuToolbar&) = delete;

    MenuBlockKind GetKind() const { return kind; }
    void Append(MenuEntryPtr<VMenuToolbarItem> item) { items.push_back(std::move(item)); }
    /// In the order of the description. A submenu is a VMenuToolbar of the type kMenuTypePopup.
    const Items& GetItems() const { return items; }

  private:
    static constexpr std::size_t kUsualSize = 10;

    MenuBlockKind kind;
    Items items;
};

/// What makes a real menu or toolbar out of a block, entry by entry: a back end of the dialogs, or whoever shows it.
class IMenuToolbarBuilder {
  public:
    virtual ~IMenuToolbarBuilder() = default;
    /// An item that fires its command id.
    virtual void AddItem(const VMenuToolbarItem& item) = 0;
    virtual void AddSeparator() = 0;
    /// What is added up to the matching EndPopup belongs to a submenu with this label.
    virtual void BeginPopup(const VUnicodeString& label) = 0;
    virtual void EndPopup() = 0;
};

/// Hands the entries of the block to the builder, in order and in depth; the block itself, with its name and kind, is
/// the caller's matter.
void BuildMenuToolbar(const VMenuToolbar& block, IMenuToolbarBuilder& builder);

}  // namespace connectdialog
