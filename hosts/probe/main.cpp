// A host with a stopwatch and a user: runs norhalden as it is, or with "--host tessaly" in front tessaly, and writes
// one line of figures once the connect dialog was painted.
//
//   hostprobe [--folder NAME] [ARGUMENTS OF NORHALDEN]
//   hostprobe --keys "KEY KEY ..." [ARGUMENTS OF NORHALDEN]
//   hostprobe --picture FILE [ARGUMENTS OF NORHALDEN]
//   hostprobe --make URL FOLDERS SESSIONS WIDE
//
// The second form measures nothing and presses the keys, one after the other, in whatever window is there; after the
// last one windows are closed. The third saves a picture of the dialog instead. The last makes a store with so many
// folders of so many whole sessions, and one called "wide".
//
// STARTED, in the environment, is when the process was started: nanoseconds since 1970. With --folder that folder of
// the root is opened, walked and scrolled too. Then the dialog is closed. The line has, in milliseconds, `start` (to
// the end of the first paint), `expand` (from the click on the folder's expander to the end of the paint), and for
// `keys`, `type`, `scroll` and `range` (Shift and End) the longest time for which one of them kept the window busy,
// paint included; and `memory`, the most that the process took, in MiB.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPointer>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "config/sessionconfig.h"
#include "hosts/common/hostkind.h"
#include "imports/connectconfig.h"
#include "profile/iprofilestore.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

constexpr int kManyKeys = 200;
constexpr int kManySteps = 200;

std::string measuredFolder;
std::string playedHost;
std::string playedKeys;
std::string pictureFile;

double MillisecondsSinceStart() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return (std::chrono::duration<double, std::nano>(now).count() - qgetenv("STARTED").toDouble()) / 1e6;
}

double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

/// Presses keys; a window that comes up in between gets the next one.
class Player : public QObject {
  public:
    Player(QObject* parent, const QString& keys) : QObject(parent), keys(keys.split(u' ')) { startTimer(kPause); }

  protected:
    void timerEvent(QTimerEvent* event) override {
        // Another one each time: a timer does not run out in an event loop that it began.
        killTimer(event->timerId());
        startTimer(kPause);
        QWidget* window = QApplication::activeModalWidget();
        if (window == nullptr) return;
        window->activateWindow();
        if (keys.isEmpty()) return (void)window->close();
        const QKeyCombination key = QKeySequence(keys.takeFirst())[0];
        const bool isLetter = key.key() < Qt::Key_Escape && key.keyboardModifiers() == Qt::NoModifier;
        const QString text = isLetter ? QString(QChar(key.key())).toLower() : QString();
        QKeyEvent press(QEvent::KeyPress, key.key(), key.keyboardModifiers(), text);
        QKeyEvent release(QEvent::KeyRelease, key.key(), key.keyboardModifiers());
        const QPointer<QWidget> target = window->focusWidget() != nullptr ? window->focusWidget() : window;
        QApplication::sendEvent(target, &press);
        if (target != nullptr) QApplication::sendEvent(target, &release);
    }

  private:
    static constexpr int kPause = 20;
    QStringList keys;
};

class Stopwatch : public QObject {
  public:
    explicit Stopwatch(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isPaint = event->type() == QEvent::Paint;
        tree = isPaint ? dynamic_cast<QtTree*>(watched->parent()) : nullptr;
        if (tree == nullptr || watched != tree->viewport()) return false;
        qApp->removeEventFilter(this);
        startTimer(0);  // when the paint is over
        return false;
    }

    void timerEvent(QTimerEvent* event) override {
        killTimer(event->timerId());
        Measure();
    }

  private:
    void Measure() {
        if (!pictureFile.empty()) {
            Time([&] { Press(Qt::Key_Right); });  // the root, which is selected, opens
            const bool isSaved = tree->window()->grab().save(QString::fromStdString(pictureFile));
            if (!isSaved) std::fprintf(stderr, "cannot save %s\n", pictureFile.c_str());
            tree->window()->close();
            return;
        }
        std::printf("start=%.0f", MillisecondsSinceStart());
        if (!measuredFolder.empty()) MeasureFolder();
        std::printf(" memory=%.0f\n", PeakMemory());
        std::fflush(stdout);
        tree->window()->close();
    }

    double Time(const std::function<void()>& act) {
        QElapsedTimer timer;
        timer.start();
        act();
        QApplication::processEvents();
        tree->viewport()->repaint();
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

    double Longest(int count, const std::function<void(int)>& act) {
        double longest = 0;
        for (int i = 0; i < count; ++i) longest = std::max(longest, Time([&] { act(i); }));
        return longest;
    }

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = QString()) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(tree, &press);
    }

    TreeItem FindFolder() const {
        const VTreeItems& items = *tree->GetItems();
        const TreeItem root = items.GetFirstChild(TreeItem::kNone);
        for (TreeItem item = items.GetFirstChild(root); item != TreeItem::kNone; item = items.GetNextSibling(item))
            if (items.GetText(item) == VUnicodeString(measuredFolder.c_str())) return item;
        return TreeItem::kNone;
    }

    void MeasureFolder() {
        const TreeItem folder = FindFolder();
        if (folder == TreeItem::kNone) return (void)std::printf(" (no folder %s)", measuredFolder.c_str());
        const TreeItem root = tree->GetItems()->GetFirstChild(TreeItem::kNone);
        if (!tree->GetItems()->HasState(root, kTreeExpanded)) Time([&] { tree->ActOn(root, TreePart::kExpander); });
        const double expand = Time([&] { tree->ActOn(folder, TreePart::kExpander); });
        tree->ActOn(folder, TreePart::kLabel);
        const double keys = Longest(kManyKeys, [&](int) { Press(Qt::Key_Down); });
        const QString typed = QStringLiteral("session 9");
        const double type =
            Longest(static_cast<int>(typed.size()), [&](int i) { Press(0, Qt::NoModifier, typed.mid(i, 1)); });
        QScrollBar& bar = *tree->verticalScrollBar();
        const double scroll = Longest(kManySteps, [&](int i) { bar.setValue(bar.maximum() / kManySteps * i); });
        const double range = Time([&] { Press(Qt::Key_End, Qt::ShiftModifier); });
        std::printf(" rows=%d expand=%.1f keys=%.1f type=%.1f scroll=%.1f range=%.1f", tree->GetRows().GetCount(),
                    expand, keys, type, scroll, range);
        // The next run begins like this one.
        tree->ActOn(folder, TreePart::kExpander);
        Press(Qt::Key_Home);
    }

    QtTree* tree = nullptr;
};

bool FillFolder(const VUnicodeString& folder, std::size_t count) {
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    return AddFolderEntry(u"", folder, u"", true) && StoreSessionEntries(folder, *session, count, [&](std::size_t i) {
               VUnicodeString name;
               name.Format(u"session %1!06d!", static_cast<int>(i));
               session->SetPath(JoinEntryPath(folder, name));
               session->GetConnectConfig()->SetHostName(u"host.example.net");
               return true;
           });
}

int MakeStore(const char* url, std::size_t folders, std::size_t sessions, std::size_t wide) {
    VUnicodeString notice;
    const auto store = OpenReferenceStore(u"NorHalden"_v, VUnicodeString(url), notice);
    if (!store) return 1;
    VProfileStore unit(nullptr);
    bool isWhole = unit.JoinUnitOfWork() && FillFolder(u"wide"_v, wide);
    for (std::size_t i = 0; isWhole && i < folders; ++i) {
        VUnicodeString name;
        name.Format(u"f%1!04d!", static_cast<int>(i));
        isWhole = FillFolder(name, sessions);
    }
    isWhole = isWhole && WriteIsExpanded(u""_v, true);
    return unit.Close() && isWhole ? 0 : 1;
}

}  // namespace

}  // namespace connectdialog::hosts

int main(int argc, char** argv) {
    using namespace connectdialog;
    if (argc == 6 && std::strcmp(argv[1], "--make") == 0)
        return hosts::MakeStore(argv[2], std::stoul(argv[3]), std::stoul(argv[4]), std::stoul(argv[5]));
    for (const auto& [option, value] : {std::pair{"--host", &hosts::playedHost},
                                        {"--folder", &hosts::measuredFolder},
                                        {"--keys", &hosts::playedKeys},
                                        {"--picture", &hosts::pictureFile}}) {
        if (argc < 3 || std::strcmp(argv[1], option) != 0) continue;
        *value = argv[2];
        argv += 2;
        argc -= 2;
    }
    qAddPreRoutine([] {
        if (hosts::playedKeys.empty())
            new hosts::Stopwatch(qApp);
        else
            new hosts::Player(qApp, QString::fromStdString(hosts::playedKeys));
    });
    return hosts::RunHost(hosts::playedHost == hosts::kTessaly.program ? hosts::kTessaly : hosts::kNorHalden, argc,
                          argv);
}
