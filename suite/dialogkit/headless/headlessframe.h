// A main window that nobody sees: what a user would read there, and what a user can do.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <map>
#include <mutex>
#include <vector>

#include "imports/dialogkit/idialogwindow.h"
#include "imports/dialogkit/iframewindow.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "resources/accelerators.h"

namespace connectdialog {

class HeadlessDialogKit;

class HeadlessFrame : public IFrameWindow {
  public:
    HeadlessFrame(HeadlessDialogKit& kit, IFrameEvents& events) : kit(kit), events(events) {}

    // What the user does. Each is false, and nothing happens, when the user could not do it: what is meant is not there
    // or disabled, or the window is closed.

    /// An entry of the menu bar.
    bool Choose(int command);
    /// A button of a bar.
    bool Press(int command);
    /// An accelerator, else Return on the first of the selected rows.
    bool PressKey(std::uint16_t key, KeyModifiers modifiers = 0);
    /// In rising order.
    bool Select(const std::vector<std::size_t>& chosen);
    bool Activate(std::size_t row);
    /// The menu of the list; see ExpectMenu.
    bool AskListMenu();
    bool Move(const VRectangle& inside);
    bool CloseByFrame();

    /// Waits until Wake was called, and lets it be told. False when that took too long.
    bool AwaitWake(std::chrono::milliseconds patience);

    // What the user sees.

    bool IsClosed() const { return isClosed; }
    const VUnicodeString& GetTitle() const { return title; }
    const VUnicodeString& GetStatus() const { return status; }
    const VPopupMenu& GetMenuBar() const { return menuBar; }
    /// One that was never set has no buttons.
    const VToolbarState& GetToolbar(int bar) { return toolbars[bar]; }
    const std::vector<VUnicodeString>& GetColumns() const { return columns; }
    const std::vector<FrameRow>& GetRows() const { return rows; }

    // IFrameWindow.
    void Run() override;
    void Close() override { isClosed = true; }
    void Wake() override;
    void SetTitle(const VUnicodeString& text) override { title = text; }
    void SetIcon(const VIcon&) override {}
    void SetMenuBar(const VPopupMenu& menu) override { menuBar = menu; }
    void SetToolbar(int bar, const VToolbarState& toolbar) override { toolbars[bar] = toolbar; }
    void SetAccelerators(std::span<const Accelerator> table) override {
        accelerators.assign(table.begin(), table.end());
    }
    void SetColumns(std::span<const VUnicodeString> headings) override {
        columns.assign(headings.begin(), headings.end());
    }
    void SetRows(std::span<const FrameRow> shown) override;
    std::vector<std::size_t> GetSelectedRows() const override { return selected; }
    void SetStatus(const VUnicodeString& text) override { status = text; }
    VWindowPlacement GetPlacement() const override { return placement; }
    void SetPlacement(const VWindowPlacement& place) override { placement = place; }

  private:
    void TellWake();

    HeadlessDialogKit& kit;
    IFrameEvents& events;
    VUnicodeString title;
    VUnicodeString status;
    VPopupMenu menuBar;
    std::map<int, VToolbarState> toolbars;
    std::vector<Accelerator> accelerators;
    std::vector<VUnicodeString> columns;
    std::vector<FrameRow> rows;
    std::vector<std::size_t> selected;
    VWindowPlacement placement = VWindowPlacement::Unplaced();
    bool isClosed = false;
    std::mutex guard;  ///< of what follows
    std::condition_variable woken;
    bool isWoken = false;
};

}  // namespace connectdialog
