// What a provider supplies below the handles: a tree of nodes with a unit of work.
//
// The handles of storekey.h and profilestore.h are the same for every provider. They check names and read-only roots,
// encode values, keep reports and count who takes part in the unit of work. A provider derives a tree and a node and
// sees names that are valid, values that are bytes, and writes only inside a unit.
//
// Every operation that can fail takes a report and gives false (or null) after filling it with a code and, where there
// is more to say, the cause as insert. On success the report is left alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "foundation/vunicodestring.h"
#include "profile/iprofilestore.h"
#include "resources/storenames.h"
#include "stores/common/storedvalue.h"

namespace connectdialog::stores {

struct KeyName;
class StoreNode;

using NodePtr = std::shared_ptr<StoreNode>;

/// One child as a listing tells it.
struct StoreChild {
    VUnicodeString name;
    ProfileKind kind = ProfileKind::kFolder;
};

/// A part of the children of a node, in order, and where the next part begins.
struct ChildPage {
    std::vector<StoreChild> children;
    std::u16string lastFolded;  ///< of the last child of a full page; empty before the first
    bool isLast = false;
    bool skipsSessions = false;  ///< asked for by the caller
};

/// A key that exists or existed. All handles on one key share its node, so they see each other's writes at once.
class StoreNode {
  public:
    StoreNode() = default;
    StoreNode(const StoreNode&) = delete;
    StoreNode& operator=(const StoreNode&) = delete;
    virtual ~StoreNode() = default;

    /// True when the unit that created the key was abandoned: the key never was, and its name may mean another key.
    /// Whoever holds the node looks the name up again.
    bool IsUndone() const { return undone; }

    // All of these fail with 1018 on a key that was deleted.

    /// `value` points into the node. On failure: 2 when there is no such value; 1015 when the key's data is damaged.
    virtual bool Read(const char16_t* name, ValueView& value, VReportMessageParams& report) = 0;
    /// Requires: a unit has begun. Never overwrites damaged data (1015). 87 for a name that is too long.
    virtual bool Write(const char16_t* name, const ValueView& value, VReportMessageParams& report) = 0;
    /// Replaces all values with those of a node of the same tree. Requires: a unit has begun. Fails as Read or Write.
    virtual bool CopyValues(StoreNode& source, VReportMessageParams& report) = 0;
    /// Requires: a unit has begun. On failure: 2 when there is no such value.
    virtual bool Erase(const char16_t* name, VReportMessageParams& report) = 0;

    /// The key of the name below this one, its values as they are now, or null with code 2. A `forCheck` lookup asks
    /// the medium; any other may take what the latest check in the same store found.
    virtual NodePtr Find(const KeyName& name, bool forCheck, VReportMessageParams& report) = 0;
    /// The same, and creates what is missing of its levels. Requires: a unit has begun.
    virtual NodePtr Create(const KeyName& name, VReportMessageParams& report) = 0;
    /// Removes the key with everything below it. Requires: a unit has begun.
    virtual bool Remove(const KeyName& name, VReportMessageParams& report) = 0;
    /// Appends the names of the values that are lists of strings, in the order of their folded names.
    virtual bool ListLists(std::vector<StoreChild>& lists, VReportMessageParams& report) = 0;
    /// Replaces the page with the children that follow `page.lastFolded`, at most `limit` of them.
    virtual bool List(std::size_t limit, ChildPage& page, VReportMessageParams& report) = 0;

  protected:
    bool undone = false;
};

/// The tree of one factory and its unit of work. Kept alive by the handles too.
class StoreTree {
  public:
    StoreTree() = default;
    StoreTree(const StoreTree&) = delete;
    StoreTree& operator=(const StoreTree&) = delete;
    virtual ~StoreTree() = default;

    /// Never null; the root of a store that cannot be read answers as an empty one.
    virtual NodePtr GetRoot() = 0;
    virtual bool IsWritable() = 0;
    /// A store handle begins or ends: what a check found may be old by the next one.
    virtual void StoreOpened() {}
    virtual void StoreClosed() {}

    /// See IProfileStoreImpl::HoldView. Each call of the first has one of the second.
    virtual void BeginView() {}
    virtual void EndView() {}

    /// Cheap when a unit has begun. On failure: no unit has begun, or the one that has can only be abandoned.
    virtual bool BeginUnit(VReportMessageParams& report) = 0;
    /// Makes the unit durable; without one does nothing. On failure: as RollbackUnit.
    virtual bool CommitUnit(VReportMessageParams& report) = 0;
    /// Puts the tree back to the state before the unit. Nodes of keys that the unit created become undone.
    virtual void RollbackUnit() = 0;

    /// Changes whenever a name that was absent may have come to exist through this factory, or the key above it may
    /// have been deleted, which is another answer.
    std::uint64_t GetGeneration() const { return generation; }

    std::size_t participants = 0;    ///< store handles that take part in the unit
    std::uint64_t droppedUnits = 0;  ///< units that were abandoned, or whose commit failed
    std::string scratch;             ///< where handles encode a value on its way to a node

  protected:
    std::uint64_t generation = 1;
};

}  // namespace connectdialog::stores
