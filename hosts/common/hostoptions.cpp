#include "hosts/common/hostoptions.h"

#include <algorithm>

#include "foundation/percenttext.h"

namespace connectdialog::hosts {

namespace {

bool IsOption(std::string_view argument, std::string_view option) {
    const auto toUpper = [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    };
    return std::ranges::equal(argument, option, {}, toUpper);
}

class Reader {
  public:
    Reader(std::span<const char* const> arguments, HostOptions& options, std::string& fault)
        : arguments(arguments), options(options), fault(fault) {}

    bool ReadAll() {
        while (next < arguments.size() && !isOver)
            if (!ReadOne(arguments[next++])) return false;
        return true;
    }

  private:
    bool ReadOne(std::string_view argument);
    bool ReadPath(std::vector<std::string>& paths, bool isSession);
    bool ReadAddress(bool isLink);
    bool Value(std::string& value);
    bool Set(HostAction action) {
        options.action = action;
        isOver = action == HostAction::kHelp || action == HostAction::kVersion;
        return true;
    }

    std::span<const char* const> arguments;
    HostOptions& options;
    std::string& fault;
    std::size_t next = 0;
    bool isEncoded = false;
    bool isOver = false;  ///< what follows does not matter
};

bool Reader::Value(std::string& value) {
    if (next == arguments.size()) {
        fault = std::string(arguments[next - 1]) + " needs a value";
        return false;
    }
    value = arguments[next++];
    if (!isEncoded || PercentDecode(std::string(value), value)) return true;
    fault = std::string("\"") + arguments[next - 1] + "\" is not percent-encoded";
    return false;
}

bool Reader::ReadPath(std::vector<std::string>& paths, bool isSession) {
    std::string& path = paths.emplace_back();
    if (!Value(path)) return false;
    // Others compare the paths that are told to them: there is one spelling.
    if (isSession) path.erase(0, std::min(path.find_first_not_of('\\'), path.size()));
    return Set(HostAction::kOpenSessions);
}

bool Reader::ReadAddress(bool isLink) {
    if (isLink && next == arguments.size()) return true;
    options.isLink = isLink;
    return Set(HostAction::kQuickConnect) && Value(options.address.emplace());
}

bool Reader::ReadOne(std::string_view argument) {
    constexpr std::string_view kStoreWithEquals = "--store=";
    if (argument == "--help") return Set(HostAction::kHelp);
    if (argument == "--version") return Set(HostAction::kVersion);
    if (argument == "--encoded") return isEncoded = true;
    if (argument == "--window") return options.isInWindow = true;
    if (argument == "--main") return options.isMain = true;
    if (argument == "--report") return Value(options.report);
    if (argument == "--wait") return options.waitsAtEnd = true;
    if (argument == "--terminal") return Set(HostAction::kSetTerminal) && Value(options.terminal.emplace());
    if (argument == "--quick") return ReadAddress(false);
    if (argument == "--link") return ReadAddress(true);
    if (argument == "--client") return Set(HostAction::kOpenSessions) && Value(options.client.emplace_back());
    if (argument == "--store") return Value(options.store);
    if (IsOption(argument, "/S")) return ReadPath(options.paths, true);
    if (IsOption(argument, "/SESSION_FOLDER")) return ReadPath(options.folders, false);
    if (argument.starts_with(kStoreWithEquals)) {
        options.store = argument.substr(kStoreWithEquals.size());
        return true;
    }
    fault = "unknown argument \"" + std::string(argument) + "\"";
    return false;
}

}  // namespace

bool ReadHostOptions(std::span<const char* const> arguments, HostOptions& options, std::string& fault) {
    options = HostOptions();
    if (!Reader(arguments, options, fault).ReadAll()) return false;
    const bool opensSome = !options.paths.empty() || !options.folders.empty() || !options.client.empty();
    const int tasks = int{opensSome} + int{options.terminal.has_value()} + int{options.address.has_value()};
    if (tasks == 0 || (tasks == 1 && (options.address || !options.isMain))) return true;
    fault = "--terminal, --quick, --link and sessions exclude each other, and --main goes with an address alone";
    return false;
}

std::vector<std::string> MakeHostArguments(const std::string& storeUrl, const std::string& path,
                                           const std::vector<std::string>& client) {
    std::vector<std::string> words = {"--encoded", "--store", PercentEncode(storeUrl)};
    if (client.empty()) words.insert(words.end(), {"/S", PercentEncode(path)});
    for (const std::string& word : client) words.insert(words.end(), {"--client", PercentEncode(word)});
    return words;
}

}  // namespace connectdialog::hosts
