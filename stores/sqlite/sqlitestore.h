// The provider `sqlite:PATH`: a store in one file, shared by any number of processes.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "profile/iprofilestore.h"

namespace connectdialog::stores {

struct SqliteStoreOptions {
    /// How long a read or a write waits for another process before it fails with code 32.
    std::chrono::milliseconds busyTimeout{5000};
};

/// A factory on the store in the file at `path` (a native path in UTF-8). A file that does not exist is an empty store:
/// it is created (0600, a missing folder 0700) by the first write and by nothing else.
///
/// A file is touched only when its header says that it is a store of a version known here. A store that is damaged as a
/// whole is set aside as `PATH.damaged-TIME`, never emptied or overwritten, and the newest sound backup, where there is
/// one, is copied to its place. The factory is given then, with 1015 in the report and the inserts PATH, the name of
/// the file set aside, and that of the backup ("" when there is none). Damage to single keys shows when they are read.
///
/// At the first commit of a day (UTC) a verified backup is made in the folder `PATH.backups`; the newest five stay.
///
/// On failure: null; the first insert is the path, the last the cause. 5 for a folder, a device or an unreadable file,
/// 13 for a file that is no store, 50 for a store of a newer version, 1015 for one that is damaged and cannot be set
/// aside, 32 for one that is locked.
std::unique_ptr<VProfileStoreFactory> OpenSqliteStore(const std::string& path, const SqliteStoreOptions& options,
                                                      VReportMessageParams& report);

}  // namespace connectdialog::stores
