// Stand-ins for the neighbours of the library, and a world of its own for each test.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "imports/configpanels.h"
#include "imports/connectconfig.h"
#include "profile/vprofile2.h"
#include "support/storetools.h"

namespace connectdialog::test {

/// Global settings in memory that count how often they were saved.
class FakeGlobalConfig : public GlobalConfig {
  public:
    FakeGlobalConfig();
    bool Save() override {
        ++saves;
        return true;
    }
    int saves = 0;
};

/// Settings of an invented protocol: a host name under "<protocol> Host".
class FakeProtocol : public ConnectConfig {
  public:
    FakeProtocol(VProfileKey* key, const ConnectProtocolTableElement& row);
    FakeProtocol(const FakeProtocol& other) = default;

    void Save(VProfileKey& key, bool force) override {
        if (notToBeSaved == 0) host.Save(key, force);
    }
    bool IsChanged() const override { return host.IsChanged(); }
    void Commit() override { host.Commit(); }
    void Revert() override { host.Revert(); }
    void Assign(const VProfileData& other) override { host.Assign(dynamic_cast<const FakeProtocol&>(other).host); }
    bool IsMissing() const override { return host.IsMissing(); }
    VProfileData* GetMember(std::size_t index) override { return index == 0 ? &host : nullptr; }
    ConnectConfig* Clone(ICommonConfig*) const override { return new FakeProtocol(*this); }
    void ExportShared(SharedSettings& settings) const override { settings[u"host"_v] = host.Get(); }
    void ImportShared(const SharedSettings& settings) override;
    bool IsComplete(std::uint32_t& state) const override;
    void GetSuggestedName(VUnicodeString& name) const override { name = host.Get(); }
    void GetHostName(VUnicodeString& text) const override { text = host.Get(); }
    void SetHostName(const VUnicodeString& text) override { host.Set(text); }
    std::uint16_t GetPort() const override { return 22; }
    void TransferForward(void*) override {}
    void ReleasePort() override {}

    VProfileText host;
};

/// One row of a protocol table; without `hasConfig` it makes no settings object.
ConnectProtocolTableElement MakeRow(AppKind kind, const char16_t* name, bool hasConfig = true);

class FakeConfigPanels : public IConfigPanels {
  public:
    bool GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t kind) override;
    void ConfigPanelsInitGUI(PickSessionsFunction pick, SessionImageListFunction images) override;
    const ConnectProtocolTable& GetConnectProtocolTable() override { return table; }
    AppKind GetCurrentAppProductID() override { return product; }
    bool IsIntegrated() override { return true; }
    bool IsNorHaldenInstalled() override { return isTerminalInstalled; }
    bool IsNorHaldenOrHaldenInstalled() override { return isTerminalInstalled; }
    bool IsTessalyInstalled() override { return isTransferInstalled; }
    bool HasKeldaEmulation() override { return false; }
    bool ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName, const VUnicodeString& newName,
                             bool isNew, VWindow*) override;
    void LaunchTerminalApp(VWindow*, const char16_t* commandLine) override { Launch(u"terminal: ", commandLine); }
    void LaunchFileTransferApp(VWindow*, const char16_t* commandLine) override { Launch(u"transfer: ", commandLine); }
    int ShowOptionalMessageBox(VWindow*, const VUnicodeString& text, const VUnicodeString&, VProfile<int>&,
                               const VUnicodeString&, bool, int, unsigned) override {
        optionalText = text;
        return optionalAnswer;
    }
    char16_t GetApplicationTrademarkSymbol(const VUnicodeString&) override { return u'\u00AE'; }
    bool LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable*) override { return Ask(answer, save); }
    bool LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable*) override { return Ask(answer, save); }

    VRef<FakeGlobalConfig> global = VRef<FakeGlobalConfig>::Adopt(new FakeGlobalConfig);
    ConnectProtocolTable table;
    AppKind product = AppKind::kNorHalden;
    bool isTerminalInstalled = true;
    bool isTransferInstalled = true;
    /// Names that were refused, by the reference rules.
    std::vector<VUnicodeString> refusedNames;
    int initCalls = 0;
    /// What the user answers at a firewall's prompt; null: gives up.
    const char16_t* promptAnswer = nullptr;
    bool promptSaves = false;
    /// What was launched: the side, then the command line.
    std::vector<VUnicodeString> launches;
    /// The text of the last optional box, and what is answered.
    VUnicodeString optionalText;
    int optionalAnswer = 1;
    PickSessionsFunction pick = nullptr;

  private:
    bool Ask(IString* answer, bool& save);
    void Launch(const char16_t* side, const char16_t* commandLine) {
        launches.push_back(VUnicodeString(side) + commandLine);
    }
};

/// An empty memory store as the default store, the fake neighbours, and the application "NorHalden".
class LibraryTest : public ::testing::Test {
  protected:
    LibraryTest();
    ~LibraryTest() override;

    /// A key that is a session, with nothing else in it.
    static void MakeSession(const char16_t* sessionPath);
    static void MakeFolder(const char16_t* sessionPath);
    /// Makes another store the default one, until the next call or the end of the test.
    static void UseStore(VProfileStoreFactory& store);
    void Arrange(SessionArrangement value) { panels.global->sessionArrangementMode.Set(static_cast<int>(value)); }
    /// The text of a value, or "(none)".
    static VUnicodeString TextAt(const VUnicodeString& keyPath, const char16_t* name);

    FakeConfigPanels panels;
    std::unique_ptr<VProfileStoreFactory> factory;
};

}  // namespace connectdialog::test
