// The size of the connect dialog's window, and where its controls stand in it.
#include <algorithm>
#include <cstdlib>

#include "connectdialog/ui/connectdialog.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "platform/codepage.h"
#include "resources/dialogids.h"

namespace connectdialog {

namespace {

constexpr std::int32_t kLeastHeight = 125;
constexpr DialogRectangle kFirstSize{0, 0, 250, 215};
constexpr DialogRectangle kRoomBetweenButtons{0, 0, 16, 0};
constexpr std::int32_t kGapUnderToolbar = 2;
constexpr int kDefaultPoints = 10;
constexpr std::size_t kLongestFontName = 32;

/// What a control does when the window grows. Widening goes before moving.
enum AnchorFlag : std::uint8_t { kMovesRight = 1, kMovesDown = 2, kWidens = 4, kHeightens = 8 };

struct Anchor {
    int control;
    std::uint8_t flags;
};

/// Those of the toolbar stand apart: its number depends on the host.
constexpr std::uint8_t kToolbarFlags = kMovesRight | kWidens;
constexpr Anchor kAnchors[] = {
    {ConnectDialogIds::kSeparator, kWidens},
    {ConnectDialogIds::kTree, kWidens | kHeightens},
    {ConnectDialogIds::kShowOnStartup, kMovesDown},
    {ConnectDialogIds::kOpenInTab, kMovesRight | kMovesDown},
    {ConnectDialogIds::kConnect, kMovesRight | kMovesDown},
    {kIdCancel, kMovesRight | kMovesDown},
};

void Follow(IDialogWindow& window, const Anchor& anchor, std::int32_t wider, std::int32_t higher) {
    VRectangle place = window.GetRectangle(anchor.control);
    if ((anchor.flags & (kWidens | kMovesRight)) != 0) place.right += wider;
    if ((anchor.flags & kMovesRight) != 0 && (anchor.flags & kWidens) == 0) place.left += wider;
    if ((anchor.flags & (kHeightens | kMovesDown)) != 0) place.bottom += higher;
    if ((anchor.flags & kMovesDown) != 0 && (anchor.flags & kHeightens) == 0) place.top += higher;
    window.SetRectangle(anchor.control, place);
}

}  // namespace

void ConnectDialog::OnSize(std::int32_t width, std::int32_t height) {
    const std::int32_t wider = width - lastWidth;
    const std::int32_t higher = height - lastHeight;
    const bool isFirst = lastWidth == 0;
    lastWidth = width;
    lastHeight = height;
    if (isFirst) return;
    Follow(*GetWindow(), {toolbar.GetId(), kToolbarFlags}, wider, higher);
    for (const Anchor& anchor : kAnchors) Follow(*GetWindow(), anchor, wider, higher);
}

/// Only the size is that of the last time; where the window stands is the desktop's choice.
void ConnectDialog::InitSize() {
    IDialogWindow& window = *GetWindow();
    const VRectangle inside = window.GetInside();
    const std::int32_t underToolbar = window.GetRectangle(toolbar.GetId()).bottom + kGapUnderToolbar;
    window.SetRectangle(ConnectDialogIds::kSeparator, {0, underToolbar, inside.right, underToolbar + 1});
    OnSize(inside.right, inside.bottom);

    std::int32_t leastWidth = window.ToPixels(kRoomBetweenButtons).right;
    for (const int id : {ConnectDialogIds::kShowOnStartup, ConnectDialogIds::kConnect, kIdCancel}) {
        const VRectangle place = window.GetRectangle(id);
        leastWidth += place.right - place.left;
    }
    leastWidth = std::max(leastWidth, toolbar.GetMinBarWidth());
    window.LetResize(leastWidth, kLeastHeight);

    const VRectangle last = FetchGlobalConfig()->connectDialogPlacement.Get().normal;
    const std::int64_t width = std::int64_t{last.right} - last.left;
    const std::int64_t height = std::int64_t{last.bottom} - last.top;
    const VRectangle first = window.ToPixels(kFirstSize);
    const bool isKnown = width > 0 && height > 0;
    constexpr std::int64_t kLargest = INT16_MAX;  // what is stored may be anything
    window.SetInside(
        std::max(static_cast<std::int32_t>(std::min(isKnown ? width : first.right, kLargest)), leastWidth),
        std::max(static_cast<std::int32_t>(std::min(isKnown ? height : first.bottom, kLargest)), kLeastHeight));
    const VRectangle now = window.GetInside();
    OnSize(now.right, now.bottom);
}

void ConnectDialog::ApplyTreeFont() {
    const VUnicodeString font = FetchGlobalConfig()->sessionTreeFont.Get();
    if (font.IsEmpty()) return;
    const std::size_t comma = std::min(font.FindChar(u','), font.GetLength());
    const std::string size = platform::ToNarrow(font.View().substr(std::min(comma + 1, font.GetLength())));
    const long points = size.empty() ? kDefaultPoints : std::strtol(size.c_str(), nullptr, 10);
    GetWindow()->SetFont(ConnectDialogIds::kTree, font.Left(std::min(comma, kLongestFontName)),
                         static_cast<int>(std::clamp(points, 0L, 200L)));
}

}  // namespace connectdialog
