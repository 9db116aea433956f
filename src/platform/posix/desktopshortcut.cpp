// Source: the desktop entry standard of freedesktop.org, version 1.5, "Basic format of the file", "Possible value
// types" and "The Exec key".
#include "platform/desktopshortcut.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <sodium.h>
#include <sys/stat.h>

#include "platform/codepage.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"
#include "platform/processlaunch.h"
#include "platform/userfiles.h"

namespace connectdialog::platform {

namespace {

/// What marking may take; it asks a service of the session.
constexpr std::chrono::seconds kMarkPatience{3};

constexpr std::string_view kExtension = ".desktop";
constexpr std::size_t kHashDigits = 16;

bool IsControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

/// Half a character does not survive the way to UTF-8 and back.
bool IsLabel(std::u16string_view label, const std::string& narrow) {
    return !narrow.empty() && narrow.front() != '.' && narrow.find_first_of("/\\") == std::string::npos &&
           std::ranges::none_of(narrow, IsControl) && ToWide(narrow) == label;
}

/// One argument of an Exec line. All are quoted: that is allowed for each and needed for most.
std::string QuoteArgument(std::string_view argument) {
    std::string quoted = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) quoted += '\\';
        if (character == '%') quoted += '%';
        quoted += character;
    }
    return quoted + '"';
}

/// Any value of the file: the second level, which the first has gone through.
std::string EscapeValue(std::string_view value) {
    std::string escaped;
    for (const char character : value) {
        switch (character) {
            case '\\':
                escaped += "\\\\";
                break;
            case '\n':
                escaped += "\\n";
                break;
            case '\r':
                escaped += "\\r";
                break;
            case '\t':
                escaped += "\\t";
                break;
            default:
                escaped += character == ' ' && escaped.empty() ? "\\s" : std::string(1, character);
        }
    }
    return escaped;
}

std::string MakeEntry(const std::string& label, const ShortcutCommand& command) {
    std::string exec;
    for (const std::string& argument : command.arguments) exec += (exec.empty() ? "" : " ") + QuoteArgument(argument);
    return "[Desktop Entry]\nVersion=1.0\nType=Application\nName=" + EscapeValue(label) +
           "\nExec=" + EscapeValue(exec) + "\nTerminal=" + (command.needsTerminal ? "true" : "false") + '\n';
}

bool IsRunningDesktop(std::string_view name) {
    const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
    std::string_view desktops = variable != nullptr ? variable : "";
    while (!desktops.empty()) {
        const std::string_view desktop = desktops.substr(0, desktops.find(':'));
        if (desktop == name) return true;
        desktops.remove_prefix(std::min(desktop.size() + 1, desktops.size()));
    }
    return false;
}

std::string Sha256(std::string_view bytes) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    std::array<char, 2 * crypto_hash_sha256_BYTES + 1> digits{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    sodium_bin2hex(digits.data(), digits.size(), hash.data(), hash.size());
    return digits.data();
}

/// Labels that begin alike have files of their own.
std::string FileNameOf(const std::string& label) {
    if (label.size() + kExtension.size() <= NAME_MAX) return label + std::string(kExtension);
    const std::string end = "-" + Sha256(label).substr(0, kHashDigits) + std::string(kExtension);
    std::size_t kept = NAME_MAX - end.size();
    while (kept > 0 && (static_cast<unsigned char>(label[kept]) & 0xC0) == 0x80) --kept;  // whole characters
    return label.substr(0, kept) + end;
}

void MarkAsTrusted(const std::string& file, std::string_view content) {
    const auto mark = [&](const char* name, const std::string& value) {
        RunQuietly({"gio", "set", "-t", "string", "--", file, name, value}, kMarkPatience);
    };
    if (IsRunningDesktop("GNOME")) mark("metadata::trusted", "true");
    if (IsRunningDesktop("XFCE")) mark("metadata::xfce-exe-checksum", Sha256(content));
}

}  // namespace

bool MakeDesktopShortcut(std::u16string_view label, const ShortcutCommand& command) {
    const std::string name = ToNarrow(label);
    // The program's name may not look like an assignment.
    const bool isNameable = !command.arguments.empty() && command.arguments[0].starts_with('/') &&
                            command.arguments[0].find('=') == std::string::npos;
    if (!isNameable || !IsLabel(label, name)) return FailWith(kInvalidParameter);
    const std::u16string folder = GetKnownFolder(KnownFolder::kDesktop);
    if (folder.empty() || !CreateUserFolder(folder)) return false;
    const std::string file = ToNativePath(folder) + '/' + FileNameOf(name);
    const std::string content = MakeEntry(name, command);
    if (!ReplaceContent(file, content, S_IRWXU)) return false;
    MarkAsTrusted(file, content);
    return true;
}

}  // namespace connectdialog::platform
