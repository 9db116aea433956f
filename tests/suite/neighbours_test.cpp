// The reference neighbours: protocols and what the panels keep.
#include <map>

#include "config/settingwalk.h"
#include "foundation/vnarrowstring.h"
#include "frame/connectdialogapi.h"
#include "imports/configpanels.h"
#include "profile/vvariant.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/configpanels/sessionname.h"
#include "suite/protocols/protocolconfig.h"
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
    EXPECT_FALSE(again->IsChanged() || Protocol(*again).IsMissing());
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

class ConfigPanelsTest : public SuiteTest {
  protected:
    std::uint32_t StoredNumber(const char16_t* name) const { return ReadDwordOr(*factory, kGlobalKey, name, 99); }
    static VRef<GlobalConfig> Global() {
        VRef<GlobalConfig> global;
        EXPECT_TRUE(GetGlobalConfig(global, -1));
        return global;
    }
};

/// Users' data: a name here changes only together with a migration.
TEST_F(ConfigPanelsTest, GlobalSettingsKeepTheirNames) {
    const auto global = Global();
    VUnicodeString names;
    for (std::size_t i = 0; const VProfileData* member = dynamic_cast<VProfileData&>(*global).GetMember(i); ++i)
        names += member->GetName() + u", ";
    EXPECT_EQ(names,
              u"Config Upgrade Marker, Session Arrangement Mode, Hide Dot Entries, Line Send Delay, "
              u"Character Send Delay, Maximum Cols, Maximum Scrollback, RemoteFrame Window Placement, "
              u"Remote ExplorerFrame State, "
              u"Remote ListView State, Tessaly Remote Tab State, Connect Dialog Placement, "
              u"Connect Dialog On Startup, Quick Connect On Startup, Quick Connect Save Session, "
              u"Show Descriptions, "
              u"Show Transfer Sessions, Show Terminal Sessions, Save Config On Close, Last Session Path, "
              u"Last Session Expanded, Remember Folder Expansion, Options Page Path, Open In Tab, Tab Mode, "
              u"Tabs Forced, Session Tree Font, Suppress Multi Connect Warning, Suppress Multi Edit Warning, "
              u"Use New Session Wizard, Update Reminder Suppressed, Last Update Reminder, Terminal Command, Main "
              u"Window Placement, ");
}

TEST_F(ConfigPanelsTest, ALaunchCommandNamesItsOneSessionWhateverTheName) {
    using Words = std::vector<std::string>;
    ConnectDialogInitApplicationCommandLine(u"--store \"sqlite:/a b\"");
    const std::u16string_view shared = u"--store \"sqlite:/a b\" /S ";
    const std::pair<std::u16string_view, std::string_view> rows[] = {
        {u"\"A\\B\"", "A\\B"}, {u"\"x\" /S \"y\"", "x\" /S \"y"}, {u"\"--help\"", "--help"}, {u"\"\"\"", "\""}};
    Words words;
    for (const auto& [quoted, path] : rows) {
        EXPECT_TRUE(ReadLaunchCommand(std::u16string(shared) + std::u16string(quoted), words));
        EXPECT_EQ(words, (Words{"--store", "sqlite:/a b", "/S", std::string(path)}));
    }
    for (const std::u16string_view bad : {u"", u"\"", u"\"\"", u"\"x", u"x\"", u"\"\xD800\""})
        EXPECT_FALSE(ReadLaunchCommand(std::u16string(shared) + std::u16string(bad), words));
    EXPECT_FALSE(ReadLaunchCommand(u"--other /S \"x\"", words));
}

TEST_F(ConfigPanelsTest, OneRecordServesTheProcessUntilItIsReadAgain) {
    const auto global = Global();
    EXPECT_EQ(Global().Get(), global.Get());
    EXPECT_EQ(global->configUpgradeMarker.Get(), u"7B2F2717-85C8-4729-8394-3B7697039CEB")
        << "a new store is no old one";
    EXPECT_EQ(StoredNumber(u"Line Send Delay"), 99U) << "reading wrote something";
    global->sessionArrangementMode.Set(2);
    EXPECT_TRUE(global->Save());
    EXPECT_EQ(StoredNumber(u"Session Arrangement Mode"), 2U);

    ASSERT_TRUE(WriteDwords(*factory, kGlobalKey, {u"Session Arrangement Mode"}, 1));
    EXPECT_EQ(Global()->sessionArrangementMode.Get(), 2);
    GetReferenceConfigPanels().ReloadGlobalConfig();
    EXPECT_EQ(Global()->sessionArrangementMode.Get(), 1);
    EXPECT_EQ(global->sessionArrangementMode.Get(), 2);
}

TEST_F(ConfigPanelsTest, WhatCouldNotBeWrittenIsWrittenByTheNextSave) {
    VReportMessageParams report;
    // Nobody can make a file there.
    const auto refusing = stores::OpenProfileStoreFactory(u"sqlite:/proc/nowhere/sessions.db", report);
    ASSERT_TRUE(refusing);
    InstallReferenceSuite(u"NorHalden"_v, *refusing);
    const auto global = Global();
    global->lineSendDelay.Set(77);
    EXPECT_FALSE(global->Save());
    EXPECT_EQ(global->lineSendDelay.Get(), 77);

    InstallReferenceSuite(u"NorHalden"_v, *factory);
    EXPECT_TRUE(global->Save());
    EXPECT_EQ(StoredNumber(u"Line Send Delay"), 77U);
}

TEST_F(ConfigPanelsTest, TheProductFollowsFromTheApplicationsName) {
    EXPECT_EQ(GetCurrentAppProductID(), AppKind::kNorHalden);
    InstallReferenceSuite(u"tessaly"_v, *factory);
    EXPECT_EQ(GetCurrentAppProductID(), AppKind::kTessaly);
    EXPECT_NE(FindSuiteProgram("sh"), "");
    EXPECT_EQ(FindSuiteProgram("no-such-program-anywhere"), "");
}

TEST_F(ConfigPanelsTest, NamesThatTheTreeCannotHoldAreRefused) {
    AddFolderEntry(u"", u"Servers", u"", false);
    AddFolderEntry(u"Servers", u"web", u"", false);
    using Fault = SessionNameFault;
    const std::u16string longest(kMaxSessionNameLength, u'n');
    // The folder, the old name and the new one.
    const std::tuple<const char16_t*, const char16_t*, std::u16string, Fault> rows[] = {
        {u"", u"", u"\u540D\U0001F600", Fault::kNone},
        {u"", u"", longest, Fault::kNone},
        {u"", u"", longest + u"n", Fault::kTooLong},
        {u"", u"", u"", Fault::kEmpty},
        {u"", u"", u"a\\b", Fault::kSeparator},
        {u"", u"", u"a:b", Fault::kColon},
        {u"", u"", u"txt\u202Egpj", Fault::kControl},
        {u"", u"", std::u16string(u"a\0b", 3), Fault::kControl},
        {u"", u"", {u'a', 0xD800}, Fault::kHalfCharacter},
        {u"", u"", u" a", Fault::kBlankAtEdge},
        {u"", u"", u"a\u3000", Fault::kBlankAtEdge},
        {u"", u"", u"..", Fault::kDots},
        {u"Servers", u"", u"__FOLDERDATA__", Fault::kFolderData},
        {u"", u"", u"default", Fault::kTemplate},
        {u"", u"Default", u"DEFAULT", Fault::kNone},
        {u"", u"", u"SERVERS", Fault::kTaken},
        {u"", u"Servers", u"SERVERS", Fault::kNone},
        {u"Servers", u"", u"Web", Fault::kTaken},
    };
    for (const auto& [parent, oldName, newName, fault] : rows) {
        const VUnicodeString name{std::u16string_view(newName)};
        EXPECT_EQ(CheckSessionName(parent, oldName, name), fault) << testing::PrintToString(newName);
        EXPECT_EQ(DescribeSessionNameFault(fault, name).IsEmpty(), fault == Fault::kNone);
    }
    EXPECT_FALSE(ValidateSessionName(u"Servers", u"New", u"Web", true, nullptr)) << "the path is the folder";
    EXPECT_TRUE(ValidateSessionName(u"", u"New", u"Web", true, nullptr));
    EXPECT_TRUE(ValidateSessionName(u"Servers\\web", u"web", u"Web", false, nullptr));
}

}  // namespace
}  // namespace connectdialog::test
