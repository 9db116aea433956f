// The parts of a session that are not its terminal: printer, remote host, protocols.
#include "config/commonconfig.h"
#include "config/connectconfigptr.h"
#include "config/printerconfig.h"
#include "config/remotehostconfig.h"
#include "config/sessiondbhooks.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class SessionPartsTest : public LibraryTest {
  protected:
    /// A printer, read from an empty key after `fill`.
    static PrinterConfig LoadPrinter(const std::function<void(VProfileKey&)>& fill) {
        std::optional<PrinterConfig> printer;
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        WithKey(u"k", [&](VProfileKey& key) {
            fill(key);
            printer.emplace(&key);
        });
        return *printer;
    }
    /// The terminal side over a key whose "Protocol Name" is `stored`; null: absent.
    std::unique_ptr<ConnectConfigPtr> Bind(const char16_t* stored) {
        std::unique_ptr<ConnectConfigPtr> bound;
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        WithKey(u"k", [&](VProfileKey& key) {
            if (stored != nullptr) key.WriteString(u"Protocol Name", stored);
            bound = std::make_unique<ConnectConfigPtr>(&key, ProtocolSide::kTerminal, &common);
        });
        return bound;
    }
    static VUnicodeString ValueNameOf(const ConnectConfigPtr& bound) {
        const auto* selected = dynamic_cast<const FakeProtocol*>(bound.GetSelected());
        return selected != nullptr ? selected->host.GetName() : u"none"_v;
    }
    static std::ptrdiff_t CountConfigs(const ConnectConfigPtr& bound) {
        return std::ranges::count_if(bound.GetConfigs(), [](const auto& config) { return static_cast<bool>(config); });
    }
    CommonConfig common;
};

TEST_F(SessionPartsTest, AFreshPrinterHasMarginsAndAFont) {
    const PrinterConfig printer(nullptr);
    EXPECT_EQ(printer.pageMargins.Get(), (VMarginData{0.5, 0.5, 0.5, 0.5}));
    std::array<std::byte, VLogFont::kStoredSize> record;
    printer.font.Get().Pack(record);
    // Height -13, weight 400, then from the italic switch on; the size in tenths of a point stands at the end.
    constexpr int kBytes[] = {0xF3, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0,  0,  0,
                              0,    0x90, 1,    0,    0, 0, 0, 0, 0, 3, 2, 1, 49, 'C'};
    for (std::size_t i = 0; i < std::size(kBytes); ++i) EXPECT_EQ(record[i], static_cast<std::byte>(kBytes[i])) << i;
    EXPECT_EQ(printer.font.Get().size, 100);
}

TEST_F(SessionPartsTest, OurEndOfAPrintersLineFollowsTheFarEndUntilItIsStored) {
    const PrinterConfig follows = LoadPrinter([](VProfileKey& key) {
        key.WriteDword(u"Printer CTS Flow", 0);
        key.WriteDword(u"Printer DSR Flow", 1);
    });
    EXPECT_EQ(follows.serialDevice.rtsFlowControl.Get(), 1);
    EXPECT_EQ(follows.serialDevice.dtrFlowControl.Get(), 2);
    const PrinterConfig stored = LoadPrinter([](VProfileKey& key) { key.WriteDword(u"Printer RTS Flow Control", 0); });
    EXPECT_EQ(stored.serialDevice.rtsFlowControl.Get(), 0);
    EXPECT_FALSE(stored.IsChanged());
}

TEST_F(SessionPartsTest, RawModeTurnsThePrintersPortOff) {
    for (const bool isRaw : {true, false}) {
        const PrinterConfig printer = LoadPrinter([&](VProfileKey& key) {
            key.WriteDword(u"Use Raw Mode", isRaw ? 1 : 0);
            key.WriteDword(u"Use Printer Port", 1);
        });
        EXPECT_EQ(printer.usePrinterPort.Get(), !isRaw);
        EXPECT_EQ(printer.IsChanged(), isRaw);
    }
}

/// Knows no firewall and remembers which one was asked for.
class RecordingHooks : public ISessionDbHooks {
  public:
    IFirewallUI* LoadFirewall(const VUnicodeString& name) override {
        asked = name;
        return nullptr;
    }
    bool SaveFirewall(FirewallConfig&) override { return false; }
    void EnumerateFirewalls(IBuffer&) override {}
    void UpgradeButtonBars() override {}
    VUnicodeString asked;
};

TEST_F(SessionPartsTest, AHostsFirewallIsAskedForByTheNameThatCounts) {
    RecordingHooks hooks;
    InstallSessionDbHooks(&hooks);
    const auto expectName = [](IRemoteHostConfig& host, const char16_t* expected) {
        VUnicodeString name;
        host.GetFirewallName(name);
        EXPECT_EQ(name, expected);
    };
    for (const auto& [older, name] : {std::pair(0U, u"None"), {1U, u"DefaultTerminalFirewall"}}) {
        WithKey(u"k", [&, use = older, expected = name](VProfileKey& key) {
            key.WriteDword(u"Use Firewall", use);
            expectName(*VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(&key)), expected);
        });
    }
    const auto host = VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(nullptr));
    host->SetFirewallName(u"own"_v);
    EXPECT_EQ(hooks.asked, u"own");
    host->SetFirewallOverride(u"over"_v);
    EXPECT_EQ(hooks.asked, u"over");
    expectName(*host, u"over");
    expectName(*VRef<IRemoteHostConfig>::Adopt(host->Clone()), u"own");
    EXPECT_EQ(hooks.asked, u"own") << "the clone loads a firewall of its own";
    EXPECT_EQ(host->FindSetting(u"hostname"), host->FindValue(u"HOSTNAME"));
    EXPECT_EQ(host->FindSetting(u"Firewall Port"), nullptr);
    host->SetFirewallOverride(VUnicodeString());
    expectName(*host, u"own");
}

TEST_F(SessionPartsTest, StoredNamesFindTheirProtocol) {
    struct Row {
        const char16_t* stored;
        const char16_t* name;
        const char16_t* valueName;
        bool changed;
    };
    constexpr Row kRows[] = {
        {u"ssh2", u"ssh2", u"SSH2 Host", false},  {u"Telnet", u"Telnet", u"Telnet Host", false},
        {u"Gopher", u"SSH2", u"SSH2 Host", true}, {nullptr, u"SSH2", u"SSH2 Host", true},
        {u"SFTP", u"SSH2", u"SSH2 Host", true},   {u"NONE", u"NONE", u"none", false},
    };
    for (const Row& row : kRows) {
        const auto bound = Bind(row.stored);
        EXPECT_EQ(bound->GetProtocolName(), row.name);
        EXPECT_EQ(ValueNameOf(*bound), row.valueName);
        EXPECT_EQ(bound->IsChanged(), row.changed);
    }
    EXPECT_TRUE(Bind(u"")->NameWasEmpty());
    EXPECT_EQ(CountConfigs(*Bind(u"Telnet")), 3);
    EXPECT_EQ(CountConfigs(*Bind(u"TAPI")), 4) << "the one that dials is made when it is chosen";
    panels.table.Clear();
    EXPECT_FALSE(Bind(u"SSH2")->IsChanged()) << "without protocols the name is kept";
}

TEST_F(SessionPartsTest, ProtocolsThatShareTheirSettingsWaitUntilTheyAreUsed) {
    for (ConnectProtocolTableElement& row : panels.table) row.sharesSettings = true;
    EXPECT_EQ(CountConfigs(*Bind(u"None")), 1) << "one reads the session's key";
    const auto bound = Bind(u"Telnet");
    const ConnectConfigPtr other(*bound, &common);
    EXPECT_EQ(CountConfigs(other), 1);

    bound->SetProtocol(u"Serial"_v, nullptr, false);
    EXPECT_EQ(CountConfigs(*bound), 2);
    bound->GetSelected()->SetHostName(u"edited"_v);
    ConnectConfigPtr target(other, &common);
    target.Assign(*bound);
    ASSERT_EQ(CountConfigs(target), 2) << "what the other side edited is made here too";
    VUnicodeString host;
    target.GetSelected()->GetHostName(host);
    EXPECT_EQ(host, u"edited");
    target.Commit();
    EXPECT_EQ(CountConfigs(target), 3);
    EXPECT_TRUE(target.IsMissing()) << "whether a value is missing is asked of all";
}

TEST_F(SessionPartsTest, OnlyTheSelectedProtocolIsSavedAndSwitchingBackKeepsTheFirst) {
    const auto bound = Bind(u"SSH2");
    bound->Commit();
    ConnectConfig* first = bound->GetSelected();
    bound->SetProtocol(u"FTP"_v, &common, false);
    EXPECT_EQ(ValueNameOf(*bound), u"FTP Host") << "a row of the other side may be chosen";
    bound->SetProtocol(u"telnet"_v, &common, false);
    EXPECT_EQ(ValueNameOf(*bound), u"none") << "names are compared exactly";
    bound->SetProtocol(u"Telnet"_v, &common, false);
    WithKey(u"out", [&](VProfileKey& key) {
        bound->Save(key, true);
        VUnicodeString text;
        EXPECT_TRUE(key.ReadString(u"Protocol Name", text));
        EXPECT_EQ(text, u"Telnet");
        EXPECT_TRUE(key.ReadString(u"Telnet Host", text));
        EXPECT_FALSE(key.ReadString(u"SSH2 Host", text));
    });
    bound->SetProtocol(u"SSH2"_v, &common, false);
    EXPECT_EQ(bound->GetSelected(), first);
}

}  // namespace
}  // namespace connectdialog::test
