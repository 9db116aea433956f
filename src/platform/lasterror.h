// The last error of a thread, and the one place where the numbers of this system become those that the library names.
//
// A platform service that fails sets the last error; one that succeeds leaves it alone, unless its comment says
// otherwise. The numbers are stored in reports and compared by callers, so they are the same on every platform.
#pragma once

#include <cstdint>

namespace connectdialog::platform {

/// Error numbers. resources/systemmessages.h has a text for each.
enum ErrorCode : std::uint32_t {
    kSuccess = 0,
    kFileNotFound = 2,
    kPathNotFound = 3,
    kTooManyOpenFiles = 4,
    kAccessDenied = 5,
    kInvalidHandle = 6,
    kNotEnoughMemory = 8,
    kInvalidData = 13,
    kCrossDevice = 17,
    kNoMoreFiles = 18,
    kWriteProtected = 19,
    kNotReady = 21,
    kGeneralFailure = 31,
    kSharingViolation = 32,
    kLockViolation = 33,
    kHandleEof = 38,
    kNotSupported = 50,
    kFileExists = 80,
    kInvalidParameter = 87,
    kBrokenPipe = 109,
    kDiskFull = 112,
    kNotImplemented = 120,
    kInsufficientBuffer = 122,
    kModuleNotFound = 126,
    kSymbolNotFound = 127,
    kFolderNotEmpty = 145,
    kBusy = 170,
    kAlreadyExists = 183,
    kBadExecutable = 193,
    kVariableNotFound = 203,
    kNameTooLong = 206,
    kFileTooLarge = 223,
    kMoreData = 234,
    kWaitTimeout = 258,
    kNoMoreItems = 259,
    kNotAFolder = 267,
    kMessageNotFound = 317,
    kStoreCorrupt = 1015,
    kKeyDeleted = 1018,
    kProcessAborted = 1067,
    kNoUnicodeTranslation = 1113,
    kDeviceError = 1117,
    kCancelled = 1223,
    kConnectionRefused = 1225,
    kHostUnreachable = 1232,
    kAccountNotFound = 1332,
    kInvalidAcl = 1336,
    kInvalidSid = 1337,
    kInvalidSecurityDescriptor = 1338,
    kAllottedSpaceExceeded = 1344,
    kClassAlreadyExists = 1410,
    kTimeout = 1460,
    kDatatypeMismatch = 1629,
    kResourceTypeNotFound = 1813,
    kCannotResolveName = 1921,
    kKeyNotThere = 0x8009000B
};

/// Kept per thread; 0 at the thread's start.
std::uint32_t GetLastErrorCode();
void SetLastErrorCode(std::uint32_t error);

/// The number for a value of errno; 31 for one that has no closer counterpart, 0 for 0.
std::uint32_t ErrorFromErrno(int errnoValue);
/// Sets the last error from errno as it stands; gives false, so that a caller can return it.
bool FailFromErrno();
/// Sets the last error; gives false.
bool FailWith(std::uint32_t error);

}  // namespace connectdialog::platform
