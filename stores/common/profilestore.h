// Store handles and their part in the unit of work, the same for every provider.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/vreportmessageparams.h"
#include "profile/iprofilestore.h"
#include "stores/common/storetree.h"

namespace connectdialog::stores {

/// What one store handle has in the unit of work. The store and the keys opened from it share it, since a root key may
/// outlive its store.
class StorePart {
  public:
    explicit StorePart(std::shared_ptr<StoreTree> tree);

    StoreTree& GetTree() const { return *tree; }
    /// Takes part, and begins the unit when this is its first write. On failure: false; a store that did not take part
    /// still does not. 6 when the store was closed, 1223 when another part dropped what this one wrote.
    bool Join(VReportMessageParams& report);
    bool Commit(VReportMessageParams& report);
    void Abandon();
    void HoldView();
    /// Ends the part; the last one commits. A second call gives true.
    bool Leave(VReportMessageParams& report);

  private:
    /// Another part dropped what this one wrote: half of its work would be missing, so the rest must not be kept.
    bool WasDropped() const { return joined && joinedAfter != tree->droppedUnits; }
    void NoteDrop();

    std::shared_ptr<StoreTree> tree;
    std::uint64_t joinedAfter = 0;  ///< the tree's droppedUnits when this part last joined or dropped one itself
    bool joined = false;
    bool holdsView = false;
    bool closed = false;
};

class ProfileStore : public IProfileStoreImpl {
  public:
    explicit ProfileStore(std::shared_ptr<StoreTree> tree);
    ~ProfileStore() override;

    IProfileKeyImpl* CreateRootKey(bool readOnly) override;
    bool JoinUnitOfWork() override;
    bool Commit() override;
    void Abandon() override;
    bool Close() override;
    void HoldView() override { part->HoldView(); }
    VReportMessageParams* GetLastReport() override { return &report; }

  private:
    std::shared_ptr<StorePart> part;
    VReportMessageParams report;
};

/// A factory over one tree; handles of all its stores see the same nodes.
class TreeStoreFactory : public VProfileStoreFactory {
  public:
    explicit TreeStoreFactory(std::shared_ptr<StoreTree> tree) : tree(std::move(tree)) {}
    IProfileStoreImpl* CreateStore() override { return new ProfileStore(tree); }

  private:
    std::shared_ptr<StoreTree> tree;
};

}  // namespace connectdialog::stores
