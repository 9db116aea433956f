#include "foundation/vipclock.h"

#include "platform/lasterror.h"

namespace connectdialog {

VIpcLock::VIpcLock(std::u16string_view name) : handle(platform::OpenNamedLock(name)) {
    if (handle == platform::kInvalidLock) status.SetCode(platform::GetLastErrorCode());
}

VIpcLock::~VIpcLock() {
    const std::uint32_t lastError = platform::GetLastErrorCode();
    platform::CloseNamedLock(handle);
    platform::SetLastErrorCode(lastError);
}

void VIpcLock::Lock() {
    threads.lock();
    if (depth++ > 0 || !IsCreated()) return;
    status.SetCode(platform::AcquireNamedLock(handle, true) ? 0 : platform::GetLastErrorCode());
}

void VIpcLock::Unlock() {
    if (--depth == 0 && IsCreated()) platform::ReleaseNamedLock(handle);
    threads.unlock();
}

}  // namespace connectdialog
