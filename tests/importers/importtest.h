// Looking at what an import made.
#pragma once

#include <string>

#include "platform/codepage.h"
#include "sessiondb/sessiontree.h"
#include "suite/importers/openssh/opensshimport.h"
#include "support/suitetest.h"

namespace connectdialog::test {

class ImportTest : public SuiteTest {
  protected:
    /// `host\tport\tuser\tjumps` of the session at `path`.
    static std::string ValuesAt(const VUnicodeString& path) {
        const VRef<ISessionConfig> session = OpenSession(path);
        if (!session) return "none";
        const ProtocolConfig& config = Protocol(*session);
        VUnicodeString host;
        VUnicodeString user;
        config.GetRemoteHost().GetHostname(host);
        config.GetRemoteHost().GetUsername(user);
        return platform::ToNarrow(host) + '\t' + std::to_string(config.GetPort()) + '\t' + platform::ToNarrow(user) +
               '\t' + platform::ToNarrow(config.GetSettings().sshJumpHost.Get());
    }
};

}  // namespace connectdialog::test
