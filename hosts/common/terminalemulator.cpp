#include "hosts/common/terminalemulator.h"

#include <filesystem>

#include "foundation/commandline.h"
#include "platform/codepage.h"
#include "platform/processlaunch.h"

namespace connectdialog::hosts {

namespace {

struct TerminalRow {
    std::string_view program;
    std::string_view tabWord;
    std::string_view runWord;
};

/// The first that is there is the system's.
constexpr TerminalRow kTerminals[] = {
    {"x-terminal-emulator", "", "-e"},  // what Debian's alternatives choose, with the option that its policy asks for
    {"xdg-terminal-exec", "", ""},
    {"gnome-terminal", "--tab", "--"},
    {"konsole", "--new-tab", "-e"},
    {"xfce4-terminal", "--tab", "-x"},
    {"mate-terminal", "--tab", "-x"},
    {"kgx", "--tab", "--"},
    {"ptyxis", "--tab", "--"},
    {"foot", "", ""},
    {"kitty", "", ""},
    {"alacritty", "", "-e"},
    {"xterm", "", "-e"},
};

constexpr char kAskForOne[] = "no terminal emulator is installed: the Debian package xterm has one";

const TerminalRow* FindRow(std::string_view program) {
    for (const TerminalRow& row : kTerminals)
        if (row.program == program) return &row;
    return nullptr;
}

/// The program behind a link of the system's alternatives. Debian wraps those that do not know "-e".
std::string NameOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(path, error);
    const std::filesystem::path name = error ? std::filesystem::path(path).filename() : file.filename();
    return name.extension() == ".wrapper" ? name.stem().string() : name.string();
}

std::string FindSystemTerminal() {
    for (const TerminalRow& row : kTerminals)
        if (!platform::FindProgram(row.program).empty()) return std::string(row.program);
    return {};
}

}  // namespace

bool TerminalEmulator::Find(const VUnicodeString& command, TerminalEmulator& terminal, VUnicodeString& fault) {
    terminal = TerminalEmulator();
    VStringArray commandWords;
    if (!SplitCommandLine(command, commandWords)) {
        fault = u"the command for terminals has an opening quote without a closing one: " + command;
        return false;
    }
    for (const VUnicodeString& word : commandWords) terminal.words.push_back(platform::ToNarrow(word));
    if (terminal.words.empty()) terminal.words.push_back(FindSystemTerminal());
    const std::string path = platform::FindProgram(terminal.words.front());
    if (path.empty()) {
        fault = commandWords.IsEmpty() ? VUnicodeString(kAskForOne)
                                       : u"the terminal emulator is not installed: " + commandWords[0];
        return false;
    }
    const bool saysItself = !commandWords.IsEmpty() && terminal.words.back().starts_with('-');
    const TerminalRow* row = FindRow(NameOf(path));
    if (saysItself) {
        terminal.runWord = "";
    } else if (row == nullptr) {
        terminal.runWord = "-e";
    } else {
        terminal.tabWord = row->tabWord;
        terminal.runWord = row->runWord;
        // Not through the wrapper, which knows no tabs.
        if (std::filesystem::path(path).filename() != row->program) terminal.words.front() = row->program;
    }
    return true;
}

std::vector<std::string> TerminalEmulator::MakeCommand(const std::vector<std::string>& program, bool isInTab) const {
    std::vector<std::string> command = words;
    if (isInTab && HasTabs()) command.emplace_back(tabWord);
    if (!runWord.empty()) command.emplace_back(runWord);
    command.insert(command.end(), program.begin(), program.end());
    return command;
}

}  // namespace connectdialog::hosts
