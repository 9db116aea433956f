#include "hosts/norhalden/hostoptions.h"

#include <algorithm>
#include <string_view>

namespace connectdialog::hosts {

namespace {

constexpr std::string_view kStoreWithEquals = "--store=";

bool IsOption(std::string_view argument, std::string_view option) {
    const auto toUpper = [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    };
    return std::ranges::equal(argument, option, {}, toUpper);
}

/// The word behind an option.
bool TakeValue(std::span<const char* const> arguments, std::size_t& index, std::string& value, std::string& fault) {
    if (index + 1 == arguments.size()) {
        fault = std::string(arguments[index]) + " needs a value";
        return false;
    }
    value = arguments[++index];
    return true;
}

}  // namespace

bool ReadHostOptions(std::span<const char* const> arguments, HostOptions& options, std::string& fault) {
    options = HostOptions();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "--version") {
            options.action = argument == "--help" ? HostAction::kHelp : HostAction::kVersion;
            return true;
        }
        if (argument == "--store") {
            if (!TakeValue(arguments, i, options.store, fault)) return false;
        } else if (argument.starts_with(kStoreWithEquals)) {
            options.store = argument.substr(kStoreWithEquals.size());
        } else if (IsOption(argument, "/S") || IsOption(argument, "/SESSION_FOLDER")) {
            const bool isSession = IsOption(argument, "/S");
            std::vector<std::string>& paths = isSession ? options.paths : options.folders;
            std::string& path = paths.emplace_back();
            if (!TakeValue(arguments, i, path, fault)) return false;
            // Others compare the paths that are told to them: there is one spelling.
            if (isSession) path.erase(0, std::min(path.find_first_not_of('\\'), path.size()));
            options.action = HostAction::kOpenSessions;
        } else {
            fault = "unknown argument \"" + std::string(argument) + "\"";
            return false;
        }
    }
    if (options.action == HostAction::kOpenSessions) return true;
    fault = "no session given";
    return false;
}

}  // namespace connectdialog::hosts
