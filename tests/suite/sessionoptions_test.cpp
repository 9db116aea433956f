#include "suite/sessionoptions/sessionoptions.h"

#include <set>

#include "config/ifirewallui.h"
#include "config/protocolchoice.h"
#include "config/settingtext.h"
#include "config/settingwalk.h"
#include "connectdialog/ui/connectdialog.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vdialog.h"
#include "resources/accelerators.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"
#include "sessiondb/sessiontree.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

class SessionOptionsTest : public SuiteTest {
  protected:
    using Script = HeadlessDialogKit::DialogScript;

    ~SessionOptionsTest() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    /// A session as the store has it.
    static VRef<SessionConfig> Stored(const char16_t* protocol) {
        const VRef<SessionConfig> made = Make(protocol);
        Save(*made);
        VRef<SessionConfig> session = Load();
        Save(*session);
        return session;
    }
    std::int64_t Run(ISessionConfig& session, const Script& script, bool isMulti = false, bool isNew = false) {
        kit.ExpectDialog(OptionIds::kDialog, script);
        return ShowSessionOptions(&session, isMulti ? 4 : 0, isMulti, isNew, nullptr);
    }
    /// The control of the first field with that setting; the empty one is the session's name.
    static int At(std::u16string_view setting) {
        for (const OptionControl& known : GetOptionControls())
            if (known.field.setting == setting) return known.control;
        ADD_FAILURE() << "no such field";
        return kNoId;
    }
    static void GoTo(HeadlessDialog& dialog, std::u16string_view path) {
        dialog.SetFocus(OptionIds::kPages);
        dialog.PressKey(kKeyHome);
        for (const OptionPage& page : GetOptionPages()) {
            if (page.path == path) return;
            dialog.PressKey(kKeyDown);
        }
        ADD_FAILURE() << "no such page";
    }
    /// Leaves one row on the page of all settings.
    static void Filter(HeadlessDialog& dialog, const VUnicodeString& text) {
        GoTo(dialog, u"All Settings");
        EXPECT_TRUE(dialog.Type(OptionIds::kFilter, text));
    }
    static VUnicodeString Text(ISessionConfig& session, std::u16string_view name) {
        VUnicodeString text;
        VProfileData* setting = FindSetting(session, name);
        if (setting == nullptr || !ReadSettingText(*setting, text)) text = u"(none)";
        return text;
    }

    HeadlessDialogKit kit;
};

TEST_F(SessionOptionsTest, OnlyOkReachesTheSessionAndOnlyWithWhatChanged) {
    const VRef<SessionConfig> session = Stored(u"SSH2");
    const Script edit = [](HeadlessDialog& dialog) {
        GoTo(dialog, u"Connection");
        EXPECT_TRUE(dialog.Type(At(u"Hostname"), u"example.org"_v));
        EXPECT_TRUE(dialog.Type(At(u"SSH Port"), u"2222"_v));
        GoTo(dialog, u"Terminal");
        EXPECT_FALSE(dialog.IsShown(At(u"Hostname")));
        EXPECT_TRUE(dialog.Tick(At(u"Local Echo"), true));
        EXPECT_TRUE(dialog.Pick(At(u"Emulation"), u"Linux"_v));
        GoTo(dialog, u"Terminal\\Appearance");
        EXPECT_TRUE(dialog.Type(At(u"Background"), u"#102030"_v));
    };
    EXPECT_EQ(Run(*session, edit), kDialogCancelled);
    EXPECT_FALSE(session->IsChanged());
    EXPECT_EQ(Text(*session, u"Hostname"), u"");

    EXPECT_EQ(Run(*session,
                  [&](HeadlessDialog& dialog) {
                      edit(dialog);
                      dialog.Press(kIdOk);
                  }),
              kDialogAccepted);
    std::set<std::u16string> changed;
    VisitSettings(*session, [&](VProfileData& setting) {
        if (setting.IsChanged()) changed.insert(std::u16string(setting.GetName().View()));
    });
    EXPECT_EQ(changed,
              (std::set<std::u16string>{u"Hostname", u"SSH Port", u"Local Echo", u"Emulation", u"Background"}));
    EXPECT_EQ(Text(*session, u"SSH Port"), u"2222");
    EXPECT_EQ(session->terminal.background.Get(), 0x302010);
    VRef<GlobalConfig> global;
    ASSERT_TRUE(GetGlobalConfig(global, -1));
    EXPECT_EQ(global->optionsPagePath.Get(), u"Terminal\\Appearance") << "the page is remembered";
    Run(*session, [](HeadlessDialog& dialog) { EXPECT_TRUE(dialog.IsShown(At(u"Background"))); });
    global->optionsPagePath.Set(u"Connection+"_v);
    Run(*session, [](HeadlessDialog& dialog) { EXPECT_EQ(dialog.GetFocus(), At(u"")); });
    EXPECT_EQ(global->optionsPagePath.Get(), u"Connection+");
}

TEST_F(SessionOptionsTest, ABadValueIsToldWithItsNameAndKeepsThePage) {
    struct Row {
        const char16_t* page;
        const char16_t* setting;
        const char16_t* bad;
        const char16_t* refusal;
    };
    const Row rows[] = {
        {u"Connection", u"SSH Port", u"0", u"“SSH 端口”必须是 1 到 65535 之间的整数。"},
        {u"Connection", u"SSH Port", u"22x", u"“SSH 端口”必须是 1 到 65535 之间的整数。"},
        {u"Connection", u"Hostname", u"-oProxyCommand=x", u"“主机名”不能以“-”开头：程序会把它当作选项。"},
        {u"Connection", u"Hostname", u"a b", u"“主机名”含有主机名和地址中不能有的字符。"},
        {u"Connection\\Keep Alive", u"Idle Timeout", u"9", u"“间隔 (秒)”必须是 10 到 9999999 之间的整数。"},
        {u"Terminal", u"Cols", u"1001", u"“列数”必须是 1 到 1000 之间的整数。"},
        {u"Terminal\\Appearance", u"Foreground", u"red", u"“前景色”必须是 #RRGGBB 形式的颜色。"},
    };
    const VRef<SessionConfig> session = Stored(u"SSH2");
    for (const Row& row : rows) {
        Run(*session, [&](HeadlessDialog& dialog) {
            GoTo(dialog, row.page);
            const int control = At(row.setting);
            dialog.Type(control, row.bad);
            kit.ExpectBox(row.refusal, 1);
            dialog.Press(kIdOk);
            EXPECT_FALSE(dialog.IsClosed());
            EXPECT_EQ(dialog.GetFocus(), control);
            kit.ExpectBox(row.refusal, 1);
            dialog.SetFocus(OptionIds::kPages);
            dialog.PressKey(kKeyEnd);
            EXPECT_TRUE(dialog.IsShown(control));
        });
    }
    EXPECT_FALSE(session->IsChanged());
}

TEST_F(SessionOptionsTest, WhatWasStoredBeforeIsNobodysFaultToday) {
    const VRef<SessionConfig> session = Stored(u"SSH2");
    Protocol(*session).SetHostName(u"bad host"_v);
    EXPECT_EQ(Run(*session, [](HeadlessDialog& dialog) { dialog.Press(kIdOk); }), kDialogAccepted);
    EXPECT_EQ(Text(*session, u"Hostname"), u"bad host");
}

TEST_F(SessionOptionsTest, OfSeveralSessionsOnlyTheUsersChangesTravel) {
    WithKey(u"k", [](VProfileKey& key) { key.WriteDword(u"Idle Timeout", 0); });  // corrected when it is read
    const VRef<SessionConfig> first = Load();
    ASSERT_TRUE(first->idleTimeout.IsChanged());
    const VRef<SessionConfig> other = Make(u"Telnet");
    other->idleTimeout.Set(77);
    EXPECT_EQ(Run(
                  *first,
                  [](HeadlessDialog& dialog) {
                      EXPECT_FALSE(dialog.IsEnabled(At(u"")));
                      EXPECT_NE(dialog.GetText(OptionIds::kNote), u"");
                      GoTo(dialog, u"Terminal");
                      dialog.Type(At(u"Rows"), u"50"_v);
                      dialog.Press(kIdOk);
                  },
                  true),
              kDialogAccepted);
    EXPECT_TRUE(first->IsChanged());
    other->CopyChangesFrom(first.Get());
    EXPECT_EQ(other->terminal.rows.Get(), 50);
    EXPECT_EQ(other->idleTimeout.Get(), 77);
    EXPECT_EQ(Text(*other, u"Protocol Name"), u"Telnet");
}

TEST_F(SessionOptionsTest, EverySettingCanBeFoundAndSetByItsType) {
    // The name, its editor, what is entered and what is stored.
    const std::tuple<const char16_t*, int, const char16_t*, const char16_t*> rows[] = {
        {u"Jump Scroll", OptionIds::kSettingChoice, u"否", u"false"},
        {u"Disable Resize", OptionIds::kSettingChoice, u"开", u"on"},
        {u"Cols", OptionIds::kSettingText, u"132", u"132"},
        {u"Keyword Set", OptionIds::kSettingText, u"a; b", u"a; b"},
        {u"Tessaly Bookmarks", OptionIds::kSettingLines, u"/a\n/b", u"/a\n/b"},
        {u"Page Margins", OptionIds::kSettingText, u"1,0.5,1,2", u"1,0.5,1,2"},
        {u"Narrow Font v2", OptionIds::kSettingText, u"-12,0,0,0,400,0,0,0,1,0,0,0,1,90,Mono, A",
         u"-12,0,0,0,400,0,0,0,1,0,0,0,1,90,Mono, A"},
    };
    const VRef<SessionConfig> session = Stored(u"SSH2");
    EXPECT_EQ(Run(*session,
                  [&](HeadlessDialog& dialog) {
                      for (const auto& [name, editor, shown, stored] : rows) {
                          Filter(dialog, name);
                          EXPECT_TRUE(editor == OptionIds::kSettingChoice ? dialog.Pick(editor, shown)
                                                                          : dialog.Type(editor, shown))
                              << Escape(name);
                      }
                      EXPECT_EQ(dialog.GetTree(OptionIds::kSettings)->Read(),
                                " ** Narrow Font v2 = -12,0,0,0,400,0,0,0,1,0,0,0,1,90,Mono, A <\n");
                      dialog.Type(OptionIds::kSettingText, u"12 points"_v);
                      kit.ExpectBox(u"“Narrow Font v2”不接受这个值。"_v, 1);
                      dialog.Press(kIdOk);
                      dialog.Type(OptionIds::kSettingText, std::get<2>(rows[6]));
                      // The labels of the other pages are found as well.
                      Filter(dialog, u"主机名"_v);
                      EXPECT_TRUE(dialog.Type(OptionIds::kSettingText, u"h.example"_v));
                      dialog.Press(kIdOk);
                  }),
              kDialogAccepted);
    for (const auto& [name, editor, shown, stored] : rows) EXPECT_EQ(Text(*session, name), stored) << Escape(name);
    EXPECT_EQ(Text(*session, u"Hostname"), u"h.example");
}

TEST_F(SessionOptionsTest, ASecretIsNeverShownAndCanBeSetAndForgotten) {
    const VRef<SessionConfig> session = Stored(u"SSH2");
    session->monitorPassword.SetText(u"hunter2"_v);
    const auto look = [](HeadlessDialog& dialog) {
        Filter(dialog, u"Monitor Password"_v);
        EXPECT_EQ(dialog.GetText(OptionIds::kSettingSecret), u"");
        EXPECT_EQ(dialog.GetTree(OptionIds::kSettings)->Read().find("hunter2"), std::string::npos);
    };
    Run(*session, [&](HeadlessDialog& dialog) {
        look(dialog);
        dialog.Press(kIdOk);
    });
    EXPECT_EQ(session->monitorPassword.GetText(), u"hunter2");
    Run(*session, [&](HeadlessDialog& dialog) {
        look(dialog);
        dialog.Type(OptionIds::kSettingSecret, u"new one"_v);
        dialog.Press(kIdOk);
    });
    EXPECT_EQ(session->monitorPassword.GetText(), u"new one");
    EXPECT_TRUE(session->monitorPassword.GetText().IsSensitive());
    Run(*session, [&](HeadlessDialog& dialog) {
        look(dialog);
        dialog.Press(OptionIds::kForget);
        dialog.Press(kIdOk);
    });
    EXPECT_EQ(session->monitorPassword.GetText(), u"");
    Run(*session, [&](HeadlessDialog& dialog) {
        Filter(dialog, u"Login Script V2"_v);
        dialog.Type(OptionIds::kSettingSecret, u"hello"_v);
        kit.ExpectBox(u"“Login Script V2”不接受这个值。"_v, kAnswerOk);
        dialog.Press(kIdOk);
        dialog.Press(kIdCancel);
    });
}

TEST_F(SessionOptionsTest, TheNameOfANewSessionMustBeFreeInItsFolder) {
    AddFolderEntry(u"", u"Servers", u"", false);
    AddFolderEntry(u"Servers", u"web", u"", false);
    const VRef<ISessionConfig> session = OpenSession(u"Default"_v);
    session->SetPath(u"Servers"_v);
    session->SetName(u"New"_v);
    EXPECT_EQ(Run(
                  *session,
                  [&](HeadlessDialog& dialog) {
                      dialog.Type(At(u""), u"WEB"_v);
                      kit.ExpectBox(u"名称“WEB”已经存在。"_v, 1);
                      dialog.Press(kIdOk);
                      dialog.Type(At(u""), u" mail "_v);
                      dialog.Press(kIdOk);
                  },
                  false, true),
              kDialogAccepted);
    EXPECT_EQ(session->GetName(), u"mail");
}

TEST_F(SessionOptionsTest, TheConnectDialogStoresWhatTheyChanged) {
    FetchGlobalConfig()->useNewSessionWizard.Set(false);
    const auto expectOptions = [&](const VUnicodeString& name, const VUnicodeString& host) {
        kit.ExpectDialog(OptionIds::kDialog, [=](HeadlessDialog& dialog) {
            EXPECT_TRUE(dialog.Type(At(u""), name));
            EXPECT_TRUE(dialog.Type(At(u"Hostname"), host));
            dialog.Press(kIdOk);
        });
    };
    kit.ExpectDialog(ConnectDialogIds::kDialog, [&](HeadlessDialog& connect) {
        expectOptions(u"db"_v, u"db.example"_v);
        connect.Choose(ConnectCommands::kNewSession);
        expectOptions(u"db-2"_v, u"db2.example"_v);
        connect.Choose(ConnectCommands::kProperties);
    });
    ConnectDialog(u"连接"_v, {}, nullptr).DoModal();
    EXPECT_FALSE(SessionKeyExists(u"db"_v));
    const VRef<ISessionConfig> session = OpenSession(u"db-2"_v);
    ASSERT_TRUE(session);
    EXPECT_EQ(Text(*session, u"Hostname"), u"db2.example");
}

TEST_F(SessionOptionsTest, AFirewallComesWithItsName) {
    WithKey(u"Firewalls\\hop", [](VProfileKey& key) {
        key.WriteString(u"Firewall Type", u"SOCKSv5_USERPASS");
        key.WriteString(u"Firewall Address", u"10.0.0.1");
    });
    const VRef<SessionConfig> session = Stored(u"SSH2");
    Run(*session, [](HeadlessDialog& dialog) {
        EXPECT_TRUE(dialog.Pick(At(u"Firewall Name"), u"hop"_v));
        dialog.Press(kIdOk);
    });
    const auto firewall = VRef<IFirewallUI>::Adopt(Protocol(*session).GetRemoteHost().GetFirewall());
    ASSERT_TRUE(firewall);
    VUnicodeString address;
    firewall->GetAddress(address);
    EXPECT_EQ(address, u"10.0.0.1");
}

}  // namespace
}  // namespace connectdialog::test
