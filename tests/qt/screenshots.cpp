#include "screenshots.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <iostream>

#include "connectdialog/findsessiondialog.h"
#include "connectdialog/multiconnectwarningdialog.h"
#include "connectdialog/shortcutnamedialog.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "qtuser.h"
#include "quickconnect/hostnameprompt.h"
#include "resources/dialogids.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "support/connectdialogtest.h"
#include "support/dialogkitconformance.h"

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

    /// Shows the dialog, lets `prepare` play and takes the picture.
    void Take(VDialog& dialog, int templateId, const char* name,
              const std::function<void(QtUserDialog&)>& prepare = {}) {
        kit.ExpectDialog(templateId, [&](QtUserDialog& shown) {
            if (prepare) prepare(shown);
            shown.Elapse(50);
            Save(shown.GetFrame(), name);
        });
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
    return photographer.AreAllTaken();
}

void GoDark() {
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x21, 0x25));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xb8));
    QApplication::setPalette(palette);
}

}  // namespace connectdialog::test
