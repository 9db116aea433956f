// Windows of a terminal emulator in which sessions open.
//
// What a terminal emulator does with the words behind its option is its own affair: some hand them on as they are, some
// join them and let a shell read them. So no name that a session could bring ever stands among them as it is: the words
// are those of MakeHostArguments.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog::hosts {

class TerminalEmulator {
  public:
    /// The one that `command` names, as words of a command line; an empty command stands for the system's. A command
    /// whose last word begins with "-" says itself how it is told what to run; else it is told as that program wants
    /// it, or by "-e".
    /// On failure: false, and `fault` tells in words what is missing.
    static bool Find(const VUnicodeString& command, TerminalEmulator& terminal, VUnicodeString& fault);

    /// Whether it can open a tab in a window that is there.
    bool HasTabs() const { return !tabWord.empty(); }
    /// The command that runs `program` with its arguments, in a tab where that is wanted and possible.
    std::vector<std::string> MakeCommand(const std::vector<std::string>& program, bool isInTab) const;

  private:
    std::vector<std::string> words;
    std::string_view tabWord;
    std::string_view runWord;  ///< empty: none is needed
};

}  // namespace connectdialog::hosts
