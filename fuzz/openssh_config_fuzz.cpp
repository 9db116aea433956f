// Feeds the reader of OpenSSH configurations with arbitrary files.
//
// The input is one or more files, separated by a line `\x01`: the first is the configuration, the others lie in the
// home folder's .ssh as 1, 2, 3 and so on, so that Includes of them, of themselves and by globs are found.
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "fuzz/require.h"
#include "suite/importers/openssh/memorysshfiles.h"
#include "suite/importers/openssh/sshconfigeval.h"
#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshdiagnostics.h"

namespace {

using connectdialog::fuzz::Require;

std::map<std::string, std::string> SplitFiles(std::string_view input) {
    constexpr std::string_view kSeparator = "\x01\n";
    std::map<std::string, std::string> files;
    for (int number = 0; number < 100; ++number) {
        const std::size_t end = input.find(kSeparator);
        const std::string path = number == 0 ? "/config" : "/home/u/.ssh/" + std::to_string(number);
        files[path] = input.substr(0, end);
        if (end == std::string_view::npos) break;
        input.remove_prefix(end + kSeparator.size());
    }
    return files;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace connectdialog;
    MemorySshFiles files(SplitFiles({reinterpret_cast<const char*>(data), size}));
    SshDiagnostics diagnostics;
    const SshConfig config = ReadSshConfig(files, "/config", "/home/u", diagnostics);
    constexpr std::uint64_t kMaxSteps = 1'000'000;
    const auto hosts = EvaluateSshConfig(config, {"me", "/home/u"}, diagnostics, kMaxSteps);
    Require(hosts.size() <= config.aliases.size(), "each alias gives one host at most");
    for (const SshHost& host : hosts) {
        Require(!host.alias.empty() && host.port > 0 && host.port <= 65535, "a host has an alias and a port");
        Require(!host.hostName.empty() && host.hostName.size() <= kMaxSshNameBytes,
                "its name is neither empty nor long");
        Require(host.alias.find('\0') == std::string::npos && host.user.find('\0') == std::string::npos,
                "texts have no zero in them");
        for (const SshHop& hop : host.jumps)
            Require(!hop.host.empty() && hop.port >= 0 && hop.port <= 65535, "a hop has a host and a port");
    }
    for (const SshDiagnostic& found : diagnostics.All()) {
        for (const char c : found.text)
            Require(static_cast<unsigned char>(c) >= 0x20 && c != 0x7F, "what is told cannot drive a terminal");
    }
    return 0;
}
