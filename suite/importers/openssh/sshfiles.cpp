#include "suite/importers/openssh/sshfiles.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace connectdialog {

namespace fs = std::filesystem;

namespace {

/// Configurations are UTF-8 everywhere; where the system's paths are bytes, they stay the bytes they are.
fs::path ToPath(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

}  // namespace

SshReadResult DiskSshFiles::Read(const std::string& path, std::size_t maxBytes, std::string& text, std::string& error) {
    text.clear();
    std::error_code code;
    const fs::file_status status = fs::status(ToPath(path), code);
    if (status.type() == fs::file_type::not_found) return SshReadResult::kMissing;
    if (status.type() == fs::file_type::directory) return SshReadResult::kFolder;
    error = code ? code.message() : "not a regular file";
    if (status.type() != fs::file_type::regular) return SshReadResult::kFailed;
    errno = 0;
    std::ifstream file(ToPath(path), std::ios::binary);
    error = std::generic_category().message(errno != 0 ? errno : EIO);
    if (!file) return SshReadResult::kFailed;
    // The size that a file claims is no limit: it may grow while it is read, and some tell 0.
    std::string chunk(std::size_t{64} << 10U, '\0');
    while (file && text.size() <= maxBytes) {
        file.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        text.append(chunk, 0, static_cast<std::size_t>(file.gcount()));
    }
    const bool isTooLarge = text.size() > maxBytes;
    if (isTooLarge) error = "larger than " + std::to_string(maxBytes) + " bytes";
    if (!isTooLarge && !file.bad()) return SshReadResult::kRead;
    text.clear();
    return SshReadResult::kFailed;
}

std::vector<std::string> DiskSshFiles::List(const std::string& folder, std::size_t maxNames) {
    std::vector<std::string> names;
    std::error_code code;
    fs::directory_iterator at(ToPath(folder), code);
    while (!code && at != fs::directory_iterator() && names.size() < maxNames) {
        const std::u8string name = at->path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
        at.increment(code);
    }
    return names;
}

bool DiskSshFiles::Exists(const std::string& path) {
    std::error_code code;
    return fs::exists(ToPath(path), code);
}

}  // namespace connectdialog
