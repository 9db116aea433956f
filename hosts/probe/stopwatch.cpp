#include "hosts/probe/stopwatch.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <utility>

#include "hosts/probe/player.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog::hosts {

namespace {

constexpr int kManyKeys = 200;
constexpr int kManySteps = 200;

double MillisecondsSinceStart() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return (std::chrono::duration<double, std::nano>(now).count() - qgetenv("STARTED").toDouble()) / 1e6;
}

bool HasTree(const QDialog& dialog) {
    const QList<QAbstractScrollArea*> areas = dialog.findChildren<QAbstractScrollArea*>();
    return std::any_of(areas.begin(), areas.end(),
                       [](QAbstractScrollArea* area) { return dynamic_cast<QtTree*>(area) != nullptr; });
}

double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

}  // namespace

Stopwatch::Stopwatch(QObject* parent, std::string folder, std::string pictureFile)
    : QObject(parent), folder(std::move(folder)), pictureFile(std::move(pictureFile)) {
    qApp->installEventFilter(this);
}

bool Stopwatch::eventFilter(QObject* watched, QEvent* event) {
    auto* const shown = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (shown != nullptr && !HasTree(*shown)) QApplication::postEvent(shown, new QCloseEvent);
    const bool isPaint = event->type() == QEvent::Paint;
    tree = isPaint ? dynamic_cast<QtTree*>(watched->parent()) : nullptr;
    if (tree == nullptr || watched != tree->viewport()) return false;
    qApp->removeEventFilter(this);
    startTimer(0);  // when the paint is over
    return false;
}

void Stopwatch::timerEvent(QTimerEvent* event) {
    killTimer(event->timerId());
    Measure();
}

void Stopwatch::Measure() {
    if (!pictureFile.empty()) {
        TakePicture();
    } else {
        std::printf("start=%.0f", MillisecondsSinceStart());
        if (!folder.empty()) MeasureFolder();
        std::printf(" memory=%.0f\n", PeakMemory());
        std::fflush(stdout);
    }
    tree->window()->close();
    if (QWidget* window = FindMainWindow()) window->close();
}

void Stopwatch::TakePicture() {
    Time([&] { Press(Qt::Key_Right); });  // the root, which is selected, opens
    const bool isSaved = tree->window()->grab().save(QString::fromStdString(pictureFile));
    if (!isSaved) std::fprintf(stderr, "cannot save %s\n", pictureFile.c_str());
}

double Stopwatch::Time(const std::function<void()>& act) {
    QElapsedTimer timer;
    timer.start();
    act();
    QApplication::processEvents();
    tree->viewport()->repaint();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double Stopwatch::Longest(int count, const std::function<void(int)>& act) {
    double longest = 0;
    for (int i = 0; i < count; ++i) longest = std::max(longest, Time([&] { act(i); }));
    return longest;
}

void Stopwatch::Press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(tree, &press);
}

TreeItem Stopwatch::FindFolder() const {
    const VTreeItems& items = *tree->GetItems();
    const TreeItem root = items.GetFirstChild(TreeItem::kNone);
    for (TreeItem item = items.GetFirstChild(root); item != TreeItem::kNone; item = items.GetNextSibling(item))
        if (items.GetText(item) == VUnicodeString(folder.c_str())) return item;
    return TreeItem::kNone;
}

void Stopwatch::MeasureFolder() {
    const TreeItem item = FindFolder();
    if (item == TreeItem::kNone) return (void)std::printf(" (no folder %s)", folder.c_str());
    const TreeItem root = tree->GetItems()->GetFirstChild(TreeItem::kNone);
    if (!tree->GetItems()->HasState(root, kTreeExpanded)) Time([&] { tree->ActOn(root, TreePart::kExpander); });
    const double expand = Time([&] { tree->ActOn(item, TreePart::kExpander); });
    tree->ActOn(item, TreePart::kLabel);
    const double keys = Longest(kManyKeys, [&](int) { Press(Qt::Key_Down); });
    const QString typed = QStringLiteral("session 9");
    const double type =
        Longest(static_cast<int>(typed.size()), [&](int i) { Press(0, Qt::NoModifier, typed.mid(i, 1)); });
    QScrollBar& bar = *tree->verticalScrollBar();
    const double scroll = Longest(kManySteps, [&](int i) { bar.setValue(bar.maximum() / kManySteps * i); });
    const double range = Time([&] { Press(Qt::Key_End, Qt::ShiftModifier); });
    std::printf(" rows=%d expand=%.1f keys=%.1f type=%.1f scroll=%.1f range=%.1f", tree->GetRows().GetCount(), expand,
                keys, type, scroll, range);
    // The next run begins like this one.
    tree->ActOn(item, TreePart::kExpander);
    Press(Qt::Key_Home);
}

}  // namespace connectdialog::hosts
