#include "hosts/norhalden/hostoptions.h"

#include <string_view>

namespace connectdialog::hosts {

namespace {

constexpr std::string_view kStoreWithEquals = "--store=";

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
        } else if (argument == "/S" || argument == "/s") {
            if (!TakeValue(arguments, i, options.path, fault)) return false;
            options.action = HostAction::kOpenSession;
        } else {
            fault = "unknown argument \"" + std::string(argument) + "\"";
            return false;
        }
    }
    if (options.action == HostAction::kOpenSession) return true;
    fault = "no session given";
    return false;
}

}  // namespace connectdialog::hosts
