#include "suite/dialogkit/headless/headlesskit.h"

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

std::unique_ptr<IDialogWindow> HeadlessDialogKit::CreateDialogWindow(const DialogTemplate& dialog,
                                                                     IDialogEvents& events, VWindow*) {
    return std::make_unique<HeadlessDialog>(*this, dialog, events);
}

void HeadlessDialogKit::Play(HeadlessDialog& dialog) {
    Expectation taken;
    if (TakeDialog(dialog.GetTemplateId(), taken)) taken.script(dialog);
    if (!dialog.IsClosed()) dialog.CloseByFrame();
}

int HeadlessDialogKit::ShowMessageBox(VWindow*, const VUnicodeString& title, const VUnicodeString& text,
                                      unsigned flags) {
    boxes.push_back({title, text, flags});
    if (!IsBoxNext(text) && boxAnswer) return boxAnswer(text, flags);
    Expectation taken;
    return TakeBox(text, taken) ? taken.number : HarmlessAnswer(flags);
}

bool HeadlessDialogKit::BrowseForFolder(VWindow*, const VUnicodeString& title, VUnicodeString& path) {
    Expectation taken;
    if (!Take(Kind::kFolder, "folder question " + platform::ToNarrow(title), taken) || taken.isGivenUp) return false;
    path = taken.text;
    return true;
}

int HeadlessDialogKit::TrackPopupMenu(VWindow*, const VPopupMenu& menu, VPoint) {
    Expectation taken;
    const int command = Take(Kind::kMenu, "menu", taken) ? taken.choice(menu) : 0;
    const VPopupMenu::Entry* entry = menu.Find(command);
    if (entry != nullptr && entry->isEnabled) return command;
    if (command != 0) AddFault("not to be chosen: command " + std::to_string(command));
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
