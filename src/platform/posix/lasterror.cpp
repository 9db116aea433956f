#include "platform/lasterror.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace connectdialog::platform {

namespace {

thread_local std::uint32_t lastError = kSuccess;

struct ErrnoRow {
    int errnoValue;
    ErrorCode error;
};
constexpr ErrnoRow kErrnoRows[] = {
    {0, kSuccess},
    {ENOENT, kFileNotFound},
    {ENOTDIR, kPathNotFound},
    {ELOOP, kCannotResolveName},
    {EMFILE, kTooManyOpenFiles},
    {ENFILE, kTooManyOpenFiles},
    {EACCES, kAccessDenied},
    {EPERM, kAccessDenied},
    {EISDIR, kAccessDenied},
    {EBADF, kInvalidHandle},
    {ENOMEM, kNotEnoughMemory},
    {EXDEV, kCrossDevice},
    {EROFS, kWriteProtected},
    {ETXTBSY, kSharingViolation},
    {EAGAIN, kLockViolation},
    {EDEADLK, kLockViolation},
    {ENOSYS, kNotSupported},
    {EOPNOTSUPP, kNotSupported},
    {EEXIST, kAlreadyExists},
    {EINVAL, kInvalidParameter},
    {EFAULT, kInvalidParameter},
    {EPIPE, kBrokenPipe},
    {ENOSPC, kDiskFull},
    {EDQUOT, kDiskFull},
    {ERANGE, kInsufficientBuffer},
    {ENOTEMPTY, kFolderNotEmpty},
    {EBUSY, kBusy},
    {ENOEXEC, kBadExecutable},
    {ENAMETOOLONG, kNameTooLong},
    {EFBIG, kFileTooLarge},
    {EOVERFLOW, kMoreData},
    {EILSEQ, kNoUnicodeTranslation},
    {EIO, kDeviceError},
    {ECANCELED, kCancelled},
    {ECONNREFUSED, kConnectionRefused},
    {EHOSTUNREACH, kHostUnreachable},
    {ENETUNREACH, kHostUnreachable},
    {ETIMEDOUT, kTimeout},
};

}  // namespace

std::uint32_t GetLastErrorCode() {
    return lastError;
}
void SetLastErrorCode(std::uint32_t error) {
    lastError = error;
}

std::uint32_t ErrorFromErrno(int errnoValue) {
    const auto* row = std::find_if(std::begin(kErrnoRows), std::end(kErrnoRows),
                                   [errnoValue](const ErrnoRow& r) { return r.errnoValue == errnoValue; });
    return row != std::end(kErrnoRows) ? row->error : kGeneralFailure;
}

bool FailFromErrno() {
    return FailWith(ErrorFromErrno(errno));
}

bool FailWith(std::uint32_t error) {
    lastError = error;
    return false;
}

}  // namespace connectdialog::platform
