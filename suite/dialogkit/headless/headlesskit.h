// A back end of the dialogs without a screen: a program or a test plays the user.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "profile/vwindowplacement.h"
#include "suite/dialogkit/headless/expectations.h"

namespace connectdialog {

class HeadlessFrame;
class HeadlessDialog;

/// What comes unexpected is answered in the most harmless way (Cancel, No, nothing chosen). A box must have the text
/// that is expected.
class HeadlessDialogKit : public IDialogKit, public UserExpectations<HeadlessDialog> {
  public:
    using BoxAnswer = std::function<int(const VUnicodeString& text, unsigned flags)>;

    /// Becomes the installed back end for as long as it lives.
    HeadlessDialogKit();
    ~HeadlessDialogKit() override;

    /// Answers every box that was not expected. Null: such a box is a fault.
    void AnswerBoxes(BoxAnswer answer) { boxAnswer = std::move(answer); }

    /// Puts anything on the clipboard, as another program would.
    std::map<std::u16string, std::vector<std::byte>>& GetClipboard() { return clipboard; }
    /// From now on the clipboard refuses to take or to give.
    void BreakClipboard(bool isBroken) { isClipboardBroken = isBroken; }
    bool ShowsWaitCursor() const { return waitCursors > 0; }
    /// How often the wait cursor came up.
    int GetWaitCount() const { return waits; }

    using FrameScript = std::function<void(HeadlessFrame& frame)>;
    /// The script plays the user in the main window that runs next; one that it leaves open is closed by its frame, and
    /// so is one that nobody plays in.
    void ExpectFrame(FrameScript script) { frameScript = std::move(script); }

    // IDialogKit.
    std::unique_ptr<IDialogWindow> CreateDialogWindow(const DialogTemplate& dialog, IDialogEvents& events,
                                                      VWindow* parent) override;
    std::unique_ptr<IFrameWindow> CreateFrameWindow(IFrameEvents& events) override;
    int ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                       unsigned flags) override;
    bool BrowseForFolder(VWindow* owner, const VUnicodeString& title, VUnicodeString& path) override;
    int TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) override;
    bool SetClipboardData(const VUnicodeString& format, std::span<const std::byte> data) override;
    bool GetClipboardData(const VUnicodeString& format, std::vector<std::byte>& data) override;
    void ShowWaitCursor(bool isShown) override;

    /// Plays the user in a modal dialog.
    void Play(HeadlessDialog& dialog);
    /// Plays the user in a main window.
    void Play(HeadlessFrame& frame);

  private:
    BoxAnswer boxAnswer;
    std::map<std::u16string, std::vector<std::byte>> clipboard;
    bool isClipboardBroken = false;
    int waitCursors = 0;
    int waits = 0;
    FrameScript frameScript;
};

}  // namespace connectdialog
