#include "suite/protocols/protocolconfig.h"

#include <map>

#include "config/settingwalk.h"
#include "foundation/vnarrowstring.h"
#include "imports/configpanels.h"
#include "profile/vvariant.h"
#include "suite/protocols/protocoltraits.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

/// What users' stores hold, written down by hand: a name here changes only together with a migration.
struct GoldenProtocol {
    const char16_t* name;
    unsigned port;
    const char16_t* suggestedName;  ///< once the target is "there"
    const char16_t* settings;       ///< besides those of the host
};
constexpr char16_t kSsh[] =
    u"SSH Port, SSH Identity File, SSH Jump Host, SSH Forward Agent, SSH Forward X11, SSH Remote Command, ";
constexpr char16_t kSftp[] = u"SSH Port, SSH Identity File, SSH Jump Host, ";
constexpr char16_t kSerial[] =
    u"Serial Device, Serial Baud Rate, Serial Data Bits, Serial Parity, Serial Stop Bits, "
    u"Serial Flow Control, ";
constexpr GoldenProtocol kGolden[] = {
    {u"Telnet", 23, u"there", u"Telnet Port, "},
    {u"RLogin", 513, u"there", u"RLogin Port, "},
    {u"Serial", 0, u"there", kSerial},
    {u"TAPI", 0, u"there", u"TAPI Phone Number, TAPI Modem Device, "},
    {u"Marks", 0, u"Marks", u""},
    {u"Raw", 0, u"there", u"Raw Port, "},
    {u"SSH2", 22, u"there", kSsh},
    {u"SSH1", 22, u"there", kSsh},
    {u"Telnet/SSL", 992, u"there", u"Telnet/SSL Port, "},
    {u"Local Shell", 0, u"Local Shell", u"Local Shell Command, "},
    {u"SFTP", 22, u"there", kSftp},
    {u"FTP", 21, u"there", u"FTP Port, "},
    {u"FTP/SSL (implicit)", 990, u"there", u"FTP/SSL Port, "},
    {u"FTP/SSL (explicit)", 21, u"there", u"FTP Port, "},
    {u"SCP", 22, u"there", kSftp},
};

VVariant ValueOf(const VProfileData& setting) {
    VReportMessageParams report;
    VVariant value;
    EXPECT_TRUE(setting.GetVariant(value, report));
    return value;
}

/// Gives a setting another value that it may have.
void Change(VProfileData& setting) {
    const VVariant value = ValueOf(setting);
    std::int64_t number = value.GetNumber() == 1 ? 2 : 1;
    if (setting.GetName() == u"Serial Data Bits") number = 7;
    if (setting.GetName() == u"Serial Baud Rate") number = 115200;
    const VVariant changed = value.GetType() == VVariantType::kText ? VVariant(setting.GetName() + u" x")
                                                                    : VVariant(VVariantType::kUInt32, number);
    VReportMessageParams report;
    ASSERT_TRUE(setting.SetVariant(changed, report)) << VNarrowString(setting.GetName()).GetData();
}

VUnicodeString HostOf(const ConnectConfig& config) {
    VUnicodeString host;
    config.GetHostName(host);
    return host;
}

class ProtocolConfigTest : public SuiteTest {};

TEST_F(ProtocolConfigTest, TheCatalogueStandsInItsOrder) {
    VUnicodeString rows;
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable()) {
        rows += std::to_string(static_cast<int>(row.kind)).c_str();
        rows += u" " + row.name + u", ";
        EXPECT_EQ(row.createConfig == nullptr, row.name == u"None");
        if (row.createConfig == nullptr) continue;
        const auto config = VRef<ConnectConfig>::Adopt(row.createConfig(nullptr, nullptr, row));
        EXPECT_EQ(dynamic_cast<ProtocolConfig&>(*config).GetTraits().name, row.name.View());
    }
    EXPECT_EQ(
        rows,
        u"3 SSH2, 3 SSH1, 3 Telnet, 3 Telnet/SSL, 3 RLogin, 3 Serial, 3 Local Shell, 3 TAPI, 3 Marks, 3 Raw, 3 None, "
        u"1 Telnet, 1 RLogin, 1 Serial, 1 TAPI, 1 Marks, 1 Raw, 6 SFTP, 6 FTP, 6 FTP/SSL (implicit), "
        u"6 FTP/SSL (explicit), 6 SCP, 6 None, 7 SSH2, ");
}

TEST_F(ProtocolConfigTest, EachProtocolSavesItsOwnSettingsUnderTheirNames) {
    for (const GoldenProtocol& golden : kGolden) {
        const auto session = Make(golden.name);
        ProtocolConfig& config = Protocol(*session);
        VUnicodeString names;
        for (const VProfileData* setting : SettingsOf(config)) names += setting->GetName() + u", ";
        const bool hasHost = config.GetTraits().target == ProtocolTarget::kHost;
        EXPECT_EQ(names, (hasHost ? u"Hostname, Firewall Name, Username, "_v : VUnicodeString()) + golden.settings);
        EXPECT_EQ(config.GetPort(), golden.port);
        config.SetHostName(u"there");
        VUnicodeString suggested;
        config.GetSuggestedName(suggested);
        EXPECT_EQ(suggested, golden.suggestedName);
    }
}

TEST_F(ProtocolConfigTest, EverySettingOfEveryProtocolComesBackFromTheStore) {
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable()) {
        if (row.createConfig == nullptr) continue;
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        const auto session = Make(row.name.GetData());
        ConnectConfig& config = Protocol(*session);
        for (VProfileData* setting : SettingsOf(config))
            if (setting->GetName() != u"Firewall Name") Change(*setting);
        VRef<ConnectConfig> again;
        WithKey(u"k", [&](VProfileKey& key) {
            config.Save(key, false);
            again = VRef<ConnectConfig>::Adopt(row.createConfig(&key, nullptr, row));
        });
        EXPECT_FALSE(config.IsChanged());
        EXPECT_FALSE(again->IsMissing());
        const auto before = SettingsOf(config);
        const auto after = SettingsOf(*again);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(ValueOf(*before[i]).GetText(), ValueOf(*after[i]).GetText());
            EXPECT_EQ(ValueOf(*before[i]).GetNumber(), ValueOf(*after[i]).GetNumber());
        }
    }
}

TEST_F(ProtocolConfigTest, NumbersOutOfTheirRangeAreCorrectedAndRepairedAtTheNextSave) {
    // The setting, what is stored, and what it is corrected to.
    const std::tuple<const char16_t*, const char16_t*, std::vector<std::uint32_t>, std::uint32_t> rows[] = {
        {u"SSH2", u"SSH Port", {0, 65536, 65558, 0xFFFFFFFF}, 22},
        {u"SSH2", u"SSH Port", {65535}, 65535},
        {u"Serial", u"Serial Baud Rate", {0, 0x80000000}, 9600},
        {u"Serial", u"Serial Data Bits", {4, 9}, 8},
        {u"Serial", u"Serial Parity", {3}, 0},
        {u"Serial", u"Serial Stop Bits", {0, 3}, 1},
        {u"Serial", u"Serial Flow Control", {7}, 0},
    };
    for (const auto& [protocol, name, values, corrected] : rows) {
        for (const std::uint32_t stored : values) {
            WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
            ASSERT_TRUE(WriteDwords(*factory, u"k", {name}, stored));
            WithKey(u"k", [named = protocol](VProfileKey& key) { key.WriteString(u"Protocol Name", named); });
            const auto session = Load();
            EXPECT_EQ(Protocol(*session).IsChanged(), stored != corrected);
            Save(*session);
            EXPECT_EQ(ReadDwordOr(*factory, u"k", name, 99), corrected) << stored;
        }
    }
}

TEST_F(ProtocolConfigTest, SwitchingCarriesWhatWasChosenAndNoDefaultPort) {
    const auto session = Make(u"SSH2");
    Protocol(*session).SetHostName(u"h");
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 23);
    session->SetProtocolName(u"SSH2");
    Protocol(*session).SetPort(2222);
    Protocol(*session).ReleasePort();
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 23) << "a released port stays with its protocol";
    session->SetProtocolName(u"SSH2");
    Protocol(*session).SetPort(2222);
    session->SetProtocolName(u"Telnet");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
    Protocol(*session).SetPort(2323);
    session->SetProtocolName(u"SSH2");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
    Protocol(*session).EditSettings().sshJumpHost.Set(u"j"_v);
    Protocol(*session).GetRemoteHost().SetUsername(u"u");
    session->SetProtocolName(u"SFTP");
    EXPECT_EQ(Protocol(*session).GetSettings().sshJumpHost.Get(), u"j");
    EXPECT_EQ(Protocol(*session).GetPort(), 2222);
    session->SetProtocolName(u"Local Shell");
    session->SetProtocolName(u"RLogin");
    EXPECT_EQ(Protocol(*session).GetPort(), 513);
    EXPECT_EQ(HostOf(Protocol(*session)), u"h");
    VUnicodeString user;
    Protocol(*session).GetRemoteHost().GetUsername(user);
    EXPECT_EQ(user, u"u");
}

TEST_F(ProtocolConfigTest, AnEditSurvivesTheMakingOfAnotherProtocolAndCanStillBeDropped) {
    const auto session = Make(u"SSH2");
    session->Commit();
    Protocol(*session).SetHostName(u"typed");
    session->SetProtocolName(u"TAPI");
    session->SetProtocolName(u"SSH2");
    EXPECT_TRUE(Protocol(*session).IsChanged());
    session->Revert();
    EXPECT_EQ(HostOf(Protocol(*session)), u"");
}

TEST_F(ProtocolConfigTest, ACloneIsChangedInTheSameWayAndGoesItsOwnWay) {
    const auto session = Make(u"SSH2");
    session->Commit();
    Protocol(*session).SetHostName(u"first");
    Protocol(*session).EditSettings().sshJumpHost.Set(u"jump"_v);
    const auto clone = VRef<SessionConfig>::Adopt(dynamic_cast<SessionConfig*>(session->Clone()));
    EXPECT_TRUE(Protocol(*clone).IsChanged());
    const auto apart = VRef<ConnectConfig>::Adopt(Protocol(*clone).Clone(nullptr));
    Protocol(*session).SetHostName(u"second");
    Protocol(*session).EditSettings().sshJumpHost.Edit().Empty();
    EXPECT_EQ(Protocol(*clone).GetSettings().sshJumpHost.Get(), u"jump");
    const auto target = Make(u"SSH2");
    target->CopyChangesFrom(clone.Get());
    for (ConnectConfig* config : {clone->GetConnectConfig(), target->GetConnectConfig(), apart.Get()})
        EXPECT_EQ(HostOf(*config), u"first");
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
    std::map<const VProfileData*, int> visits;
    VisitSettings(*session, [&](const VProfileData& setting) { ++visits[&setting]; });
    for (const auto& [setting, count] : visits) EXPECT_EQ(count, 1) << VNarrowString(setting->GetName()).GetData();
    Save(*session);
    const auto again = Load();
    EXPECT_EQ(HostOf(*again->GetTransferConnectConfig()), u"h");
    EXPECT_FALSE(again->IsChanged());
}

TEST_F(ProtocolConfigTest, CompletenessNamesWhatIsMissing) {
    // The state of a new session, and once the target is known; 0: complete.
    constexpr std::tuple<const char16_t*, std::uint32_t, std::uint32_t> kRows[] = {
        {u"SSH2", 1, 0}, {u"FTP", 1, 0},         {u"Raw", 2, 2},   {u"Serial", 2, 0},
        {u"TAPI", 2, 0}, {u"Local Shell", 0, 0}, {u"Marks", 0, 0}, {u"Telnet/SSL", 1, 0}};
    for (const auto& [protocol, without, with] : kRows) {
        const auto session = Make(protocol);
        std::uint32_t state = 99;
        EXPECT_EQ(Protocol(*session).IsComplete(state), without == 0);
        EXPECT_EQ(state, without);
        Protocol(*session).SetHostName(u"x");
        EXPECT_EQ(Protocol(*session).IsComplete(state), with == 0);
        EXPECT_EQ(state, with);
    }
}

}  // namespace
}  // namespace connectdialog::test
