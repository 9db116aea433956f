// The reference suite over an empty store in memory, one for each test.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "stores/openstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/protocols/protocolconfig.h"
#include "support/storetools.h"

namespace connectdialog::test {

/// The single settings of a protocol, those of the host first.
inline std::vector<VProfileData*> SettingsOf(ConnectConfig& config) {
    std::vector<VProfileData*> settings;
    for (std::size_t i = 0; VProfileData* member = config.GetMember(i); ++i) {
        const bool isSingle = member->GetMember(0) == member;
        for (std::size_t k = 0; VProfileData* inner = member->GetMember(k); ++k) {
            settings.push_back(inner);
            if (isSingle) break;
        }
    }
    return settings;
}

/// Both applications are installed for as long as it lives.
class BothInstalled : public ReferenceConfigPanels {
  public:
    BothInstalled() { InstallConfigPanels(this); }
    ~BothInstalled() override { InstallConfigPanels(&GetReferenceConfigPanels()); }
    bool IsNorHaldenInstalled() override { return true; }
    bool IsTessalyInstalled() override { return true; }
};

class SuiteTest : public ::testing::Test {
  protected:
    SuiteTest() { StartOver(); }

    /// An empty store.
    void StartOver() {
        VReportMessageParams report;
        factory = stores::OpenProfileStoreFactory(u"memory:", report);
        InstallReferenceSuite(u"NorHalden", *factory);
    }
    /// A session read from the key "k".
    static VRef<SessionConfig> Load() {
        VRef<SessionConfig> session;
        WithKey(u"k", [&](VProfileKey& key) { session = VRef<SessionConfig>::Adopt(new SessionConfig(u"s", &key)); });
        return session;
    }
    static void Save(SessionConfig& session) {
        WithKey(u"k", [&](VProfileKey& key) { session.Save(key, false); });
    }
    /// A session in memory that has that protocol selected on its terminal side, whichever it belongs to.
    static VRef<SessionConfig> Make(const char16_t* protocol) {
        auto session = VRef<SessionConfig>::Adopt(new SessionConfig(u"s", nullptr));
        session->SetProtocolName(protocol);
        return session;
    }
    static ProtocolConfig& Protocol(ISessionConfig& session) {
        return dynamic_cast<ProtocolConfig&>(*session.GetConnectConfig());
    }

    std::unique_ptr<VProfileStoreFactory> factory;
};

}  // namespace connectdialog::test
