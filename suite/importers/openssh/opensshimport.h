// Importing the hosts of an OpenSSH client configuration as sessions.
//
// Each host that the configuration names without a wildcard becomes a session of the protocol SSH2 in one folder, with
// the host name, port, user, first identity file and jump hosts that ssh would use. A session that is there already
// takes over those settings and keeps all others; one that has them already is not written, and an import that has
// nothing to change writes nothing at all. Nothing that the configuration names is run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/vunicodestring.h"
#include "suite/importers/openssh/sshconfigeval.h"
#include "suite/importers/openssh/sshdiagnostics.h"

namespace connectdialog {

class ISshFiles;
class VReportMessageParams;

/// What became of one host.
enum class SshImportOutcome : std::uint8_t { kMade, kUpdated, kLeftAlone, kSkipped };

struct SshImportEntry {
    SshImportOutcome outcome = SshImportOutcome::kSkipped;
    std::string alias;
    std::string file;  ///< Where the configuration names the host first.
    std::size_t line = 0;
    VUnicodeString path;  ///< The session's; empty when the host was refused.
    /// kUpdated: the names of the settings that changed, separated by ", ". kSkipped: why. Else empty.
    std::string text;
};

struct SshImportRequest {
    std::string file;       ///< A native path.
    VUnicodeString folder;  ///< A session path; made when it is not there. Empty: the root.
    SshUser user;
    bool isDryRun = false;  ///< Tell what would become of the hosts, and write nothing.
};

struct SshImportResult {
    std::vector<SshImportEntry> entries;  ///< In the configuration's order.
    SshDiagnostics diagnostics;           ///< Of the files' lines, and of what sessions cannot hold.

    std::size_t Count(SshImportOutcome outcome) const;
};

/// Names: those of MakeSshSessionName; where two aliases differ in nothing but case, the second has " (2)" behind its
/// name and so on. A folder or a session of another protocol that has the name keeps it, and the host is skipped.
///
/// All sessions are stored in one unit of work. Requires: the library's start-up calls were made, with
/// the protocols of this suite.
/// On failure (the file cannot be read, the folder's name cannot be, the store refuses): false with a report; the store
/// is as it was, and `result` is empty but for what was found in the files.
bool ImportOpenSshConfig(ISshFiles& files, const SshImportRequest& request, SshImportResult& result,
                         VReportMessageParams& report);

/// The user of this process: the home folder, and the name as the environment tells it (LOGNAME, USER), else as the
/// home folder is called.
SshUser GetCurrentSshUser();

}  // namespace connectdialog
