// A lock that can be shared between modules.
#pragma once

#include "foundation/vunknown.h"

namespace connectdialog {

class ISynchObject : public IUnknownBase {
  public:
    /// Waits without a limit. The holder may lock again and then unlocks as often.
    virtual void Lock() = 0;
    virtual void Unlock() = 0;

  protected:
    ~ISynchObject() override = default;
};

/// Holds a lock for a scope.
class VSynchGuard {
  public:
    explicit VSynchGuard(ISynchObject& lock) : lock(lock) { lock.Lock(); }
    VSynchGuard(const VSynchGuard&) = delete;
    VSynchGuard& operator=(const VSynchGuard&) = delete;
    ~VSynchGuard() { lock.Unlock(); }

  private:
    ISynchObject& lock;
};

}  // namespace connectdialog
