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

}  // namespace

bool TakeScreenshots(const QString& folder) {
    SetAppName(u"NorHalden"_v);
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
    VToolbarState bar;
    for (const int command : {2000, 2001, 0, 2008, 0, 2011, 2012, 2013, 0, 2006, 2002, 2014, 0, 2007, 0, 2009, 0, 2010})
        command != 0 ? bar.Add(command, u"连接"_v) : bar.AddSeparator();
    bar.Enable(2013, false);
    photographer.Take(controls, conformance::kTemplate.id, "tree", [&](QtUserDialog&) { FillTree(controls); });
    conformance::Notes barred;
    photographer.Take(barred, conformance::kTemplate.id, "toolbar",
                      [&](QtUserDialog&) { barred.GetWindow()->ShowToolbar(conformance::kBar, bar); });
    return photographer.AreAllTaken();
}

void GoDark() {
    QPalette palette(QColor(0x31, 0x36, 0x3b));
    palette.setColor(QPalette::Base, QColor(0x1e, 0x21, 0x25));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xb8));
    QApplication::setPalette(palette);
}

}  // namespace connectdialog::test
