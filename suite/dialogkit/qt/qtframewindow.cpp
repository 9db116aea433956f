#include "suite/dialogkit/qt/qtframewindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QWindow>
#include <algorithm>
#include <chrono>

#include "imports/dialogkit/vtoolbarstate.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtcontrols.h"
#include "suite/dialogkit/qt/qtdialogkit.h"
#include "suite/dialogkit/qt/qtmenus.h"
#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

namespace {

// The inside of a window that was never placed, and the widths of its columns: average characters.
constexpr int kUsualWidth = 90;
constexpr int kUsualHeight = 22;
constexpr int kColumnWidth = 22;
constexpr QSize kLeastSize{200, 120};  // pixels

constexpr std::chrono::milliseconds kMappingPatience{1000};
constexpr std::chrono::milliseconds kMappingPause{10};

/// As much of it as the screen that has most of it can show; of one that no screen has, on the first.
QRect OnScreen(const VRectangle& place) {
    // It may come from another screen, or from anywhere.
    const auto within = [](std::int64_t pixels) {
        return static_cast<int>(std::clamp<std::int64_t>(pixels, 0, QWIDGETSIZE_MAX));
    };
    const QSize size(within(std::int64_t{place.right} - place.left), within(std::int64_t{place.bottom} - place.top));
    const auto shown = [&](const QScreen* screen) {
        const QRect area = screen->availableGeometry();
        const std::int64_t across =
            std::min<std::int64_t>(place.right, area.x() + area.width()) - std::max(place.left, area.x());
        const std::int64_t down =
            std::min<std::int64_t>(place.bottom, area.y() + area.height()) - std::max(place.top, area.y());
        return std::max<std::int64_t>(across, 0) * std::max<std::int64_t>(down, 0);
    };
    const QList<QScreen*> screens = QGuiApplication::screens();
    const QRect area = (*std::ranges::max_element(screens, {}, shown))->availableGeometry();
    QRect inside(QPoint(), size.boundedTo(area.size()).expandedTo(kLeastSize));
    inside.moveLeft(std::max(area.left(), std::min(place.left, area.left() + area.width() - inside.width())));
    inside.moveTop(std::max(area.top(), std::min(place.top, area.top() + area.height() - inside.height())));
    return inside;
}

}  // namespace

class QtFrameWindow::Frame : public QMainWindow {
  public:
    explicit Frame(QtFrameWindow& window) : window(window) {
        setContextMenuPolicy(Qt::NoContextMenu);  // the toolkit's own would hide bars
    }

  protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (window.events.OnFrameClose()) window.Close();
    }

  private:
    QtFrameWindow& window;
};

QtFrameWindow::QtFrameWindow(IFrameEvents& events)
    : events(events),
      frame(std::make_unique<Frame>(*this)),
      list(new QtFrameList(frame.get())),
      status(new QLabel(frame.get())) {
    MakeList();
    status->setTextFormat(Qt::PlainText);
    status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // a long text is cut and not a wide window
    frame->statusBar()->addWidget(status, 1);
    QMenuBar* const bar = frame->menuBar();
    QObject::connect(bar, &QMenuBar::triggered, frame.get(), [this](const QAction* action) {
        if (action->menu() == nullptr) this->events.OnFrameCommand(action->data().toInt());
    });
    const QSizeF unit = AverageCharacter(*frame);
    frame->resize(qRound(unit.width() * kUsualWidth), qRound(unit.height() * kUsualHeight));
}

QtFrameWindow::~QtFrameWindow() = default;

void QtFrameWindow::MakeList() {
    list->setModel(&rows);
    list->activated = [this](int row) { events.OnRowActivated(static_cast<std::size_t>(row)); };
    list->menuWanted = [this](QPoint point) { events.OnListMenu(FromQt(point)); };
    QObject::connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, frame.get(), [this] {
        if (!isSetting) events.OnSelectionChanged();
    });
    frame->setCentralWidget(list);
    list->setFocus();
}

QToolBar* QtFrameWindow::GetBar(int bar) const {
    const auto found = bars.find(bar);
    return found != bars.end() ? found->second : nullptr;
}

void QtFrameWindow::Run() {
    if (isClosed) return;
    untilMapped.setRemainingTime(kMappingPatience);
    frame->show();
    frame->activateWindow();
    loop.exec();
}

void QtFrameWindow::Close() {
    isClosed = true;
    frame->hide();
    loop.quit();
}

void QtFrameWindow::Wake() {
    if (!isWoken.exchange(true))
        QMetaObject::invokeMethod(
            frame.get(), [this] { TellWake(); }, Qt::QueuedConnection);
}

void QtFrameWindow::TellWake() {
    // A dialog that came up earlier would stand anywhere, and below this window.
    isMapped = isMapped || untilMapped.hasExpired() || frame->windowHandle()->isExposed();
    if (!isMapped) return QTimer::singleShot(kMappingPause, frame.get(), [this] { TellWake(); });
    isWoken = false;
    if (!isClosed) events.OnFrameWoken();
}

void QtFrameWindow::SetTitle(const VUnicodeString& title) {
    frame->setWindowTitle(ToQt(title));
    list->setAccessibleName(frame->windowTitle());
}

void QtFrameWindow::SetIcon(const VIcon& icon) {
    if (const auto* shown = dynamic_cast<const QtIcon*>(&icon)) frame->setWindowIcon(shown->GetIcon());
}

void QtFrameWindow::SetMenuBar(const VPopupMenu& menu) {
    ShowMenuBar(*frame->menuBar(), menuBar, menu);
}

void QtFrameWindow::SetToolbar(int number, const VToolbarState& toolbar) {
    QToolBar*& bar = bars[number];
    if (bar == nullptr) {
        bar = MakeToolBar(*frame);
        bar->setMovable(false);
        bar->setObjectName(QStringLiteral("bar%1").arg(number));
        const auto next = bars.upper_bound(number);
        if (next == bars.end()) {
            frame->addToolBarBreak();
            frame->addToolBar(bar);
        } else {
            frame->insertToolBar(next->second, bar);
            frame->insertToolBarBreak(next->second);
        }
    }
    bar->setAccessibleName(frame->windowTitle());
    FillToolBar(*bar, toolbar, *frame, [this](int command) { events.OnFrameCommand(command); });
    bar->setVisible(!toolbar.GetButtons().empty());
}

void QtFrameWindow::SetAccelerators(std::span<const Accelerator> accelerators) {
    // The one whose key led here may still be at work.
    for (QShortcut* shortcut : shortcuts) {
        shortcut->setEnabled(false);
        shortcut->deleteLater();
    }
    shortcuts.clear();
    bool hasMenuKey = false;
    for (const Accelerator& row : accelerators) {
        hasMenuKey = hasMenuKey || (row.key == kKeyF10 && row.modifiers == Accelerator::kNone);
        const int command = row.command;
        for (const QKeySequence& key : KeysOf(row.key, row.modifiers))
            AddShortcut(key, [this, command] { events.OnFrameCommand(command); });
    }
    if (hasMenuKey) return;
    AddShortcut(QKeySequence(Qt::Key_F10), [this] {
        const QList<QAction*> menus = frame->menuBar()->actions();
        if (!menus.isEmpty()) frame->menuBar()->setActiveAction(menus.first());
    });
}

void QtFrameWindow::AddShortcut(const QKeySequence& key, std::function<void()> act) {
    auto* shortcut = new QShortcut(key, frame.get());
    QObject::connect(shortcut, &QShortcut::activated, frame.get(), std::move(act));
    shortcuts.push_back(shortcut);
}

void QtFrameWindow::SetColumns(std::span<const VUnicodeString> headings) {
    rows.SetColumns(headings);
    const int width = qRound(AverageCharacter(*list).width() * kColumnWidth);
    for (int column = 0; column + 1 < rows.columnCount({}); ++column) list->setColumnWidth(column, width);
}

void QtFrameWindow::SetRows(std::span<const FrameRow> shown) {
    const QScopedValueRollback quiet(isSetting, true);
    rows.SetRows(shown);
}

std::vector<std::size_t> QtFrameWindow::GetSelectedRows() const {
    std::vector<std::size_t> selected;
    for (const QModelIndex& index : list->selectionModel()->selectedRows())
        selected.push_back(static_cast<std::size_t>(index.row()));
    std::ranges::sort(selected);
    return selected;
}

void QtFrameWindow::SetStatus(const VUnicodeString& text) {
    status->setText(ToQt(text));
}

VWindowPlacement QtFrameWindow::GetPlacement() const {
    VWindowPlacement placement = VWindowPlacement::Unplaced();
    // A window that was never shown has no other geometry.
    const QRect normal = frame->normalGeometry();
    placement.normal = FromQt(normal.isEmpty() ? frame->geometry() : normal);
    if (frame->isMaximized()) placement.showState = VWindowPlacement::kShowMaximized;
    return placement;
}

void QtFrameWindow::SetPlacement(const VWindowPlacement& placement) {
    const VRectangle& place = placement.normal;
    const bool isPlaced = place.right > place.left && place.bottom > place.top;
    if (isPlaced) frame->setGeometry(OnScreen(place));
    if (placement.showState == VWindowPlacement::kShowMaximized) frame->setWindowState(Qt::WindowMaximized);
}

}  // namespace connectdialog
