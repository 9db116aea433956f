// A back end of the dialogs without a screen: a program or a test plays the user.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

class HeadlessFrame;
class HeadlessDialog;

/// Whatever stops the application and waits for the user is expected beforehand, in order, with what the user does
/// then. What comes unexpected is answered in the most harmless way (Cancel, No, nothing chosen) and counts as a fault,
/// and so does what was expected and did not come.
class HeadlessDialogKit : public IDialogKit {
  public:
    using DialogScript = std::function<void(HeadlessDialog& dialog)>;
    using BoxAnswer = std::function<int(const VUnicodeString& text, unsigned flags)>;
    using MenuChoice = std::function<int(const VPopupMenu& menu)>;

    struct Box {
        VUnicodeString title;
        VUnicodeString text;
        unsigned flags = 0;
    };

    /// Becomes the installed back end for as long as it lives.
    HeadlessDialogKit();
    ~HeadlessDialogKit() override;

    /// The script plays the user in the dialog that comes next, which must be of this template; a dialog that it leaves
    /// open is closed by its frame.
    void ExpectDialog(int templateId, DialogScript script);
    /// The next box must have this text.
    void ExpectBox(const VUnicodeString& text, int answer);
    /// The next question for a folder gets this answer; null: given up.
    void ExpectFolder(const char16_t* path);
    /// The user looks at the next menu and chooses a command, which must be enabled; 0: none.
    void ExpectMenu(MenuChoice choice);
    /// Answers every box that was not expected. Null: such a box is a fault.
    void AnswerBoxes(BoxAnswer answer) { boxAnswer = std::move(answer); }
    /// Every box that was shown.
    const std::vector<Box>& GetBoxes() const { return boxes; }
    /// What was wrong since the last call, with what is still expected; nothing is expected after it. UTF-8 lines.
    std::string TakeFaults();

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
    enum class Kind : std::uint8_t { kDialog, kBox, kFolder, kMenu };
    struct Expectation {
        Kind kind;
        int number = 0;  ///< the template, or the answer
        VUnicodeString text;
        bool isGivenUp = false;
        DialogScript script;
        MenuChoice choice;
    };

    /// Takes the next expectation when it is of that kind and `fits`; else notes the fault and gives false.
    template <class Fits>
    bool Take(Kind kind, const std::string& what, Expectation& taken, Fits fits);

    std::deque<Expectation> expected;
    BoxAnswer boxAnswer;
    std::vector<Box> boxes;
    std::string faults;
    std::map<std::u16string, std::vector<std::byte>> clipboard;
    bool isClipboardBroken = false;
    int waitCursors = 0;
    int waits = 0;
    FrameScript frameScript;
};

}  // namespace connectdialog
