// A main window on the desktop.
#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QMainWindow>
#include <QPointer>
#include <atomic>
#include <map>
#include <memory>
#include <vector>

#include "imports/dialogkit/iframewindow.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "suite/dialogkit/qt/qtframerows.h"

class QLabel;
class QShortcut;
class QToolBar;

namespace connectdialog {

class QtFrameWindow final : public IFrameWindow {
  public:
    /// Requires: `events` outlives it.
    explicit QtFrameWindow(IFrameEvents& events);
    ~QtFrameWindow() override;

    QMainWindow& GetWidget() const { return *frame; }
    QtFrameList& GetList() const { return *list; }
    /// Null where that bar was never set.
    QToolBar* GetBar(int bar) const;

    // IFrameWindow.
    void Run() override;
    void Close() override;
    void Wake() override;
    void SetTitle(const VUnicodeString& title) override;
    void SetIcon(const VIcon& icon) override;
    void SetMenuBar(const VPopupMenu& menu) override;
    void SetToolbar(int bar, const VToolbarState& toolbar) override;
    void SetAccelerators(std::span<const Accelerator> accelerators) override;
    void SetColumns(std::span<const VUnicodeString> headings) override;
    void SetRows(std::span<const FrameRow> shown) override;
    std::vector<std::size_t> GetSelectedRows() const override;
    void SetStatus(const VUnicodeString& text) override;
    VWindowPlacement GetPlacement() const override;
    void SetPlacement(const VWindowPlacement& placement) override;

  private:
    class Frame;

    void MakeList();
    void AddShortcut(const QKeySequence& key, std::function<void()> act);
    void TellWake();

    IFrameEvents& events;
    std::unique_ptr<QMainWindow> frame;
    QtFrameRows rows;
    QtFrameList* list;
    QLabel* status;
    VPopupMenu menuBar;
    std::map<int, QToolBar*> bars;
    std::vector<QShortcut*> shortcuts;
    QEventLoop loop;
    bool isClosed = false;
    bool isSetting = false;  ///< what is selected changes by code
    std::atomic<bool> isWoken = false;
    bool isMapped = false;          ///< the screen shows it
    QDeadlineTimer untilMapped{0};  ///< longer nothing waits for that
};

}  // namespace connectdialog
