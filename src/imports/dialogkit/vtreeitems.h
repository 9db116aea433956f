// The items of a tree control: what it shows and in which state, without the showing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// A handle on an item. One that was given up, or was never given out, is told from a live one in constant time, so a
/// handle may come from anywhere; none is ever followed.
enum class TreeItem : std::uint64_t { kNone = 0 };

/// States of an item; they may be joined.
enum TreeItemState : std::uint8_t {
    kTreeSelected = 1,
    kTreeExpanded = 2,
    /// Nobody asks for its children again when it expands.
    kTreeExpandedOnce = 4,
    /// It has an expander although no child exists yet.
    kTreeForcedExpander = 8,
    kTreeCut = 16,
    /// A drop would go into it.
    kTreeDropTarget = 32
};

enum class TreePlace : std::int32_t { kFirst = 0, kLast = 1, kBehind = 2 };

/// Told of every change, by whatever cause: a view of the items.
class ITreeItemsObserver {
  public:
    virtual ~ITreeItemsObserver() = default;
    virtual void OnItemInserted(TreeItem item) = 0;
    /// The item goes, with all items below it, which are not told one by one; they are all still there.
    virtual void OnItemRemoving(TreeItem item) = 0;
    /// Text, state, caret or insert mark.
    virtual void OnItemChanged(TreeItem item) = 0;
};

/// Owns what the items' data points at.
class ITreeItemsOwner {
  public:
    virtual ~ITreeItemsOwner() = default;
    /// Told once for each item that goes, children before parents; its handle is not valid any more.
    virtual void OnItemDeleted(void* data) = 0;
};

/// Items in order, each with a text, two picture numbers, states and a pointer of the owner's. Walking, asking and
/// changing one item take constant time; nothing here calls itself, however deep the tree. An operation on a handle
/// that is not valid does nothing and answers none, false or the empty text. 48 bytes an item beside its text.
class VTreeItems {
  public:
    explicit VTreeItems(ITreeItemsOwner& owner) : owner(owner) {}
    ~VTreeItems() { Clear(); }
    VTreeItems(const VTreeItems&) = delete;
    VTreeItems& operator=(const VTreeItems&) = delete;

    /// Null removes it. One at a time.
    void SetObserver(ITreeItemsObserver* newObserver) { observer = newObserver; }

    /// `parent` kNone means the top level. `after` counts for kBehind; one that is no child of the parent means last.
    TreeItem Insert(TreeItem parent, TreePlace place, TreeItem after, const VUnicodeString& text, std::uint8_t image,
                    std::uint8_t selectedImage, void* data);
    /// With everything below it.
    void Remove(TreeItem item);
    void Clear();
    std::size_t GetCount() const { return nodes.size() - 1 - freed.size(); }
    /// Another number whenever the rows on the screen may be others: an item came, went, was expanded or collapsed.
    std::uint64_t GetShape() const { return shape; }

    bool IsValid(TreeItem item) const { return Find(item) != nullptr; }
    /// kNone gives the first top-level item.
    TreeItem GetFirstChild(TreeItem item) const;
    TreeItem GetLastChild(TreeItem item) const;
    TreeItem GetParent(TreeItem item) const;
    TreeItem GetNextSibling(TreeItem item) const;
    TreeItem GetPreviousSibling(TreeItem item) const;
    /// In the order of the rows on the screen: into expanded items, over collapsed ones.
    TreeItem GetNextVisible(TreeItem item) const;
    TreeItem GetPreviousVisible(TreeItem item) const;
    /// True also for the item itself.
    bool IsInside(TreeItem item, TreeItem ancestor) const;

    VUnicodeString GetText(TreeItem item) const;
    void SetText(TreeItem item, const VUnicodeString& text);
    void* GetData(TreeItem item) const;
    std::uint8_t GetImage(TreeItem item, bool isSelected) const;
    bool HasState(TreeItem item, TreeItemState state) const;
    void SetState(TreeItem item, TreeItemState state, bool isOn);
    bool HasChildrenOrExpander(TreeItem item) const;

    /// Where the keyboard stands. Moving it selects nothing.
    TreeItem GetCaret() const { return caret; }
    void SetCaret(TreeItem item);

    /// Takes time by the number of selected items, not of all.
    void ClearSelection();
    std::size_t GetSelectedCount() const { return selectedCount; }
    /// In no particular order.
    std::vector<TreeItem> GetSelected() const;

    /// The line that shows where a drop would insert; kNone: no line.
    TreeItem GetInsertMark(bool& isBehind) const {
        isBehind = isMarkBehind;
        return insertMark;
    }
    void SetInsertMark(TreeItem item, bool isBehind);

  private:
    static constexpr std::uint32_t kNil = 0;  ///< node 0 stands for the invisible parent of the top level

    struct Node {
        VUnicodeString text;
        void* data = nullptr;
        std::uint32_t parent = kNil;
        std::uint32_t previous = kNil;
        std::uint32_t next = kNil;
        std::uint32_t firstChild = kNil;
        std::uint32_t lastChild = kNil;
        std::uint32_t generation = 0;  ///< counts how often the place was used
        std::uint8_t state = 0;
        std::uint8_t image = 0;
        std::uint8_t selectedImage = 0;
        bool isLive = false;
    };

    const Node* Find(TreeItem item) const;
    Node* Find(TreeItem item) { return const_cast<Node*>(std::as_const(*this).Find(item)); }
    TreeItem HandleOf(std::uint32_t index) const;
    TreeItem Follow(TreeItem item, std::uint32_t Node::*link) const;
    static std::uint32_t IndexOf(TreeItem item) { return static_cast<std::uint32_t>(item); }
    std::uint32_t Allocate();
    void Link(std::uint32_t index, std::uint32_t parent, std::uint32_t previous);
    void Unlink(std::uint32_t index);
    void Free(std::uint32_t index);
    void TrimSelected();
    void Changed(TreeItem item) {
        if (observer != nullptr) observer->OnItemChanged(item);
    }

    ITreeItemsOwner& owner;
    ITreeItemsObserver* observer = nullptr;
    std::deque<Node> nodes{1};
    std::vector<std::uint32_t> freed;
    std::vector<TreeItem> selected;  ///< every selected item, and some that are not any more
    std::size_t selectedCount = 0;
    std::uint64_t shape = 1;
    TreeItem caret = TreeItem::kNone;
    TreeItem insertMark = TreeItem::kNone;
    bool isMarkBehind = false;
};

}  // namespace connectdialog
