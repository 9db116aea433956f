// The reference suite over a store in memory that can be made to fail, for imports.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "config/isessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/importers/openssh/opensshimport.h"
#include "suite/protocols/protocolconfig.h"
#include "support/faultystore.h"

namespace connectdialog::test {

class ImportTest : public ::testing::Test {
  protected:
    ImportTest() { StartOver(); }

    /// An empty store.
    void StartOver() {
        VReportMessageParams unused;
        faulty.reset();
        inner = stores::OpenProfileStoreFactory(u"memory:", unused);
        faulty = std::make_unique<FaultyStoreFactory>(*inner);
        InstallReferenceSuite(u"connectctl", *faulty);
        faulty->plan = {};
    }

    static ProtocolConfig& Protocol(ISessionConfig& session) {
        return dynamic_cast<ProtocolConfig&>(*session.GetConnectConfig());
    }

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

    std::unique_ptr<VProfileStoreFactory> inner;
    std::unique_ptr<FaultyStoreFactory> faulty;
};

}  // namespace connectdialog::test
