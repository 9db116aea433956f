#include "suite/dialogkit/headless/headlesskit.h"

#include "platform/codepage.h"
#include "resources/dialogtemplate.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlessframe.h"

namespace connectdialog {

namespace {

constexpr unsigned kButtonsOfBox = 15;

int HarmlessAnswer(unsigned flags) {
    switch (flags & kButtonsOfBox) {
        case kBoxOkCancel:
            return kAnswerCancel;
        case kBoxYesNo:
            return kAnswerNo;
        default:
            return kAnswerOk;
    }
}

}  // namespace

HeadlessDialogKit::HeadlessDialogKit() {
    InstallDialogKit(this);
}

HeadlessDialogKit::~HeadlessDialogKit() {
    if (GetDialogKit() == this) InstallDialogKit(nullptr);
}

void HeadlessDialogKit::ExpectDialog(int templateId, DialogScript script) {
    expected.push_back({Kind::kDialog, templateId, {}, false, std::move(script), {}});
}
void HeadlessDialogKit::ExpectBox(const VUnicodeString& text, int answer) {
    expected.push_back({Kind::kBox, answer, text, false, {}, {}});
}
void HeadlessDialogKit::ExpectFolder(const char16_t* path) {
    expected.push_back({Kind::kFolder, 0, path, path == nullptr, {}, {}});
}
void HeadlessDialogKit::ExpectMenu(MenuChoice choice) {
    expected.push_back({Kind::kMenu, 0, {}, false, {}, std::move(choice)});
}

std::string HeadlessDialogKit::TakeFaults() {
    for (const Expectation& left : expected) {
        const char* const kKinds[] = {"dialog", "box", "folder question", "menu"};
        faults.append("did not come: ").append(kKinds[static_cast<int>(left.kind)]);
        if (left.kind == Kind::kDialog) faults.append(" ").append(std::to_string(left.number));
        faults.append(" ").append(platform::ToNarrow(left.text)).append("\n");
    }
    expected.clear();
    return std::exchange(faults, {});
}

template <class Fits>
bool HeadlessDialogKit::Take(Kind kind, const std::string& what, Expectation& taken, Fits fits) {
    if (expected.empty() || expected.front().kind != kind || !fits(expected.front())) {
        faults.append("unexpected: ").append(what).append("\n");
        return false;
    }
    taken = std::move(expected.front());
    expected.pop_front();
    return true;
}

std::unique_ptr<IDialogWindow> HeadlessDialogKit::CreateDialogWindow(const DialogTemplate& dialog,
                                                                     IDialogEvents& events, VWindow*) {
    return std::make_unique<HeadlessDialog>(*this, dialog, events);
}

void HeadlessDialogKit::Play(HeadlessDialog& dialog) {
    Expectation taken;
    const auto fits = [&](const Expectation& next) { return next.number == dialog.GetTemplateId(); };
    if (Take(Kind::kDialog, "dialog " + std::to_string(dialog.GetTemplateId()), taken, fits)) taken.script(dialog);
    if (!dialog.IsClosed()) dialog.CloseByFrame();
}

int HeadlessDialogKit::ShowMessageBox(VWindow*, const VUnicodeString& title, const VUnicodeString& text,
                                      unsigned flags) {
    boxes.push_back({title, text, flags});
    const auto fits = [&](const Expectation& next) { return next.text == text; };
    const bool isExpected = !expected.empty() && expected.front().kind == Kind::kBox && fits(expected.front());
    if (!isExpected && boxAnswer) return boxAnswer(text, flags);
    Expectation taken;
    return Take(Kind::kBox, "box " + platform::ToNarrow(text), taken, fits) ? taken.number : HarmlessAnswer(flags);
}

bool HeadlessDialogKit::BrowseForFolder(VWindow*, const VUnicodeString& title, VUnicodeString& path) {
    Expectation taken;
    const auto any = [](const Expectation&) { return true; };
    if (!Take(Kind::kFolder, "folder question " + platform::ToNarrow(title), taken, any) || taken.isGivenUp)
        return false;
    path = taken.text;
    return true;
}

int HeadlessDialogKit::TrackPopupMenu(VWindow*, const VPopupMenu& menu, VPoint) {
    Expectation taken;
    const auto any = [](const Expectation&) { return true; };
    const int command = Take(Kind::kMenu, "menu", taken, any) ? taken.choice(menu) : 0;
    const VPopupMenu::Entry* entry = menu.Find(command);
    if (entry != nullptr && entry->isEnabled) return command;
    if (command != 0) faults.append("not to be chosen: command ").append(std::to_string(command)).append("\n");
    return 0;
}

std::unique_ptr<IFrameWindow> HeadlessDialogKit::CreateFrameWindow(IFrameEvents& events) {
    return std::make_unique<HeadlessFrame>(*this, events);
}

void HeadlessDialogKit::Play(HeadlessFrame& frame) {
    if (const FrameScript script = std::exchange(frameScript, nullptr)) script(frame);
    if (!frame.IsClosed()) frame.CloseByFrame();
}

bool HeadlessDialogKit::SetClipboardData(const VUnicodeString& format, std::span<const std::byte> data) {
    if (isClipboardBroken) return false;
    clipboard.clear();
    clipboard[std::u16string(format.View())].assign(data.begin(), data.end());
    return true;
}

bool HeadlessDialogKit::GetClipboardData(const VUnicodeString& format, std::vector<std::byte>& data) {
    data.clear();
    const auto found = clipboard.find(std::u16string(format.View()));
    if (isClipboardBroken || found == clipboard.end()) return false;
    data = found->second;
    return true;
}

void HeadlessDialogKit::ShowWaitCursor(bool isShown) {
    waitCursors += isShown ? 1 : -1;
    if (isShown) ++waits;
}

}  // namespace connectdialog
