#include "hosts/common/hosttray.h"

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <utility>

#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog::hosts {

namespace {

using Kind = TrayEntry::Kind;

/// Has no entries before it is opened for the first time.
class TrayMenu : public QMenu {
  public:
    /// Of the entry, or of the icon itself where there is none.
    TrayMenu(ITrayEvents& events, const TrayEntry* opened, QWidget* parent)
        : QMenu(parent), events(events), isRoot(opened == nullptr) {
        if (opened != nullptr) entry = *opened;
        connect(this, &QMenu::aboutToShow, this, &TrayMenu::Fill);
    }

    void Fill() {
        std::vector<TrayEntry> found = events.ListMenu(isRoot ? nullptr : &entry);
        // A desktop may ask while the menu shows, which must not change under the user's hand without need.
        if (found == entries) return;
        entries = std::move(found);
        clear();
        qDeleteAll(findChildren<QMenu*>(Qt::FindDirectChildrenOnly));
        for (const TrayEntry& child : entries) Add(child);
    }

  private:
    void Add(const TrayEntry& child) {
        const QString label = ToQt(child.label);
        if (child.kind == Kind::kSeparator) return (void)addSeparator();
        if (child.kind == Kind::kMenu) {
            auto* const menu = new TrayMenu(events, &child, this);
            menu->setTitle(label);
            return (void)addMenu(menu);
        }
        QAction* const action = addAction(label);
        action->setEnabled(child.kind != Kind::kNote);
        // Later: what is chosen may change or end the menu.
        connect(
            action, &QAction::triggered, qApp, [&events = events, child] { events.OnChosen(child); },
            Qt::QueuedConnection);
    }

    ITrayEvents& events;
    bool isRoot;
    TrayEntry entry;
    std::vector<TrayEntry> entries;
};

class QtHostTray : public HostTray {
  public:
    QtHostTray(const HostKind& kind, ITrayEvents& events)
        : menu(events, nullptr, nullptr), icon(QApplication::windowIcon()) {
        // Some desktops take the entries over before they tell that the menu opens.
        menu.Fill();
        icon.setContextMenu(&menu);
        icon.setToolTip(QString::fromUtf16(kind.appName));
        QObject::connect(&icon, &QSystemTrayIcon::activated, qApp, [&events](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger) events.OnIconClicked();
        });
        icon.show();
    }

    void Run() override {
        if (!isClosed) QApplication::exec();
    }
    void Close() override {
        QApplication::closeAllWindows();
        if (QApplication::activeModalWidget() != nullptr) return;
        isClosed = true;
        QApplication::exit();
    }
    void ShowDialog() override {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) return;
        if (dialog->isMinimized()) dialog->showNormal();
        dialog->raise();
        dialog->activateWindow();
    }

  private:
    bool isClosed = false;  ///< perhaps in a dialog before Run
    TrayMenu menu;
    QSystemTrayIcon icon;
};

}  // namespace

bool HasTray(VUnicodeString& fault) {
    if (QSystemTrayIcon::isSystemTrayAvailable()) return true;
    fault = u"this desktop has no tray to show an icon in"_v;
    return false;
}

std::unique_ptr<HostTray> OpenHostTray(const HostKind& kind, ITrayEvents& events) {
    return std::make_unique<QtHostTray>(kind, events);
}

}  // namespace connectdialog::hosts
