#include "foundation/vnarrowstring.h"
#include "quickconnect/quickconnect.h"
#include "resources/dialogids.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/protocols/pages.h"
#include "suite/protocols/protocoltraits.h"
#include "suite/protocols/quickaddress.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

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
    struct Row {
        const char16_t* text;
        const char16_t *protocol, *user, *host;
        unsigned port;
    };
    const Row good[] = {
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
    for (const Row& row : good) {
        ASSERT_TRUE(ParseQuickAddress(row.text, address, report)) << testing::PrintToString(row.text);
        EXPECT_EQ(address.protocol, row.protocol);
        EXPECT_EQ(address.user, row.user);
        EXPECT_EQ(address.host, row.host);
        EXPECT_EQ(address.port, row.port);
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
