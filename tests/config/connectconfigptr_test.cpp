#include "config/connectconfigptr.h"

#include "config/commonconfig.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class ConnectConfigPtrTest : public LibraryTest {
  protected:
    /// The terminal side over a key whose "Protocol Name" is `stored`; null: absent.
    std::unique_ptr<ConnectConfigPtr> Bind(const char16_t* stored) {
        std::unique_ptr<ConnectConfigPtr> bound;
        WithKey(u"k", [&](VProfileKey& key) {
            if (stored != nullptr) key.WriteString(u"Protocol Name", stored);
            bound = std::make_unique<ConnectConfigPtr>(&key, ProtocolSide::kTerminal, &common);
        });
        return bound;
    }
    static FakeProtocol& Selected(const ConnectConfigPtr& bound) {
        return dynamic_cast<FakeProtocol&>(*bound.GetSelected());
    }
    static std::size_t CountConfigs(const ConnectConfigPtr& bound) {
        std::size_t count = 0;
        for (const auto& config : bound.GetConfigs()) count += config ? 1 : 0;
        return count;
    }
    CommonConfig common;
};

TEST_F(ConnectConfigPtrTest, StoredNamesFindTheirRow) {
    struct Row {
        const char16_t* stored;
        const char16_t* name;
        const char16_t* hostValue;  ///< the selected row's value name; null: none is selected
        bool changed;
    };
    constexpr Row kRows[] = {
        {u"ssh2", u"ssh2", u"SSH2 Host", false},  {u"Telnet", u"Telnet", u"Telnet Host", false},
        {u"Gopher", u"SSH2", u"SSH2 Host", true}, {nullptr, u"SSH2", u"SSH2 Host", true},
        {u"SFTP", u"SSH2", u"SSH2 Host", true},   {u"NONE", u"NONE", nullptr, false},
    };
    for (const Row& row : kRows) {
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        const auto bound = Bind(row.stored);
        EXPECT_EQ(bound->GetProtocolName(), row.name);
        ASSERT_EQ(bound->GetSelected() != nullptr, row.hostValue != nullptr);
        if (row.hostValue != nullptr) {
            EXPECT_EQ(Selected(*bound).host.GetName(), row.hostValue);
        }
        EXPECT_EQ(bound->IsChanged(), row.changed);
        EXPECT_FALSE(bound->NameWasEmpty());
    }
    EXPECT_TRUE(Bind(u"")->NameWasEmpty());
}

TEST_F(ConnectConfigPtrTest, AllProtocolsOfTheSideAreReadyButTheOneThatDials) {
    EXPECT_EQ(CountConfigs(*Bind(u"Telnet")), 3U);
    EXPECT_EQ(CountConfigs(*Bind(u"TAPI")), 4U);
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Odd", false));
    const auto bound = Bind(u"Odd");
    EXPECT_EQ(bound->GetSelected(), nullptr);
    EXPECT_EQ(CountConfigs(*bound), 3U);
    EXPECT_FALSE(bound->IsChanged());
}

TEST_F(ConnectConfigPtrTest, ProtocolsThatShareTheirSettingsWaitUntilTheyAreUsed) {
    for (ConnectProtocolTableElement& row : panels.table) row.sharesSettings = true;
    EXPECT_EQ(CountConfigs(*Bind(u"None")), 1U) << "one reads the session's key";
    const auto bound = Bind(u"Telnet");
    EXPECT_EQ(CountConfigs(*bound), 1U);
    const ConnectConfigPtr other(*bound, &common);
    EXPECT_EQ(CountConfigs(other), 1U);

    bound->SetProtocol(u"Serial"_v, nullptr, false);
    EXPECT_EQ(CountConfigs(*bound), 2U);
    bound->GetSelected()->SetHostName(u"edited"_v);
    ConnectConfigPtr target(other, &common);
    target.Assign(*bound);
    ASSERT_EQ(CountConfigs(target), 2U) << "what the other side edited is made here too";
    VUnicodeString host;
    target.GetSelected()->GetHostName(host);
    EXPECT_EQ(host, u"edited");
    target.Commit();
    EXPECT_EQ(CountConfigs(target), 3U);
    EXPECT_TRUE(target.IsMissing()) << "whether a value is missing is asked of all";
}

TEST_F(ConnectConfigPtrTest, SwitchingBackKeepsTheFirstAndComparesExactly) {
    const auto bound = Bind(u"SSH2");
    bound->Commit();
    ConnectConfig* first = bound->GetSelected();
    bound->SetProtocol(u"Telnet"_v, &common, true);
    bound->SetProtocol(u"SSH2"_v, &common, false);
    EXPECT_EQ(bound->GetSelected(), first);
    bound->SetProtocol(u"FTP"_v, &common, false);
    EXPECT_EQ(Selected(*bound).host.GetName(), u"FTP Host") << "a row of the other side may be chosen";
    bound->SetProtocol(u"telnet"_v, &common, false);
    EXPECT_EQ(bound->GetSelected(), nullptr);
    EXPECT_EQ(bound->GetProtocolName(), u"telnet");
    bound->Revert();
    EXPECT_EQ(bound->GetProtocolName(), u"SSH2");
    EXPECT_EQ(bound->GetSelected(), first);
}

TEST_F(ConnectConfigPtrTest, OnlyTheSelectedProtocolIsSaved) {
    const auto bound = Bind(u"SSH2");
    bound->SetProtocol(u"Telnet"_v, &common, false);
    WithKey(u"out", [&](VProfileKey& key) { bound->Save(key, true); });
    WithKey(u"out", [&](VProfileKey& key) {
        VUnicodeString text;
        EXPECT_TRUE(key.ReadString(u"Protocol Name", text));
        EXPECT_EQ(text, u"Telnet");
        EXPECT_TRUE(key.ReadString(u"Telnet Host", text));
        EXPECT_FALSE(key.ReadString(u"SSH2 Host", text));
    });
}

TEST_F(ConnectConfigPtrTest, WithoutRowsOfTheSideOnlyTheNameIsKept) {
    panels.table.Clear();
    panels.table.Add(MakeRow(AppKind::kTessaly, u"FTP"));
    const auto bound = Bind(u"SSH2");
    EXPECT_EQ(bound->GetSelected(), nullptr);
    EXPECT_FALSE(bound->IsChanged());
    WithKey(u"out", [&](VProfileKey& key) {
        bound->Save(key, true);
        VUnicodeString text;
        EXPECT_TRUE(key.ReadString(u"Protocol Name", text));
    });
}

}  // namespace
}  // namespace connectdialog::test
