#include "platform/knownfolders.h"

#include <algorithm>
#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"

namespace connectdialog::platform {

namespace {

// Native paths, until the last step.

constexpr std::string_view kOwnFolder = "/brennmark";

bool IsAbsolute(std::string_view path) {
    return path.starts_with('/');
}

std::string WithoutSlashAtEnd(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

/// The variable's value when it is an absolute path, else the empty string.
std::string AbsoluteVariable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && IsAbsolute(value) ? WithoutSlashAtEnd(value) : "";
}

std::string HomeOfAccount() {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
    return IsAbsolute(entry.pw_dir) ? WithoutSlashAtEnd(entry.pw_dir) : "";
}

std::string Home() {
    const std::string home = AbsoluteVariable("HOME");
    return home.empty() ? HomeOfAccount() : home;
}

/// `suffix` below the home; nothing when there is no home.
std::string BelowHome(std::string_view suffix) {
    const std::string home = Home();
    return home.empty() ? home : home + std::string(suffix);
}

std::string BaseFolder(const char* variable, std::string_view belowHome) {
    const std::string folder = AbsoluteVariable(variable);
    return folder.empty() ? BelowHome(belowHome) : folder;
}

std::string Own(const std::string& base) {
    return base.empty() ? base : base + std::string(kOwnFolder);
}

std::string RuntimeBase() {
    std::string folder = AbsoluteVariable("XDG_RUNTIME_DIR");
    if (!folder.empty()) return folder;
    // A process that was not started from the user's session lacks the variable, not the folder.
    folder = "/run/user/" + std::to_string(geteuid());
    return access(folder.c_str(), W_OK | X_OK) == 0 ? folder : "";
}

/// The path in a line such as XDG_DESKTOP_DIR="$HOME/Desktop"; the empty string when the line is another one.
std::string PathInLine(std::string_view line, std::string_view name) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with("=\"")) return {};
    std::string path;
    for (std::size_t i = name.size() + 2; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size()) ++i;
        path += line[i];
    }
    constexpr std::string_view kHomeVariable = "$HOME/";
    if (path.starts_with(kHomeVariable)) return BelowHome(path.substr(kHomeVariable.size() - 1));
    return IsAbsolute(path) ? path : "";
}

/// A folder that the user sees, by its name in user-dirs.dirs; the last line of the name counts.
std::string UserFolder(std::string_view name, std::string_view defaultBelowHome) {
    constexpr std::size_t kMostBytes = 65536;
    std::string lines;
    struct stat state {};
    const std::uint32_t error = GetLastErrorCode();
    const std::string file = BaseFolder("XDG_CONFIG_HOME", "/.config") + "/user-dirs.dirs";
    if (!ReadPlainFile(file, kMostBytes, lines, state)) SetLastErrorCode(error);  // nobody needs to have one
    std::string folder;
    for (std::string_view rest = lines; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
        const std::string path = PathInLine(rest.substr(0, end + 1), name);
        if (!path.empty()) folder = path;
        rest.remove_prefix(end + 1);
    }
    return folder.empty() ? BelowHome(defaultBelowHome) : folder;
}

std::string NativeFolder(KnownFolder folder) {
    switch (folder) {
        case KnownFolder::kHome:
            return Home();
        case KnownFolder::kData:
            return Own(BaseFolder("XDG_DATA_HOME", "/.local/share"));
        case KnownFolder::kConfiguration:
            return Own(BaseFolder("XDG_CONFIG_HOME", "/.config"));
        case KnownFolder::kState:
            return Own(BaseFolder("XDG_STATE_HOME", "/.local/state"));
        case KnownFolder::kRuntime:
            return Own(RuntimeBase());
        case KnownFolder::kMachineConfiguration:
            return Own("/etc/xdg");
        case KnownFolder::kDocuments:
            return UserFolder("XDG_DOCUMENTS_DIR", "/Documents");
        case KnownFolder::kDownloads:
            return UserFolder("XDG_DOWNLOAD_DIR", "/Downloads");
        case KnownFolder::kDesktop:
            return UserFolder("XDG_DESKTOP_DIR", "/Desktop");
    }
    return {};
}

}  // namespace

std::u16string GetKnownFolder(KnownFolder folder) {
    const std::string path = WithoutSlashAtEnd(NativeFolder(folder));
    if (path.empty()) SetLastErrorCode(kPathNotFound);
    return FromNativePath(path);
}

}  // namespace connectdialog::platform
