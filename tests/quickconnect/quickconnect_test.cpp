// Quick connect, with pages of an invented protocol and with those of the reference protocols.
#include "quickconnect/quickconnect.h"

#include <map>

#include "foundation/vnarrowstring.h"
#include "quickconnect/quickconnectdialog.h"
#include "resources/dialogids.h"
#include "sessiondb/sessiontree.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/protocols/pages.h"
#include "suite/protocols/protocoltraits.h"
#include "suite/protocols/quickaddress.h"
#include "support/fakepages.h"
#include "support/faultystore.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

constexpr unsigned kTerminal = 3;

class QuickConnectTest : public LibraryTest {
  protected:
    QuickConnectTest() {
        panels.table.Clear();
        for (const char16_t* name : {u"SSH2", u"SSH1", u"Telnet", u"Serial"})
            panels.table.Add(MakePagedRow<kFakeSshPage>(AppKind::kNorHalden, name));
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

    FaultyStoreFactory wrapped(*factory);
    UseStore(wrapped);
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

class ProtocolPagesTest : public SuiteTest {
  protected:
    ~ProtocolPagesTest() override {
        CleanupQuickConnectDialog();
        EXPECT_EQ(kit.TakeFaults(), "");
    }
    VRef<ISessionConfig> Show(const HeadlessDialogKit::DialogScript& script, unsigned kind = 3) {
        kit.ExpectDialog(QuickConnectIds::kDialog, script);
        ISessionConfig* chosen = nullptr;
        ShowQuickConnectDialog(&chosen, u"", kind, nullptr);
        return VRef<ISessionConfig>::Adopt(chosen);
    }
    HeadlessDialogKit kit;
};

/// The control of the field with that label, or 0.
int ControlOf(const char16_t* protocol, std::u16string_view label) {
    const ProtocolPage* page = FindProtocolPage(protocol);
    for (std::size_t i = 0; i < page->fields.size(); ++i)
        if (std::u16string_view(page->fields[i].label).starts_with(label)) return kFirstPageField + static_cast<int>(i);
    return 0;
}

TEST_F(ProtocolPagesTest, EveryProtocolOfTheApplicationShowsItsPageAndConnects) {
    for (const auto& [kind, name] : {std::pair{1U, u"Halden"}, {3U, u"NorHalden"}, {6U, u"Tessaly"}}) {
        CleanupQuickConnectDialog();
        InstallReferenceSuite(name, *factory);
        for (const ConnectProtocolTableElement& row : GetReferenceProtocolTable()) {
            if (row.kind != static_cast<AppKind>(kind) || row.name == kNoProtocol) continue;
            const ProtocolPage& page = *FindProtocolPage(row.name);
            const auto target = FindProtocolTraits(page.protocol)->target;
            const auto session = Show(
                [&](HeadlessDialog& dialog) {
                    EXPECT_TRUE(dialog.Pick(QuickConnectIds::kProtocol, page.protocol));
                    ASSERT_NE(dialog.GetPage(), nullptr);
                    EXPECT_EQ(dialog.GetPage()->GetTemplateId(), page.dialog.id);
                    if (target != ProtocolTarget::kNothing) dialog.GetPage()->Type(kFirstPageField, u"there"_v);
                    if (page.protocol == u"Raw") dialog.GetPage()->Type(kFirstPageField + 1, u"7"_v);
                    EXPECT_TRUE(dialog.Press(kIdOk)) << testing::PrintToString(page.protocol);
                },
                kind);
            ASSERT_TRUE(session);
            VUnicodeString chosen;
            dynamic_cast<SessionConfig&>(*session).GetActiveProtocolName(chosen);
            EXPECT_EQ(chosen, page.protocol);
        }
    }
}

TEST_F(ProtocolPagesTest, WhatAClientWouldNotTakeIsRefusedByTheFieldsName) {
    struct Row {
        const char16_t *protocol, *field, *typed, *refusal;
    };
    const Row rows[] = {
        {u"SSH2", u"主机名", u"-oProxyCommand=x", u"“主机名”不能以“-”开头：程序会把它当作选项。"},
        {u"SSH2", u"主机名", u"a b", u"“主机名”含有主机名和地址中不能有的字符。"},
        {u"SSH2", u"端口", u"0", u"“端口”必须是 1 到 65535 之间的数字。"},
        {u"SSH2", u"端口", u"+22", u"“端口”必须是 1 到 65535 之间的数字。"},
        {u"SSH2", u"端口", u"99999999999999999999", u"“端口”必须是 1 到 65535 之间的数字。"},
        {u"Telnet", u"用户名", u"$(id)", u"“用户名”含有用户名中不能有的字符。"},
        {u"SSH1", u"跳板主机", u"h,", u"“跳板主机”必须是 user@host:port 形式的主机，以逗号分隔。"},
        {u"Serial", u"数据位", u"9", u"“数据位”必须是 5 到 8 之间的数字。"},
        {u"Serial", u"设备", u"a\nb", u"“设备”含有控制字符。"},
        {u"Local Shell", u"命令(", u"a \"b", u"“命令”缺少右引号。"},
    };
    for (const Row& row : rows) {
        Show([&](HeadlessDialog& dialog) {
            dialog.Pick(QuickConnectIds::kProtocol, row.protocol);
            const int id = ControlOf(row.protocol, row.field);
            dialog.GetPage()->Type(kFirstPageField, u"h"_v);
            dialog.GetPage()->Type(id, row.typed);
            kit.ExpectBox(row.refusal, kAnswerOk);
            EXPECT_TRUE(dialog.Press(kIdOk));
            EXPECT_FALSE(dialog.IsClosed());
            EXPECT_EQ(dialog.GetPage()->GetFocus(), id);
            kit.ExpectBox(row.refusal, kAnswerOk);
            dialog.Pick(QuickConnectIds::kProtocol, u"Raw");
            EXPECT_EQ(dialog.GetText(QuickConnectIds::kProtocol), row.protocol) << "the page stays";
        });
    }
}

TEST_F(ProtocolPagesTest, FieldsReachTheSessionAndEmptyOnesAreTheUsual) {
    const auto session = Show([](HeadlessDialog& dialog) {
        dialog.Pick(QuickConnectIds::kProtocol, u"Serial"_v);
        HeadlessDialog& page = *dialog.GetPage();
        page.Type(ControlOf(u"Serial", u"设备"), u" /dev/ttyS0 "_v);
        page.Type(ControlOf(u"Serial", u"波特率"), u""_v);
        EXPECT_TRUE(page.Pick(ControlOf(u"Serial", u"校验"), u"偶"_v));
        dialog.Press(kIdOk);
    });
    const ProtocolSettings& settings = Protocol(*session).GetSettings();
    EXPECT_EQ(settings.serialDevice.Get(), u"/dev/ttyS0");
    EXPECT_EQ(settings.serialBaudRate.Get(), 9600);
    EXPECT_EQ(settings.serialParity.Get(), static_cast<int>(SerialParity::kEven));

    Show([](HeadlessDialog& dialog) {
        dialog.Pick(QuickConnectIds::kProtocol, u"SSH2"_v);
        dialog.GetPage()->Type(kFirstPageField, u"h"_v);
        dialog.GetPage()->Type(kFirstPageField + 1, u"2222"_v);
        dialog.Pick(QuickConnectIds::kProtocol, u"Telnet"_v);
        EXPECT_EQ(dialog.GetPage()->GetText(kFirstPageField), u"h") << "the host goes along";
        EXPECT_EQ(dialog.GetPage()->GetText(kFirstPageField + 1), u"2222") << "and so does a port that was chosen";
    });
}

TEST_F(ProtocolPagesTest, AnAddressIsCheckedLikeTypedText) {
    // The text, and the protocol, user, host and port that it means.
    using Text = const char16_t*;
    const std::tuple<Text, Text, Text, Text, unsigned> good[] = {
        {u"h", u"", u"", u"h", 0},
        {u"u@h.example:22", u"", u"u", u"h.example", 22},
        {u"a@b@h", u"", u"a@b", u"h", 0},
        {u"[::1]:22", u"", u"", u"::1", 22},
        {u"u@[fe80::1%eth0]", u"", u"u", u"fe80::1%eth0", 0},
        {u"2001:db8::1", u"", u"", u"2001:db8::1", 0},
        {u"SSH://u@h:2222/", u"SSH2", u"u", u"h", 2222},
        {u"telnet://[::1]:23", u"Telnet", u"", u"::1", 23},
        {u"ssh://[fe80::1%25eth0]", u"SSH2", u"", u"fe80::1%eth0", 0},
        {u"sftp://h", u"SFTP", u"", u"h", 0},
    };
    QuickAddress address;
    VReportMessageParams report;
    for (const auto& [text, protocol, user, host, port] : good) {
        ASSERT_TRUE(ParseQuickAddress(text, address, report)) << testing::PrintToString(text);
        EXPECT_EQ(address.protocol, protocol);
        EXPECT_EQ(address.user, user);
        EXPECT_EQ(address.host, host);
        EXPECT_EQ(address.port, port);
    }
    const std::u16string tooLong(20000, u'h');
    for (const char16_t* bad :
         {u"", u"-oProxyCommand=x", u"u@-h", u"@h", u"h:", u"h:0", u"h:+22", u"[::1", u"[::1]x", u"u:password@h",
          u"u:password@h://x", u"sftp://h//", u"ftp://u:password@h", u"h?x=1", u"ssh://h%0aX", u"$(id)", u"a\nb",
          u"ssh://u;fp=1@h", static_cast<const char16_t*>(tooLong.c_str())}) {
        report.Clear();
        EXPECT_FALSE(ParseQuickAddress(bad, address, report)) << testing::PrintToString(bad);
        EXPECT_FALSE(VUnicodeString(report.GetTextOneLine()).IsEmpty());
        EXPECT_EQ(VUnicodeString(report.GetTextOneLine()).View().find(u"password"), std::u16string_view::npos);
    }
    EXPECT_EQ(address.host, u"h") << "the last good one";

    ISessionConfig* next = nullptr;
    GetQuickConnectConfig(&next, 3);
    const auto session = VRef<ISessionConfig>::Adopt(next);
    EXPECT_FALSE(ApplyQuickAddress(*session, address)) << "SFTP is the other application's";
    ASSERT_TRUE(ParseQuickAddress(u"telnet://u@h:99", address, report));
    ASSERT_TRUE(ApplyQuickAddress(*session, address));
    SetQuickConnectConfig(*session);
    Show([](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetText(QuickConnectIds::kProtocol), u"Telnet");
        for (const auto& [id, text] : {std::pair{0, u"h"}, std::pair{1, u"99"}, std::pair{2, u"u"}})
            EXPECT_EQ(dialog.GetPage()->GetText(kFirstPageField + id), text);
        EXPECT_TRUE(dialog.IsEnabled(kIdOk));
    });
    Protocol(*session).EditSettings().sshJumpHost.Set(u"j"_v);
    ASSERT_TRUE(ParseQuickAddress(u"ssh://other", address, report));
    ASSERT_TRUE(ApplyQuickAddress(*session, address));
    EXPECT_EQ(Protocol(*session).GetPort(), kSshPort) << "nothing of the one before";
    VUnicodeString user;
    Protocol(*session).GetRemoteHost().GetUsername(user);
    EXPECT_EQ(user + Protocol(*session).GetSettings().sshJumpHost.Get(), u"");
}

}  // namespace
}  // namespace connectdialog::test
