#include "screenshots.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <cctype>
#include <iostream>

#include "config/protocolchoice.h"
#include "connectdialog/findsessiondialog.h"
#include "connectdialog/multiconnectwarningdialog.h"
#include "connectdialog/shortcutnamedialog.h"
#include "connectdialog/ui/connectdialog.h"
#include "foundation/vunicodestringi.h"
#include "frame/configfolderdialog.h"
#include "hosts/common/mainwindow.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"
#include "keymap/keynames.h"
#include "platform/codepage.h"
#include "qtuser.h"
#include "quickconnect/hostnameprompt.h"
#include "quickconnect/quickconnect.h"
#include "resources/accelerators.h"
#include "resources/dialogids.h"
#include "resources/storenames.h"
#include "sessiondb/sessiontree.h"
#include "suite/buttonbar/buttonbardialog.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/dialogkit/qt/qtframewindow.h"
#include "suite/protocols/pages.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "suite/sessionoptions/sessionoptionsdialog.h"
#include "support/suitetest.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog::test {

namespace {

struct Picture {
    std::string name;
    int templateId;
    std::function<void()> show;
    QtPlayedKit::DialogScript prepare = {};
};

/// Over the reference suite and a store with what a user could have in it.
class Photographer : public SuiteTest {
  public:
    explicit Photographer(const QString& folder) : folder(folder) {
        session->SetTransferProtocolName(u"SFTP"_v);
        Protocol(*session).SetHostName(u"db-01.example.org"_v);
        session->description.SetText(u"生产数据库\n机柜 7"_v);
        for (const char16_t* name : {u"生产服务器", u"Laboratory", u"归档"}) AddFolderEntry(u"", name, u"", false);
        for (const auto& [parent, name] : {std::pair{u"生产服务器", u"web-01"},
                                           {u"生产服务器", u"数据库 (主)"},
                                           {u"Laboratory", u"pi"},
                                           {u"", u"家用路由器"}})
            StoreSessionEntry(parent, name, *session, u"", false);
        session->SetName(u"数据库 (主)"_v);
        FetchGlobalConfig()->lastSessionPath.Set(u"生产服务器\\web-01"_v);
    }

    bool TakeAll() {
        StoreButtons();
        for (const Picture& picture : ListDialogs()) Take(picture);
        for (const OptionPage& page : GetOptionPages())
            Take({FileName("options-", page.path), OptionIds::kDialog, [&] { ShowOptions(page.path); }});
        TakeMainWindow();
        kit.ExpectBox(u"确定删除选中项？"_v, 0);
        kit.BeforeBox([&](QWidget& box) { Save(box, "box"); });
        VMessageBox(nullptr, u"确定删除选中项？"_v, kBoxYesNo | kBoxWarning);
        TakeWizardOfBoth();
        for (const ProtocolSide side : kProtocolSides) TakeProtocols(side);
        faults += kit.TakeFaults();
        std::cerr << faults;
        return faults.empty();
    }

  private:
    std::vector<Picture> ListDialogs() {
        const auto connect = [] { ConnectDialog(u"连接"_v, {}, nullptr).DoModal(); };
        const auto openMenu = [this](QtUserDialog& shown) {
            kit.ExpectMenu([this](const VPopupMenu&) {
                Save(*QApplication::activePopupWidget(), "menu");
                return 0;
            });
            shown.PressKey(kKeyMenu);
        };
        return {
            {"find", FindSessionIds::kDialog, [] { FindSessionDialog({u"web"_v}, nullptr).DoModal(); }},
            {"shortcut", ShortcutNameIds::kDialog,
             [] { ShortcutNameDialog(u"生产服务器\\web-01"_v, false, nullptr).DoModal(); }},
            {"warning", MultiConnectIds::kDialog,
             [this] { MultiConnectWarningDialog(isAnswerKept, nullptr).DoModal(); }},
            {"hostname", HostnamePromptIds::kDialog, [] { HostnamePromptDialog(u"数据库 (主)"_v, nullptr).DoModal(); }},
            {"firewall-password", FirewallPromptIds::kPasswordDialog,
             [this] { LaunchFirewallPasswordDialog(&answer, isAnswerKept, nullptr); },
             [](QtUserDialog& shown) { shown.Type(FirewallPromptIds::kAnswer, u"secret"_v); }},
            {"reminder", OptionalBoxIds::kDialog,
             [] {
                 VProfile<int> suppress;
                 ShowOptionalMessageBox(nullptr, u"要查看是否有新版本吗?"_v, u"不再提醒(&D)"_v, suppress, u"是"_v, true,
                                        2, 0);
             }},
            {"connect", ConnectDialogIds::kDialog, connect},
            {"connect-again", ConnectDialogIds::kDialog, connect, openMenu},
            {"rename", ConnectDialogIds::kDialog, connect, [](QtUserDialog& shown) { shown.PressKey(kKeyF2); }},
            {"buttons", ButtonBarIds::kDialog, EditButtons, [](QtUserDialog& shown) { shown.PressKey(kKeyDown); }},
            {"folder", ConfigFolderIds::kDialog,
             [] { ConfigFolderDialog(u"\\home\\wang\\.local\\share"_v, nullptr, nullptr).DoModal(); }},
            {"options-all-secret", OptionIds::kDialog, [this] { ShowOptions(u"All Settings"); },
             [](QtUserDialog& shown) { shown.Type(OptionIds::kFilter, u"Monitor Password"_v); }},
        };
    }
    void ShowOptions(std::u16string_view page) {
        SessionOptionsDialog(*session, VUnicodeString(page), false, false, nullptr).DoModal();
    }
    /// Quick connect and the wizard with the page of each protocol of the side.
    void TakeProtocols(ProtocolSide side) {
        const bool isTransfer = side == ProtocolSide::kTransfer;
        InstallReferenceSuite(isTransfer ? u"Tessaly" : u"NorHalden", *factory);
        for (const ProtocolPage& page : GetProtocolPages()) {
            if (page.side != side) continue;
            kit.ExpectDialog(QuickConnectIds::kDialog, [&](QtUserDialog& shown) {
                if (shown.GetText(QuickConnectIds::kProtocol) != page.protocol) {
                    shown.Pick(QuickConnectIds::kProtocol, VUnicodeString(page.protocol));
                    shown.PressKey(kKeyTab);
                }
                Photograph(shown, FileName("quick-", page.protocol));
            });
            ISessionConfig* none = nullptr;
            ShowQuickConnectDialog(&none, VUnicodeString(), isTransfer ? 6 : 3, nullptr);
            CleanupQuickConnectDialog();
            WalkWizard(page);
        }
    }
    /// Each page on the way of the protocol.
    void WalkWizard(const ProtocolPage& protocol) {
        RunWizard([&](QtUserDialog& sheet) {
            while (true) {
                QtUserDialog& page = *sheet.GetPage();
                const int id = page.GetTemplateId();
                page.Pick(WizardIds::kProtocol, VUnicodeString(protocol.protocol));
                if (id == protocol.dialog.id) page.Type(kFirstPageField, u"db-01.example.org"_v);
                Photograph(sheet, FileName("wizard-", protocol.protocol) + '-' + std::to_string(id));
                if (id == WizardIds::kFinishPage || !sheet.Press(WizardIds::kNext)) break;
            }
        });
    }
    /// What an installation with both applications shows.
    void TakeWizardOfBoth() {
        const BothInstalled both;
        RunWizard([&](QtUserDialog& sheet) {
            Photograph(sheet, "wizard-terminal");
            sheet.Press(WizardIds::kNext);
            sheet.Press(WizardIds::kNext);
            Photograph(sheet, "wizard-transfer");
        });
    }
    void RunWizard(const QtPlayedKit::DialogScript& script) {
        kit.ExpectDialog(WizardIds::kSheet, script);
        const auto made = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
        std::int64_t result = 0;
        bool usesWizard = false;
        LaunchNewSessionWizard(*made, nullptr, result, usesWizard);
    }
    static std::string FileName(const char* kind, std::u16string_view text) {
        std::string name = kind + platform::ToNarrow(text);
        for (char& character : name)
            character = std::isalnum(static_cast<unsigned char>(character)) != 0
                            ? static_cast<char>(std::tolower(character))
                            : '-';
        return name;
    }

    static void StoreButtons() {
        UserButtonBar bar;
        bar.Load(VUnicodeString(kDefaultButtonBar));
        for (const auto& [function, text] : {std::pair{u"MENU_CONNECT", u"连接"},
                                             {u"MENU_RECONNECT", u"再次\r\n打开"},
                                             {u"MENU_FIND", u"查找 & 打开"}}) {
            UserButton button;
            button.function = GetKeyFunctionID(function);
            button.text = text;
            bar.Insert(bar.GetCount(), button);
        }
        bar.Save();
    }
    static void EditButtons() {
        UserButtonBar bar;
        bar.Load(VUnicodeString(kDefaultButtonBar));
        ButtonBarDialog(bar, nullptr).DoModal();
    }

    void TakeMainWindow() {
        const hosts::HostRun run{hosts::kNorHalden, "memory:", true};
        hosts::MainWindow window(run);
        window.Create(nullptr);
        window.Run([&] {
            auto& shown = dynamic_cast<QtFrameWindow&>(window.GetWindow());
            const FrameRow rows[] = {{{u"web-01"_v, u"SSH2"_v, u"web-01.example.org"_v, u"已打开"_v}},
                                     {{u"数据库 (主)"_v, u"SSH2"_v, u"db-01.example.org"_v, u"已结束（退出代码 7）"_v}},
                                     {{u"家用路由器"_v, u"Telnet"_v, u"192.168.1.1"_v, u"正在启动"_v}}};
            shown.SetRows(rows);
            QTest::qWait(50);
            Save(shown.GetWidget(), "main");
            shown.SetRows({});
            window.Exit();
        });
    }

    void Take(const Picture& picture) {
        kit.ExpectDialog(picture.templateId, [&](QtUserDialog& shown) {
            if (picture.prepare) picture.prepare(shown);
            Photograph(shown, picture.name);
        });
        picture.show();
    }
    void Photograph(QtUserDialog& shown, const std::string& name) {
        shown.Elapse(50);
        Save(shown.GetFrame(), name);
    }
    void Save(QWidget& widget, const std::string& name) {
        const QString path = QStringLiteral("%1/%2.png").arg(folder, QString::fromStdString(name));
        if (!widget.grab().save(path)) faults.append("cannot save ").append(path.toStdString()) += '\n';
    }
    void TestBody() override {}

    QtPlayedKit kit;
    QString folder;
    VRef<SessionConfig> session = Make(u"SSH2");
    VUnicodeStringI answer;
    bool isAnswerKept = false;
    std::string faults;
};

}  // namespace

bool TakeScreenshots(const QString& folder) {
    return Photographer(folder).TakeAll();
}

void GoDark() {
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x21, 0x25));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xb8));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8f, 0x94));  // as dark desktops have it
    QApplication::setPalette(palette);
}

}  // namespace connectdialog::test
