#include "suite/dialogkit/headless/headlessframe.h"

#include <algorithm>
#include <utility>

#include "suite/dialogkit/headless/headlesskit.h"

namespace connectdialog {

namespace {

const VToolbarState::Button* FindButton(const VToolbarState& toolbar, int command) {
    const auto buttons = toolbar.GetButtons();
    const auto found = std::ranges::find(buttons, command, &VToolbarState::Button::command);
    return command != 0 && found != buttons.end() ? &*found : nullptr;
}

}  // namespace

bool HeadlessFrame::Choose(int command) {
    const VPopupMenu::Entry* entry = menuBar.Find(command);
    if (isClosed || entry == nullptr || !entry->isEnabled) return false;
    events.OnFrameCommand(command);
    return true;
}

bool HeadlessFrame::Press(int command) {
    const bool isThere = std::ranges::any_of(toolbars, [&](const auto& bar) {
        const VToolbarState::Button* button = FindButton(bar.second, command);
        return button != nullptr && button->isEnabled;
    });
    if (isClosed || !isThere) return false;
    events.OnFrameCommand(command);
    return true;
}

bool HeadlessFrame::PressKey(std::uint16_t key, KeyModifiers modifiers) {
    if (isClosed) return false;
    for (const Accelerator& row : accelerators) {
        if (row.key != key || row.modifiers != modifiers) continue;
        events.OnFrameCommand(row.command);
        return true;
    }
    return key == kKeyReturn && modifiers == 0 && !selected.empty() && Activate(selected.front());
}

bool HeadlessFrame::Select(const std::vector<std::size_t>& chosen) {
    const bool areThere = std::ranges::all_of(chosen, [&](std::size_t row) { return row < rows.size(); });
    if (isClosed || !areThere) return false;
    if (std::exchange(selected, chosen) != chosen) events.OnSelectionChanged();
    return true;
}

bool HeadlessFrame::Activate(std::size_t row) {
    if (!Select({row})) return false;
    events.OnRowActivated(row);
    return true;
}

bool HeadlessFrame::AskListMenu() {
    if (isClosed) return false;
    events.OnListMenu({});
    return true;
}

bool HeadlessFrame::Move(const VRectangle& inside) {
    if (isClosed) return false;
    placement.normal = inside;
    return true;
}

bool HeadlessFrame::CloseByFrame() {
    if (isClosed || !events.OnFrameClose()) return false;
    isClosed = true;
    return true;
}

void HeadlessFrame::Run() {
    TellWake();
    if (!isClosed) kit.Play(*this);
}

void HeadlessFrame::Wake() {
    const std::scoped_lock lock(guard);
    isWoken = true;
    woken.notify_all();
}

bool HeadlessFrame::AwaitWake(std::chrono::milliseconds patience) {
    {
        std::unique_lock lock(guard);
        if (!woken.wait_for(lock, patience, [this] { return isWoken; })) return false;
    }
    TellWake();
    return true;
}

void HeadlessFrame::TellWake() {
    {
        const std::scoped_lock lock(guard);
        if (!std::exchange(isWoken, false)) return;
    }
    if (!isClosed) events.OnFrameWoken();
}

void HeadlessFrame::SetRows(std::span<const FrameRow> shown) {
    rows.assign(shown.begin(), shown.end());
    std::erase_if(selected, [&](std::size_t row) { return row >= rows.size(); });
}

}  // namespace connectdialog
