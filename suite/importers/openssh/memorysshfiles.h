// Files in memory for the reader of OpenSSH configurations: for a text that is not on disk, for tests and fuzzing.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>

#include "suite/importers/openssh/sshfiles.h"

namespace connectdialog {

/// Holds files by their absolute paths; what lies before a `/` of a path is a folder.
class MemorySshFiles : public ISshFiles {
  public:
    explicit MemorySshFiles(std::map<std::string, std::string> files) : files(std::move(files)) {}

    SshReadResult Read(const std::string& path, std::size_t maxBytes, std::string& text, std::string& error) override {
        text.clear();
        const auto found = files.find(path);
        if (found == files.end()) return Exists(path) ? SshReadResult::kFolder : SshReadResult::kMissing;
        error = "too large";
        if (found->second.size() > maxBytes) return SshReadResult::kFailed;
        text = found->second;
        return SshReadResult::kRead;
    }

    std::vector<std::string> List(const std::string& folder, std::size_t maxNames) override {
        std::set<std::string> names;
        const std::string prefix = folder.ends_with('/') ? folder : folder + '/';
        for (auto at = files.lower_bound(prefix); at != files.end() && at->first.starts_with(prefix); ++at) {
            const std::string rest = at->first.substr(prefix.size());
            if (names.size() < maxNames) names.insert(rest.substr(0, rest.find('/')));
        }
        return {names.begin(), names.end()};
    }

    bool Exists(const std::string& path) override {
        const auto at = files.lower_bound(path);
        return at != files.end() && (at->first == path || at->first.starts_with(path + '/'));
    }

  private:
    std::map<std::string, std::string> files;
};

}  // namespace connectdialog
