#include "screenshots.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <cctype>
#include <iostream>

#include "connectdialog/findsessiondialog.h"
#include "connectdialog/multiconnectwarningdialog.h"
#include "connectdialog/shortcutnamedialog.h"
#include "foundation/vunicodestringi.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/codepage.h"
#include "qtuser.h"
#include "quickconnect/hostnameprompt.h"
#include "quickconnect/quickconnect.h"
#include "resources/dialogids.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/protocols/pages.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "suite/sessionoptions/sessionoptionsdialog.h"
#include "support/connectdialogtest.h"
#include "support/dialogkitconformance.h"
#include "support/suitetest.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog::test {

namespace {

/// A tree with what a tree can show.
void FillTree(conformance::Notes& dialog) {
    VTreeItems& items = dialog.items;
    const auto add = [&](TreeItem parent, const char16_t* text, bool isFolder) {
        return items.Insert(parent, TreePlace::kLast, TreeItem::kNone, text, isFolder ? 1 : 2, isFolder ? 0 : 2,
                            nullptr);
    };
    const TreeItem root = add(TreeItem::kNone, u"会话", true);
    const TreeItem servers = add(root, u"生产服务器", true);
    const TreeItem web = add(servers, u"web-01", false);
    items.SetState(add(servers, u"数据库 (主)", false), kTreeCut, true);
    items.SetState(add(root, u"Laboratory", true), kTreeForcedExpander, true);
    const TreeItem mark = add(root, u"家用路由器", false);
    add(root, u"a session with a long name that does not fit into the width of the window at all", false);
    for (const TreeItem item : {root, servers}) items.SetState(item, kTreeExpanded, true);
    items.SetState(web, kTreeSelected, true);
    items.SetState(servers, kTreeSelected, true);
    items.SetCaret(web);
    items.SetInsertMark(mark, true);
    dialog.GetWindow()->SetFocus(conformance::kTree);
}

class Photographer {
  public:
    explicit Photographer(const QString& folder) : folder(folder) {}

    /// Takes a picture of the dialog that comes next, after `prepare` played.
    void Expect(int templateId, const std::string& name, const std::function<void(QtUserDialog&)>& prepare = {}) {
        kit.ExpectDialog(templateId, [this, name, prepare](QtUserDialog& shown) {
            if (prepare) prepare(shown);
            Photograph(shown, name);
        });
    }
    /// For a script that takes several pictures of one dialog.
    void Play(int templateId, const QtPlayedKit::DialogScript& script) { kit.ExpectDialog(templateId, script); }
    void Photograph(QtUserDialog& shown, const std::string& name) {
        shown.Elapse(50);
        Save(shown.GetFrame(), name.c_str());
    }
    void Take(VDialog& dialog, int templateId, const std::string& name,
              const std::function<void(QtUserDialog&)>& prepare = {}) {
        Expect(templateId, name, prepare);
        dialog.DoModal();
    }

    void TakeBox(const VUnicodeString& text, unsigned flags, const char* name) {
        kit.ExpectBox(text, 0);
        kit.BeforeBox([&](QWidget& box) { Save(box, name); });
        VMessageBox(nullptr, text, flags);
    }

    /// The menu that a key brings up.
    void TakeMenu(QtUserDialog& dialog, const char* name) {
        kit.ExpectMenu([&, name](const VPopupMenu&) {
            Save(*QApplication::activePopupWidget(), name);
            return 0;
        });
        dialog.PressKey(kKeyMenu);
    }

    bool AreAllTaken() {
        faults += kit.TakeFaults();
        std::cerr << faults;
        return faults.empty();
    }

  private:
    void Save(QWidget& widget, const char* name) {
        const QString path = QStringLiteral("%1/%2.png").arg(folder, QString::fromLatin1(name));
        if (!widget.grab().save(path)) faults.append("cannot save ").append(path.toStdString()) += '\n';
    }

    QtPlayedKit kit;
    QString folder;
    std::string faults;
};

/// A store with what a user could have in it.
class ConnectWorld : public ConnectDialogTest {
  public:
    void Take(Photographer& photographer) {
        AddSessions({u"生产服务器\\web-01", u"生产服务器\\web-02", u"生产服务器\\数据库 (主)", u"Laboratory\\pi",
                     u"Laboratory\\switch", u"家用路由器", u"跳板机"});
        MakeFolder(u"归档");
        panels.global->lastSessionPath.Set(u"生产服务器\\web-01"_v);
        ConnectDialog connect(u"连接"_v, {}, nullptr);
        photographer.Take(connect, ConnectDialogIds::kDialog, "connect");
        ConnectDialog renamed(u"连接"_v, {}, nullptr);
        photographer.Take(renamed, ConnectDialogIds::kDialog, "rename",
                          [](QtUserDialog& shown) { shown.PressKey(kKeyF2); });
        ConnectDialog menued(u"连接"_v, {}, nullptr);
        photographer.Take(menued, ConnectDialogIds::kDialog, "connect-again",
                          [&](QtUserDialog& shown) { photographer.TakeMenu(shown, "menu"); });
    }

  private:
    void TestBody() override {}
};

/// A session of the reference suite, page by page, and the suite's own boxes.
class OptionsWorld : public SuiteTest {
  public:
    void Take(Photographer& photographer) {
        const VRef<SessionConfig> session = Make(u"SSH2");
        session->SetName(u"数据库 (主)"_v);
        session->SetTransferProtocolName(u"SFTP"_v);
        Protocol(*session).SetHostName(u"db-01.example.org"_v);
        session->description.SetText(u"生产数据库\n机柜 7"_v);
        for (const OptionPage& page : GetOptionPages()) {
            std::string name = "options-" + platform::ToNarrow(page.path);
            for (char& character : name)
                character = character == '\\' || character == ' ' ? '-' : static_cast<char>(std::tolower(character));
            SessionOptionsDialog dialog(*session, page.path, false, false, nullptr);
            photographer.Take(dialog, OptionIds::kDialog, name);
        }
        TakeAllSettings(photographer, *session, u"Description", "options-all-lines");
        TakeAllSettings(photographer, *session, u"Monitor Password", "options-all-secret");
        session->SetProtocolName(u"Serial"_v);
        SessionOptionsDialog serial(*session, u"Connection\\Serial"_v, true, false, nullptr);
        photographer.Take(serial, OptionIds::kDialog, "options-several");
        TakePrompts(photographer);
    }

  private:
    static void TakeAllSettings(Photographer& photographer, SessionConfig& session, const char16_t* filter,
                                const char* name) {
        SessionOptionsDialog dialog(session, u"All Settings"_v, false, false, nullptr);
        photographer.Take(dialog, OptionIds::kDialog, name,
                          [&](QtUserDialog& shown) { shown.Type(OptionIds::kFilter, filter); });
    }
    static void TakePrompts(Photographer& photographer) {
        VUnicodeStringI answer;
        bool save = false;
        photographer.Expect(FirewallPromptIds::kUsernameDialog, "firewall-user");
        LaunchFirewallUsernameDialog(&answer, save, nullptr);
        photographer.Expect(FirewallPromptIds::kPasswordDialog, "firewall-password",
                            [](QtUserDialog& shown) { shown.Type(FirewallPromptIds::kAnswer, u"secret"_v); });
        LaunchFirewallPasswordDialog(&answer, save, nullptr);
        VProfile<int> suppress;
        const VUnicodeString several =
            u"你将编辑 12 个会话的设置。\r\n第一个会话的设置将显示在会话属性对话框中。\r\n"
            u"只有改变的设置才会被应用到\r\n所选的 12 个会话。\r\n"_v;
        photographer.Expect(OptionalBoxIds::kDialog, "several");
        ShowOptionalMessageBox(nullptr, several, VUnicodeString(), suppress, u"OK"_v, false, 1, 0);
        photographer.Expect(OptionalBoxIds::kDialog, "reminder");
        ShowOptionalMessageBox(nullptr, u"要查看是否有新版本吗?"_v, u"不再提醒(&D)"_v, suppress, u"是"_v, true, 2, 0);
    }
    void TestBody() override {}
};

/// Quick connect and the new session wizard over the reference suite's pages.
class PagesWorld : public SuiteTest {
  public:
    void Take(Photographer& photographer) {
        for (const auto& [protocol, name] : {std::pair{u"SSH2", "quick-ssh2"}, std::pair{u"Serial", "quick-serial"},
                                             std::pair{u"Local Shell", "quick-local-shell"}})
            TakeQuickConnect(photographer, 3, protocol, name);
        InstallReferenceSuite(u"Tessaly", *factory);
        TakeQuickConnect(photographer, 6, u"SFTP", "quick-sftp");
        InstallReferenceSuite(u"NorHalden", *factory);
        TakeWizard(photographer);
        InstalledPanels panels;
        InstallConfigPanels(&panels);
        TakeWizardOfBoth(photographer);
        InstallReferenceSuite(u"NorHalden", *factory);
    }

  private:
    /// Both applications are there.
    struct InstalledPanels : ReferenceConfigPanels {
        bool IsNorHaldenInstalled() override { return true; }
        bool IsNorHaldenOrHaldenInstalled() override { return true; }
        bool IsTessalyInstalled() override { return true; }
    };

    static void TakeQuickConnect(Photographer& photographer, unsigned kind, const char16_t* protocol,
                                 const char* name) {
        photographer.Expect(QuickConnectIds::kDialog, name, [protocol](QtUserDialog& shown) {
            if (shown.GetText(QuickConnectIds::kProtocol) == protocol) return;
            shown.Pick(QuickConnectIds::kProtocol, protocol);
            shown.PressKey(kKeyTab);
        });
        ISessionConfig* none = nullptr;
        ShowQuickConnectDialog(&none, VUnicodeString(), kind, nullptr);
        CleanupQuickConnectDialog();
    }
    static void RunWizard() {
        const auto session = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
        std::int64_t result = 0;
        bool usesWizard = false;
        LaunchNewSessionWizard(*session, nullptr, result, usesWizard);
    }
    static void TakeWizard(Photographer& photographer) {
        photographer.Play(WizardIds::kSheet, [&](QtUserDialog& sheet) {
            photographer.Photograph(sheet, "wizard-protocol");
            sheet.Press(WizardIds::kNext);
            sheet.GetPage()->Type(kFirstPageField, u"db-01.example.org"_v);
            photographer.Photograph(sheet, "wizard-ssh2");
            sheet.Press(WizardIds::kNext);
            photographer.Photograph(sheet, "wizard-finish");
        });
        RunWizard();
    }
    static void TakeWizardOfBoth(Photographer& photographer) {
        photographer.Play(WizardIds::kSheet, [&](QtUserDialog& sheet) {
            photographer.Photograph(sheet, "wizard-terminal");
            sheet.GetPage()->Pick(WizardIds::kProtocol, u"None"_v);
            sheet.Press(WizardIds::kNext);
            photographer.Photograph(sheet, "wizard-transfer");
        });
        RunWizard();
    }
    void TestBody() override {}
};

}  // namespace

bool TakeScreenshots(const QString& folder) {
    ConnectWorld world;  // before the back end that shows it
    Photographer photographer(folder);
    FindSessionDialog find({u"web"_v}, nullptr);
    photographer.Take(find, FindSessionIds::kDialog, "find");
    ShortcutNameDialog shortcut(u"生产服务器\\web-01"_v, false, nullptr);
    photographer.Take(shortcut, ShortcutNameIds::kDialog, "shortcut");
    bool suppressed = false;
    MultiConnectWarningDialog warning(suppressed, nullptr);
    photographer.Take(warning, MultiConnectIds::kDialog, "warning");
    HostnamePromptDialog prompt(u"数据库 (主)"_v, nullptr);
    photographer.Take(prompt, HostnamePromptIds::kDialog, "hostname");
    photographer.TakeBox(u"确定删除选中项？"_v, kBoxYesNo | kBoxWarning, "box");

    conformance::Notes controls;
    photographer.Take(controls, conformance::kTemplate.id, "tree", [&](QtUserDialog&) { FillTree(controls); });
    world.Take(photographer);
    OptionsWorld().Take(photographer);
    PagesWorld().Take(photographer);
    return photographer.AreAllTaken();
}

void GoDark() {
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x21, 0x25));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xb8));
    QApplication::setPalette(palette);
}

}  // namespace connectdialog::test
