#include "suite/protocols/protocolconfig.h"

#include "foundation/vnarrowstring.h"
#include "imports/configpanels.h"
#include "profile/vvariant.h"
#include "suite/protocols/protocoltraits.h"
#include "tests/suite/suitetest.h"

namespace connectdialog::test {
namespace {

/// What users' stores hold, written down by hand: a name here changes only together with a migration.
struct GoldenProtocol {
    const char16_t* name;
    unsigned port;
    std::vector<std::u16string_view> settings;
    const char16_t* suggestedName;  ///< once the target is "there"
};
const std::vector<std::u16string_view> kSftp = {u"SSH Port", u"SSH Identity File", u"SSH Jump Host"};
const std::vector<std::u16string_view> kSsh = {u"SSH Port",          u"SSH Identity File", u"SSH Jump Host",
                                               u"SSH Forward Agent", u"SSH Forward X11",   u"SSH Remote Command"};
const GoldenProtocol kGolden[] = {
    {u"Telnet", 23, {u"Telnet Port"}, u"there"},
    {u"RLogin", 513, {u"RLogin Port"}, u"there"},
    {u"Serial",
     0,
     {u"Serial Device", u"Serial Baud Rate", u"Serial Data Bits", u"Serial Parity", u"Serial Stop Bits",
      u"Serial Flow Control"},
     u"there"},
    {u"TAPI", 0, {u"TAPI Phone Number", u"TAPI Modem Device"}, u"there"},
    {u"Marks", 0, {}, u"Marks"},
    {u"Raw", 0, {u"Raw Port"}, u"there"},
    {u"SSH2", 22, kSsh, u"there"},
    {u"SSH1", 22, kSsh, u"there"},
    {u"Telnet/SSL", 992, {u"Telnet/SSL Port"}, u"there"},
    {u"Local Shell", 0, {u"Local Shell Command"}, u"Local Shell"},
    {u"SFTP", 22, kSftp, u"there"},
    {u"FTP", 21, {u"FTP Port"}, u"there"},
    {u"FTP/SSL (implicit)", 990, {u"FTP/SSL Port"}, u"there"},
    {u"FTP/SSL (explicit)", 21, {u"FTP Port"}, u"there"},
    {u"SCP", 22, kSftp, u"there"},
};

/// The single settings of a protocol, host settings first.
std::vector<VProfileData*> SettingsOf(ConnectConfig& config) {
    std::vector<VProfileData*> settings;
    for (std::size_t i = 0; VProfileData* member = config.GetMember(i); ++i) {
        if (member->GetMember(0) == member) {
            settings.push_back(member);
            continue;
        }
        for (std::size_t k = 0; VProfileData* inner = member->GetMember(k); ++k) settings.push_back(inner);
    }
    return settings;
}

/// Gives a setting another value that it may have.
void Change(VProfileData& setting) {
    VReportMessageParams report;
    VVariant value;
    ASSERT_TRUE(setting.GetVariant(value, report));
    std::int64_t number = value.GetNumber() == 1 ? 2 : 1;
    if (setting.GetName() == u"Serial Data Bits") number = 7;
    if (setting.GetName() == u"Serial Baud Rate") number = 115200;
    const VVariant changed = value.GetType() == VVariantType::kText ? VVariant(setting.GetName() + u" x")
                                                                    : VVariant(VVariantType::kUInt32, number);
    ASSERT_TRUE(setting.SetVariant(changed, report)) << VNarrowString(setting.GetName()).GetData();
}

class ProtocolConfigTest : public SuiteTest {};

TEST_F(ProtocolConfigTest, TheCatalogueStandsInItsOrder) {
    struct Row {
        int kind;
        const char16_t* name;
    };
    constexpr Row kRows[] = {{1, u"Telnet"},
                             {1, u"RLogin"},
                             {1, u"Serial"},
                             {1, u"TAPI"},
                             {1, u"Marks"},
                             {1, u"Raw"},
                             {3, u"SSH2"},
                             {3, u"SSH1"},
                             {3, u"Telnet"},
                             {3, u"Telnet/SSL"},
                             {3, u"RLogin"},
                             {3, u"Serial"},
                             {3, u"Local Shell"},
                             {3, u"TAPI"},
                             {3, u"Marks"},
                             {3, u"Raw"},
                             {6, u"SFTP"},
                             {6, u"FTP"},
                             {6, u"FTP/SSL (implicit)"},
                             {6, u"FTP/SSL (explicit)"},
                             {6, u"SCP"},
                             {7, u"SSH2"}};
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    ASSERT_EQ(table.GetCount(), std::size(kRows));
    for (std::size_t i = 0; i < std::size(kRows); ++i) {
        EXPECT_EQ(table[i].name, kRows[i].name);
        EXPECT_EQ(static_cast<int>(table[i].kind), kRows[i].kind);
        ASSERT_NE(table[i].createConfig, nullptr);
        const auto config = VRef<ConnectConfig>::Adopt(table[i].createConfig(nullptr, nullptr, table[i]));
        ASSERT_TRUE(config);
        EXPECT_EQ(dynamic_cast<ProtocolConfig&>(*config).GetTraits().name, table[i].name.View());
    }
}

TEST_F(ProtocolConfigTest, EachProtocolSavesItsOwnSettingsUnderTheirNames) {
    for (const GoldenProtocol& golden : kGolden) {
        const auto session = Make(golden.name);
        ProtocolConfig& config = Protocol(*session);
        const bool hasHost = config.GetTraits().target == ProtocolTarget::kHost;
        std::vector<std::u16string_view> expected;
        if (hasHost) expected = {u"Hostname", u"Firewall Name", u"Username"};
        expected.insert(expected.end(), golden.settings.begin(), golden.settings.end());

        std::vector<std::u16string_view> names;
        for (const VProfileData* setting : SettingsOf(config)) names.push_back(setting->GetName());
        EXPECT_EQ(names, expected);
        EXPECT_EQ(config.GetPort(), golden.port);

        config.SetHostName(u"there");
        VUnicodeString suggested;
        config.GetSuggestedName(suggested);
        EXPECT_EQ(suggested, golden.suggestedName);
    }
}

TEST_F(ProtocolConfigTest, EverySettingOfEveryProtocolComesBackFromTheStore) {
    for (const GoldenProtocol& golden : kGolden) {
        Clear();
        const auto session = Make(golden.name);
        for (VProfileData* setting : SettingsOf(Protocol(*session)))
            if (setting->GetName() != u"Firewall Name") Change(*setting);
        ConnectConfig& config = Protocol(*session);
        WithKey([&](VProfileKey& key) { config.Save(key, false); });
        EXPECT_FALSE(config.IsChanged());

        VRef<ConnectConfig> again;
        WithKey([&](VProfileKey& key) {
            const ConnectProtocolTable& table = GetConnectProtocolTable();
            for (const ConnectProtocolTableElement& row : table)
                if (row.name == golden.name) again = VRef<ConnectConfig>::Adopt(row.createConfig(&key, nullptr, row));
        });
        const auto before = SettingsOf(config);
        const auto after = SettingsOf(*again);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            VReportMessageParams report;
            VVariant left;
            VVariant right;
            before[i]->GetVariant(left, report);
            after[i]->GetVariant(right, report);
            EXPECT_EQ(left.GetText(), right.GetText());
            EXPECT_EQ(left.GetNumber(), right.GetNumber()) << VNarrowString(before[i]->GetName()).GetData();
            EXPECT_FALSE(after[i]->IsMissing());
        }
    }
}

TEST_F(ProtocolConfigTest, NumbersOutOfTheirRangeAreCorrectedAndRepairedAtTheNextSave) {
    struct Row {
        const char16_t* protocol;
        const char16_t* name;
        std::uint32_t stored;
        std::uint32_t corrected;
    };
    constexpr Row kRows[] = {
        {u"SSH2", u"SSH Port", 0, 22},
        {u"SSH2", u"SSH Port", 65536, 22},
        {u"SSH2", u"SSH Port", 65558, 22},
        {u"SSH2", u"SSH Port", 0xFFFFFFFF, 22},
        {u"SSH2", u"SSH Port", 65535, 65535},
        {u"SSH2", u"SSH Port", 1, 1},
        {u"Serial", u"Serial Baud Rate", 0, 9600},
        {u"Serial", u"Serial Baud Rate", 0x80000000, 9600},
        {u"Serial", u"Serial Data Bits", 9, 8},
        {u"Serial", u"Serial Parity", 3, 0},
        {u"Serial", u"Serial Stop Bits", 0, 1},
        {u"Serial", u"Serial Flow Control", 7, 0},
    };
    for (const Row& row : kRows) {
        Clear();
        WithKey([&](VProfileKey& key) {
            key.WriteString(u"Protocol Name", row.protocol);
            key.WriteDword(row.name, row.stored);
        });
        const auto session = Load();
        EXPECT_EQ(Protocol(*session).IsChanged(), row.stored != row.corrected);
        Save(*session);
        WithKey([&](VProfileKey& key) {
            std::uint32_t repaired = 0;
            EXPECT_TRUE(key.ReadDword(row.name, repaired));
            EXPECT_EQ(repaired, row.corrected) << row.stored;
        });
    }
}

TEST_F(ProtocolConfigTest, SwitchingCarriesWhatWasChosenAndNoDefaultPort) {
    const auto session = Make(u"SSH2");
    Protocol(*session).SetHostName(u"h");
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 23);
    session->SetProtocolName(u"SSH2");
    Protocol(*session).SetPort(2222);
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
    Protocol(*session).SetPort(2323);
    session->SetProtocolName(u"SSH2");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
    session->SetProtocolName(u"Local Shell");
    session->SetProtocolName(u"RLogin");
    EXPECT_EQ(Protocol(*session).GetPort(), 513);
    VUnicodeString host;
    Protocol(*session).GetHostName(host);
    EXPECT_EQ(host, u"h");
}

TEST_F(ProtocolConfigTest, AReleasedPortStaysWithItsProtocol) {
    const auto session = Make(u"SSH2");
    Protocol(*session).SetPort(2222);
    Protocol(*session).ReleasePort();
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 23);
    session->SetProtocolName(u"SSH2");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
}

TEST_F(ProtocolConfigTest, SharedTextsTravelBetweenSessionsOfTheirOwn) {
    const auto from = Make(u"SSH2");
    const auto to = Make(u"SFTP");
    Protocol(*from).SetHostName(u"h");
    Protocol(*from).GetRemoteHost().SetUsername(u"u");
    Protocol(*from).EditSettings().sshJumpHost.Set(u"j"_v);
    Protocol(*from).EditSettings().sshIdentityFile.Set(u"/key"_v);
    Protocol(*from).SetPort(24);
    SharedSettings shared;
    Protocol(*from).ExportShared(shared);
    Protocol(*to).ImportShared(shared);
    VUnicodeString text;
    Protocol(*to).GetHostName(text);
    EXPECT_EQ(text, u"h");
    Protocol(*to).GetRemoteHost().GetUsername(text);
    EXPECT_EQ(text, u"u");
    EXPECT_EQ(Protocol(*to).GetSettings().sshJumpHost.Get(), u"j");
    EXPECT_EQ(Protocol(*to).GetSettings().sshIdentityFile.Get(), u"/key");
    EXPECT_EQ(Protocol(*to).GetPort(), 24);
}

TEST_F(ProtocolConfigTest, AnEditSurvivesTheMakingOfAnotherProtocolAndCanStillBeDropped) {
    const auto session = Make(u"SSH2");
    session->Commit();
    Protocol(*session).SetHostName(u"typed");
    session->SetProtocolName(u"TAPI");
    session->SetProtocolName(u"SSH2");
    EXPECT_TRUE(Protocol(*session).IsChanged());
    session->Revert();
    VUnicodeString host;
    Protocol(*session).GetHostName(host);
    EXPECT_EQ(host, u"");
}

TEST_F(ProtocolConfigTest, ACloneIsChangedInTheSameWayAndGoesItsOwnWay) {
    const auto session = Make(u"SSH2");
    session->Commit();
    Protocol(*session).SetHostName(u"first");
    Protocol(*session).EditSettings().sshJumpHost.Set(u"jump"_v);
    const auto clone = VRef<SessionConfig>::Adopt(dynamic_cast<SessionConfig*>(session->Clone()));
    EXPECT_TRUE(Protocol(*clone).IsChanged());
    Protocol(*session).SetHostName(u"second");
    Protocol(*session).EditSettings().sshJumpHost.Edit().Empty();
    VUnicodeString host;
    Protocol(*clone).GetHostName(host);
    EXPECT_EQ(host, u"first");
    EXPECT_EQ(Protocol(*clone).GetSettings().sshJumpHost.Get(), u"jump");

    const auto apart = VRef<ConnectConfig>::Adopt(Protocol(*clone).Clone(nullptr));
    Protocol(*clone).SetHostName(u"third");
    apart->GetHostName(host);
    EXPECT_EQ(host, u"first");

    const auto target = Make(u"SSH2");
    target->CopyChangesFrom(clone.Get());
    Protocol(*target).GetHostName(host);
    EXPECT_EQ(host, u"third");
}

TEST_F(ProtocolConfigTest, BothSidesOfASessionShareOneHostAndOneSshPort) {
    const auto session = Make(u"SSH2");
    Protocol(*session).SetHostName(u"h");
    Protocol(*session).SetPort(2022);
    auto& transfer = dynamic_cast<ProtocolConfig&>(*session->GetTransferConnectConfig());
    EXPECT_EQ(transfer.GetTraits().name, u"SFTP");
    EXPECT_EQ(transfer.GetPort(), 2022);
    session->SetTransferProtocolName(u"FTP/SSL (implicit)");
    EXPECT_EQ(session->GetTransferConnectConfig()->GetPort(), 2022);
    Save(*session);
    const auto again = Load();
    VUnicodeString host;
    again->GetTransferConnectConfig()->GetHostName(host);
    EXPECT_EQ(host, u"h");
    EXPECT_FALSE(again->IsChanged());
}

TEST_F(ProtocolConfigTest, CompletenessNamesWhatIsMissing) {
    struct Row {
        const char16_t* protocol;
        std::uint32_t without;  ///< the state of a new session; 0: complete
        std::uint32_t with;     ///< once the target is known
    };
    constexpr Row kRows[] = {{u"SSH2", 1, 0}, {u"FTP", 1, 0},         {u"Raw", 2, 2},   {u"Serial", 2, 0},
                             {u"TAPI", 2, 0}, {u"Local Shell", 0, 0}, {u"Marks", 0, 0}, {u"Telnet/SSL", 1, 0}};
    for (const Row& row : kRows) {
        const auto session = Make(row.protocol);
        std::uint32_t state = 99;
        EXPECT_EQ(Protocol(*session).IsComplete(state), row.without == 0);
        EXPECT_EQ(state, row.without);
        Protocol(*session).SetHostName(u"x");
        EXPECT_EQ(Protocol(*session).IsComplete(state), row.with == 0);
        EXPECT_EQ(state, row.with);
    }
}

TEST_F(ProtocolConfigTest, TheTemplateKeepsNoHost) {
    const auto session = Make(u"SSH2");
    Protocol(*session).SetHostName(u"h");
    for (ConnectConfig* config : {session->GetConnectConfig(), session->GetTransferConnectConfig()})
        config->notToBeSaved = 1;
    Save(*session);
    WithKey([](VProfileKey& key) {
        VUnicodeString host;
        EXPECT_FALSE(key.ReadString(u"Hostname", host));
        EXPECT_TRUE(key.ReadString(u"Protocol Name", host));
    });
}

}  // namespace
}  // namespace connectdialog::test
