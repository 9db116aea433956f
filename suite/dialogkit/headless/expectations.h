// What a played user is expected to meet, in order, and what the user does then. One for every back end that plays.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "imports/dialogkit/vpopupmenu.h"
#include "platform/codepage.h"

namespace connectdialog {

/// Whatever stops the application and waits for the user is expected beforehand, in order, with what the user does
/// then. What comes unexpected counts as a fault, and so does what was expected and did not come. `Dialog` is the
/// dialog in which scripts act.
template <class Dialog>
class UserExpectations {
  public:
    using DialogScript = std::function<void(Dialog& dialog)>;
    using MenuChoice = std::function<int(const VPopupMenu& menu)>;

    struct Box {
        VUnicodeString title;
        VUnicodeString text;
        unsigned flags = 0;
    };

    /// The script plays the user in the dialog that comes next, which must be of this template; a dialog that it leaves
    /// open is closed by its frame.
    void ExpectDialog(int templateId, DialogScript script) {
        expected.push_back({Kind::kDialog, templateId, {}, false, std::move(script), {}});
    }
    /// The next box must have this text.
    void ExpectBox(const VUnicodeString& text, int answer) {
        expected.push_back({Kind::kBox, answer, text, false, {}, {}});
    }
    /// The next question for a folder gets this answer; null: given up.
    void ExpectFolder(const char16_t* path) { expected.push_back({Kind::kFolder, 0, path, path == nullptr, {}, {}}); }
    /// The user looks at the next menu and chooses a command, which must be enabled; 0: none.
    void ExpectMenu(MenuChoice choice) { expected.push_back({Kind::kMenu, 0, {}, false, {}, std::move(choice)}); }
    /// Every box that was shown.
    const std::vector<Box>& GetBoxes() const { return boxes; }
    /// What was wrong since the last call, with what is still expected; nothing is expected after it. UTF-8 lines.
    std::string TakeFaults() {
        for (const Expectation& left : expected) {
            const char* const kKinds[] = {"dialog", "box", "folder question", "menu"};
            faults.append("did not come: ").append(kKinds[static_cast<int>(left.kind)]);
            if (left.kind == Kind::kDialog) faults.append(" ").append(std::to_string(left.number));
            faults.append(" ").append(platform::ToNarrow(left.text)).append("\n");
        }
        expected.clear();
        return std::exchange(faults, {});
    }

  protected:
    enum class Kind : std::uint8_t { kDialog, kBox, kFolder, kMenu };
    struct Expectation {
        Kind kind;
        int number = 0;  ///< the template, or the answer
        VUnicodeString text;
        bool isGivenUp = false;
        DialogScript script;
        MenuChoice choice;
    };

    /// Whether that box is the next one.
    bool IsBoxNext(const VUnicodeString& text) const {
        return !expected.empty() && expected.front().kind == Kind::kBox && expected.front().text == text;
    }
    /// Takes the next expectation when it is of that kind, and of that template or text where it has one; else notes
    /// the fault and gives false.
    bool Take(Kind kind, const std::string& what, Expectation& taken, int templateId = 0,
              const VUnicodeString& text = {}) {
        const bool fits = !expected.empty() && expected.front().kind == kind &&
                          (kind != Kind::kDialog || expected.front().number == templateId) &&
                          (kind != Kind::kBox || expected.front().text == text);
        if (!fits) {
            AddFault("unexpected: " + what);
            return false;
        }
        taken = std::move(expected.front());
        expected.pop_front();
        return true;
    }
    bool TakeDialog(int templateId, Expectation& taken) {
        return Take(Kind::kDialog, "dialog " + std::to_string(templateId), taken, templateId);
    }
    bool TakeBox(const VUnicodeString& text, Expectation& taken) {
        return Take(Kind::kBox, "box " + platform::ToNarrow(text), taken, 0, text);
    }
    void AddFault(const std::string& fault) { faults.append(fault).append("\n"); }

    std::vector<Box> boxes;

  private:
    std::deque<Expectation> expected;
    std::string faults;
};

}  // namespace connectdialog
