// A lock between the threads of one process.
#pragma once

#include <mutex>

#include "foundation/isynchobject.h"

namespace connectdialog {

class VCriticalSection : public VUnknown<ISynchObject> {
  public:
    void Lock() override { section.lock(); }
    void Unlock() override { section.unlock(); }

  private:
    std::recursive_mutex section;
};

}  // namespace connectdialog
