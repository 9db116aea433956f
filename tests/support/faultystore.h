// A store that fails when a test wants it to.
#pragma once

#include <functional>
#include <utility>

#include "profile/iprofilestore.h"

namespace connectdialog::test {

/// Which operation fails next. Shared by all stores and keys of one factory.
struct FaultPlan {
    int failWrite = 0;        ///< the how many-th write from now fails; 0 or below: none
    bool failCommit = false;  ///< Commit, and the Close of the last open store, fail and abandon
    bool failAll = false;     ///< every write fails
    int writes = 0;           ///< writes so far that were let through
    /// What another process does behind the checks and before the lock: runs once, when the next unit or write begins.
    std::function<void()> beforeLock = {};
    void RunBeforeLock() {
        if (const auto run = std::exchange(beforeLock, nullptr)) run();
    }
};

/// Forwards to another factory, which must outlive it, and fails as planned. A write is anything that changes a key.
class FaultyStoreFactory : public VProfileStoreFactory {
  public:
    explicit FaultyStoreFactory(VProfileStoreFactory& inner) : inner(inner) {}
    IProfileStoreImpl* CreateStore() override;
    FaultPlan plan;

  private:
    VProfileStoreFactory& inner;
    int openStores = 0;
};

}  // namespace connectdialog::test
