// completion: scripts for shells, made from the parser itself, so that they know every command and option.
#include <CLI/CLI.hpp>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/connectctl/command.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

/// What may follow one command; the empty command is the program itself.
struct Completion {
    std::string command;                                           ///< the words that lead to it
    std::vector<std::pair<std::string, std::string>> subcommands;  ///< name and summary
    std::vector<std::string> options;
    bool takesPath = false;  ///< a path of the session tree
};

/// The words that lead to a subcommand.
std::string Extend(const std::string& command, const std::string& name) {
    return command.empty() ? name : command + ' ' + name;
}

void Collect(const CLI::App& parser, const std::string& command, std::vector<Completion>& completions) {
    Completion completion{command, {}, {}, false};
    for (const CLI::Option* option : parser.get_options()) {
        const std::string name = option->get_single_name();
        if (option->get_positional()) completion.takesPath |= name == "PATH" || name == "SOURCE" || name == "FOLDER";
        for (const std::string& longName : option->get_lnames()) completion.options.push_back("--" + longName);
    }
    const auto children = parser.get_subcommands(std::function<bool(const CLI::App*)>());
    for (const CLI::App* child : children)
        completion.subcommands.emplace_back(child->get_name(), child->get_description());
    completions.push_back(std::move(completion));
    for (const CLI::App* child : children) Collect(*child, Extend(command, child->get_name()), completions);
}

void PrintParts(std::initializer_list<std::string_view> parts) {
    for (const std::string_view part : parts) Print(part);
}

std::string JoinWords(const Completion& completion) {
    std::string words;
    for (const auto& [name, summary] : completion.subcommands) words.append(name) += ' ';
    for (const std::string& option : completion.options) words.append(option) += ' ';
    if (!words.empty()) words.pop_back();
    return words;
}

constexpr char kBashHead[] = R"bash(_connectctl() {
    local current=${COMP_WORDS[COMP_CWORD]} command= words= paths= path typed i
    local -a store=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} == --store ]]; then
            i=$((i + 1))
            store=(--store "${COMP_WORDS[i]}")
            continue
        fi
        case "$command/${COMP_WORDS[i]}" in
)bash";
constexpr char kBashMiddle[] = R"bash(        esac
    done
    case $command in
)bash";
// A path is compared as it is meant and given as it must be typed.
constexpr char kBashTail[] = R"bash(    esac
    COMPREPLY=($(compgen -W "$words" -- "$current"))
    if [[ -n $paths && $current != -* ]]; then
        typed=${current//\\\\/\\}
        while IFS= read -r path; do
            if [[ ${path:0:${#typed}} == "$typed" ]]; then COMPREPLY+=("$(printf %q "$path")"); fi
        done < <(connectctl "${store[@]}" ls -R 2>/dev/null)
    fi
}
complete -o default -F _connectctl connectctl)bash";

void PrintBash(const std::vector<Completion>& completions) {
    Print(kBashHead);
    for (const Completion& completion : completions)
        for (const auto& [name, summary] : completion.subcommands)
            PrintParts({"            '", completion.command, "/", name, "') command='",
                        Extend(completion.command, name), "' ;;\n"});
    Print(kBashMiddle);
    for (const Completion& completion : completions)
        PrintParts({"        '", completion.command, "') words='", JoinWords(completion), "'",
                    completion.takesPath ? " paths=yes" : "", " ;;\n"});
    PrintLine(kBashTail);
}

void PrintZsh(const std::vector<Completion>& completions) {
    PrintLine("autoload -U +X bashcompinit && bashcompinit");
    PrintBash(completions);
}

std::string QuoteForFish(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted + '\'';
}

void PrintFish(const std::vector<Completion>& completions) {
    for (const Completion& completion : completions) {
        const std::string condition =
            completion.command.empty() ? "__fish_use_subcommand" : "__fish_seen_subcommand_from " + completion.command;
        const std::string start = "complete -c connectctl -n " + QuoteForFish(condition);
        for (const auto& [name, summary] : completion.subcommands)
            PrintParts({start, " -f -a ", name, " -d ", QuoteForFish(summary), "\n"});
        for (const std::string& option : completion.options) PrintParts({start, " -l ", option.substr(2), "\n"});
        if (completion.takesPath) PrintParts({start, " -f -a '(connectctl ls -R 2>/dev/null)'\n"});
    }
}

struct Shell {
    const char* name;
    const char* summary;
    void (*print)(const std::vector<Completion>& completions);
};
constexpr Shell kShells[] = {
    {"bash", "For bash: eval \"$(connectctl completion bash)\"", PrintBash},
    {"zsh", "For zsh: eval \"$(connectctl completion zsh)\"", PrintZsh},
    {"fish", "For fish: connectctl completion fish | source", PrintFish},
};

}  // namespace

CommandBody DeclareCompletion(CLI::App& parser) {
    parser.require_subcommand(1);
    for (const Shell& shell : kShells) parser.add_subcommand(shell.name, shell.summary);
    return [&parser]() -> Failure {
        std::vector<Completion> completions;
        Collect(*parser.get_parent(), "", completions);
        for (const Shell& shell : kShells)
            if (parser.got_subcommand(shell.name)) shell.print(completions);
        return kDone;
    };
}

}  // namespace connectdialog::connectctl
