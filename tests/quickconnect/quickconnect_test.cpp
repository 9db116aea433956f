#include "quickconnect/quickconnect.h"

#include <map>

#include "quickconnect/quickconnectdialog.h"
#include "resources/dialogids.h"
#include "sessiondb/sessiontree.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/fakepages.h"
#include "support/faultystore.h"

namespace connectdialog::test {
namespace {

constexpr unsigned kTerminal = 3;

class QuickConnectTest : public LibraryTest {
  protected:
    QuickConnectTest() {
        panels.table.Clear();
        for (const char16_t* name : {u"SSH2", u"SSH1", u"Telnet", u"Serial"})
            panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, name));
        PortProtocol::releases = 0;
    }
    ~QuickConnectTest() override {
        CleanupQuickConnectDialog();
        EXPECT_EQ(kit.TakeFaults(), "");
    }

    using Script = HeadlessDialogKit::DialogScript;
    VRef<ISessionConfig> Show(const Script& script, const char16_t* folder = u"") {
        kit.ExpectDialog(QuickConnectIds::kDialog, script);
        ISessionConfig* chosen = nullptr;
        const std::int64_t result = ShowQuickConnectDialog(&chosen, folder, kTerminal, nullptr);
        EXPECT_EQ(result == kDialogAccepted, chosen != nullptr);
        return VRef<ISessionConfig>::Adopt(chosen);
    }
    VRef<ISessionConfig> Connect(const char16_t* host, bool save) {
        return Show([=](HeadlessDialog& dialog) {
            dialog.GetPage()->Type(kFakeHost, host);
            dialog.Tick(QuickConnectIds::kSaveSession, save);
            EXPECT_TRUE(dialog.Press(kIdOk));
        });
    }
    static bool Pick(HeadlessDialog& dialog, const char16_t* protocol) {
        return dialog.Pick(QuickConnectIds::kProtocol, protocol);
    }

    HeadlessDialogKit kit;
};

VUnicodeString HostOf(ISessionConfig& session) {
    VUnicodeString host;
    session.GetConnectConfig()->GetHostName(host);
    return host;
}

TEST_F(QuickConnectTest, APortIsReleasedOnceAndOnlyWhenItWasTheOneThatWasFound) {
    struct Row {
        std::vector<const char16_t*> protocols;
        bool isPortTyped;
        int releases;
    };
    const Row rows[] = {
        {{u"SSH1", u"SSH2", u"SSH1"}, false, 0},     {{u"Telnet"}, false, 1},
        {{u"Telnet", u"Serial", u"SSH2"}, false, 1}, {{u"Telnet"}, true, 0},
        {{u"Telnet", u"Serial"}, true, 1},  // the rule stayed pending, and the next port is the one that was found
    };
    for (const Row& row : rows) {
        PortProtocol::releases = 0;
        Show([&](HeadlessDialog& dialog) {
            if (row.isPortTyped) dialog.GetPage()->Type(kFakePort, u"2222"_v);
            for (const char16_t* protocol : row.protocols) EXPECT_TRUE(Pick(dialog, protocol));
        });
        EXPECT_EQ(PortProtocol::releases, row.releases) << row.protocols.size();
    }
}

TEST_F(QuickConnectTest, ConnectWaitsForAHostAndTheLastOneIsOfferedAgain) {
    const auto first = Show([](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetText(QuickConnectIds::kProtocol), u"SSH2");
        EXPECT_FALSE(dialog.Press(kIdOk));
        EXPECT_TRUE(Pick(dialog, u"Telnet"));
        EXPECT_TRUE(dialog.GetPage()->Type(kFakeHost, u"h"_v));
        EXPECT_TRUE(dialog.GetPage()->PressKey(kKeyReturn)) << "the page's Return key is the dialog's";
    });
    ASSERT_TRUE(first);
    EXPECT_FALSE(first->IsStored());
    Show([](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetText(QuickConnectIds::kProtocol), u"Telnet");
        EXPECT_EQ(dialog.GetPage()->GetText(kFakeHost), u"h");
        dialog.GetPage()->Type(kFakeHost, u"other"_v);
        dialog.GetPage()->PressKey(kKeyEscape);
        EXPECT_TRUE(dialog.IsClosed());
    });
    ISessionConfig* last = nullptr;
    GetQuickConnectConfig(&last, kTerminal);
    EXPECT_EQ(HostOf(*VRef<ISessionConfig>::Adopt(last)), u"h") << "a cancelled dialog changes nothing";
    EXPECT_FALSE(SessionKeyExists(u"h"));
}

TEST_F(QuickConnectTest, ASavedSessionGetsANameThatCanStandAndIsFree) {
    MakeSession(u"web");
    const std::u16string tooLong(10000, u'h');
    const std::pair<const char16_t*, const char16_t*> rows[] = {
        {u"Web:8022/x", u"web_8022_x"},     {u"Web", u"web (1)"}, {u"web", u"web (2)"},
        {u"2001:DB8:0::1", u"2001_db8__1"}, {u"\\/:", u"___"},    {u"default", u"default (1)"},
        {tooLong.c_str(), u"ssh2"},         {u" ", u"ssh2 (1)"},  {u"a\nb", u"ssh2 (2)"},
    };
    for (const auto& [host, name] : rows) {
        const auto session = Connect(host, true);
        ASSERT_TRUE(session);
        EXPECT_EQ(session->GetPath(), name);
        EXPECT_TRUE(session->IsStored());
        const auto stored = OpenSession(name);
        ASSERT_TRUE(stored);
        EXPECT_EQ(HostOf(*stored), host);
    }
    const auto inFolder = Show(
        [](HeadlessDialog& dialog) {
            dialog.GetPage()->Type(kFakeHost, u"web"_v);
            dialog.Press(kIdOk);
        },
        u"folder\\inner");
    EXPECT_EQ(inFolder->GetPath(), u"folder\\inner\\web") << "the box is still ticked";

    static FaultyStoreFactory* faulty = nullptr;
    FaultyStoreFactory wrapped(*factory);
    faulty = &wrapped;
    SetProfileFactoryGetter([]() -> VProfileStoreFactory* { return faulty; });
    wrapped.plan.failCommit = true;
    const auto refused = Show([this](HeadlessDialog& dialog) {
        dialog.GetPage()->Type(kFakeHost, u"lost"_v);
        kit.ExpectBox(u"ERROR: Could not save the session in the database."_v, kAnswerOk);
        EXPECT_TRUE(dialog.Press(kIdOk));
    });
    ASSERT_TRUE(refused) << "the connection goes on";
    EXPECT_FALSE(refused->IsStored());
    EXPECT_FALSE(SessionKeyExists(u"lost"));
}

TEST_F(QuickConnectTest, BoxesAreKeptInTheSettings) {
    GlobalConfig& settings = *panels.global;
    settings.connectDialogOnStartup.Set(true);
    settings.tabMode.Set(1);
    settings.tabsForced.Set(true);
    Show([&](HeadlessDialog& dialog) {
        EXPECT_TRUE(dialog.Tick(QuickConnectIds::kShowOnStartup, true));
        EXPECT_FALSE(dialog.Tick(QuickConnectIds::kOpenInTab, true));
        EXPECT_TRUE(dialog.Tick(QuickConnectIds::kSaveSession, true));
    });
    EXPECT_TRUE(settings.quickConnectOnStartup.Get());
    EXPECT_FALSE(settings.connectDialogOnStartup.Get()) << "one dialog at most opens at the start";
    EXPECT_TRUE(settings.openInTab.Get());
    EXPECT_FALSE(settings.quickConnectSaveSession.Get()) << "inverted until the dialog is accepted";
    settings.openInTab.Set(false);
    Connect(u"h", true);
    EXPECT_TRUE(settings.quickConnectSaveSession.Get());
    EXPECT_FALSE(settings.openInTab.Get()) << "what was chosen outlasts the tabs that are forced";
}

TEST_F(QuickConnectTest, TheTransferSideHasNoBoxForTabsAndTheOthersInItsRow) {
    panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kTessaly, u"SFTP"));
    std::map<int, VRectangle> terminalPlaces;
    for (const unsigned kind : {kTerminal, 6U}) {
        kit.ExpectDialog(QuickConnectIds::kDialog, [&](HeadlessDialog& dialog) {
            const bool isTerminal = kind == kTerminal;
            EXPECT_EQ(dialog.IsShown(QuickConnectIds::kOpenInTab), isTerminal);
            EXPECT_EQ(dialog.IsShown(QuickConnectIds::kTerminalPage), isTerminal);
            EXPECT_EQ(dialog.IsShown(QuickConnectIds::kTransferPage), !isTerminal);
            const VRectangle row = dialog.GetRectangle(QuickConnectIds::kOpenInTab);
            for (const int box : {QuickConnectIds::kShowOnStartup, QuickConnectIds::kSaveSession}) {
                const VRectangle place = dialog.GetRectangle(box);
                const VRectangle former = terminalPlaces.emplace(box, place).first->second;
                EXPECT_EQ(place.left, former.left);
                EXPECT_EQ(place.right, former.right);
                EXPECT_EQ(place.top == row.top && place.bottom == row.bottom, !isTerminal);
            }
        });
        ISessionConfig* none = nullptr;
        ShowQuickConnectDialog(&none, u"", kind, nullptr);
    }
}

TEST_F(QuickConnectTest, APageThatRefusesKeepsItsProtocol) {
    Show([](HeadlessDialog& dialog) {
        dialog.GetPage()->Type(kFakeHost, u"bad"_v);
        EXPECT_TRUE(Pick(dialog, u"Telnet"));
        EXPECT_EQ(dialog.GetText(QuickConnectIds::kProtocol), u"SSH2");
        EXPECT_TRUE(dialog.Press(kIdOk));
        EXPECT_FALSE(dialog.IsClosed());
        EXPECT_EQ(dialog.GetPage()->GetFocus(), kFakeHost);
    });
    EXPECT_EQ(PortProtocol::releases, 0);
}

TEST_F(QuickConnectTest, TablesThatLackSomethingAreSurvived) {
    panels.table.Clear();
    ISessionConfig* none = nullptr;
    kit.ExpectBox(u"没有可用的协议。"_v, kAnswerOk);
    EXPECT_EQ(ShowQuickConnectDialog(&none, u"", kTerminal, nullptr), kDialogCancelled);
    GetQuickConnectConfig(&none, kTerminal);
    EXPECT_EQ(none, nullptr);

    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Pageless"));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Throws"));
    panels.table[1].createQuickPage = [](VWindow*, ISessionConfig*) -> VPluginDialog* { throw 1; };
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Breaks"));
    panels.table[2].createQuickPage = [](VWindow*, ISessionConfig* session) -> VPluginDialog* {
        return new BrokenPage<FakeQuickPage>(*session);
    };
    panels.table.Add(MakeRow(AppKind::kTessaly, u"Other side"));
    Show([this](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetPage(), nullptr);
        EXPECT_FALSE(Pick(dialog, u"Other side"));
        for (const char16_t* name : {u"Throws", u"Breaks"}) {
            kit.ExpectBox(u"无法显示协议 "_v + name + u" 的设置页。", kAnswerOk);
            EXPECT_TRUE(Pick(dialog, name));
            EXPECT_EQ(dialog.GetPage(), nullptr);
        }
        EXPECT_FALSE(dialog.Press(kIdOk));
    });
    CleanupQuickConnectDialog();
    panels.table.Clear();
    panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, u"Only"));
    EXPECT_TRUE(Connect(u"h", false)) << "one row";
}

}  // namespace
}  // namespace connectdialog::test
