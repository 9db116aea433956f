#include "suite/importers/openssh/sshconfigeval.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshdiagnostics.h"
#include "suite/importers/openssh/sshlexer.h"

namespace connectdialog {
namespace {

constexpr std::uint64_t kStepsPerFile = 32;  // Finding a host's blocks in one file.
constexpr std::uint64_t kStepsPerBlock = 8;  // Getting at one: most lie far apart in memory.
constexpr int kDefaultPort = 22;

using Token = std::pair<char, std::string_view>;

/// Replaces `%%` and the tokens given. Nothing when `text` has another token, ends in `%` or grows beyond
/// kMaxSshValueBytes.
std::optional<std::string> ExpandTokens(std::string_view text, std::span<const Token> tokens) {
    std::string expanded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            expanded += text[i];
            continue;
        }
        const char name = ++i < text.size() ? text[i] : '\0';
        const auto token = std::ranges::find(tokens, name, &Token::first);
        if (name != '%' && token == tokens.end()) return std::nullopt;
        expanded += name == '%' ? "%" : token->second;
        if (expanded.size() > kMaxSshValueBytes) return std::nullopt;
    }
    return expanded;
}

/// What the settings of one host come to while the configuration is gone through.
class Values {
  public:
    /// Null when it is not set.
    const std::string* Find(SshKeyword keyword) const { return values[static_cast<std::size_t>(keyword)]; }
    std::string_view Get(SshKeyword keyword) const {
        const std::string* const value = Find(keyword);
        return value == nullptr ? std::string_view() : *value;
    }
    const std::vector<const std::string*>& IdentityFiles() const { return identityFiles; }

    /// Takes a setting when it is the first of its kind. The value must outlive this.
    void Offer(SshKeyword keyword, const std::string& value) {
        if (keyword == SshKeyword::kIdentityFile) {
            OfferIdentityFile(value);
            return;
        }
        if (Find(keyword) == nullptr && !IsSettledByOther(keyword)) values[static_cast<std::size_t>(keyword)] = &value;
    }

  private:
    std::array<const std::string*, static_cast<std::size_t>(SshKeyword::kTag) + 1> values{};
    std::vector<const std::string*> identityFiles;

    /// A ProxyCommand rules out a later ProxyJump; a ProxyJump to some host rules out a later ProxyCommand.
    bool IsSettledByOther(SshKeyword keyword) const {
        if (keyword == SshKeyword::kProxyJump) return Find(SshKeyword::kProxyCommand) != nullptr;
        const std::string* const jump = Find(SshKeyword::kProxyJump);
        return keyword == SshKeyword::kProxyCommand && jump != nullptr && !EqualsIgnoringAsciiCase(*jump, "none");
    }

    void OfferIdentityFile(const std::string& path) {
        const bool isKnown =
            std::ranges::any_of(identityFiles, [&](const std::string* known) { return *known == path; });
        if (!isKnown && identityFiles.size() < kMaxSshIdentityFiles) identityFiles.push_back(&path);
    }
};

/// The work that is left.
struct Budget {
    std::uint64_t steps = 0;
    std::uint64_t maxSteps;
    bool IsSpent() const { return steps >= maxSteps; }
};

/// Works out one host.
class HostEvaluation {
  public:
    HostEvaluation(const SshConfig& config, const SshUser& user, const SshAlias& alias, Budget& budget)
        : config(config), user(user), alias(alias), budget(budget) {
        subject.host = subject.originalHost = alias.name;
        subject.realHost = ToAsciiLower(alias.name);
        subject.user = subject.localUser = user.name;
    }

    /// Nothing when ssh could not connect; `problem` tells why, or what is not as the file says.
    std::optional<SshHost> Run(std::string& problem) {
        Visit(*config.root);
        std::optional<std::string> name = HostName();
        if (!name) {
            problem = "HostName cannot be " + QuoteForMessage(values.Get(SshKeyword::kHostName));
            return std::nullopt;
        }
        if (NeedsFinalPass()) RunFinalPass(*name);
        SshHost host;
        host.alias = alias.name;
        host.file = alias.file;
        host.line = alias.line;
        host.hostName = *std::move(name);
        host.user = values.Get(SshKeyword::kUser);
        if (const std::string* const port = values.Find(SshKeyword::kPort)) host.port = ParseSshPort(*port);
        TakeRoute(host, problem);
        return host;
    }

  private:
    const SshConfig& config;
    const SshUser& user;
    const SshAlias& alias;
    Budget& budget;
    SshMatchSubject subject;
    Values values;

    void Visit(const SshConfigFile& file) {
        const std::vector<std::uint32_t> numbers = file.BlocksFor(subject.host);
        budget.steps += numbers.size() * kStepsPerBlock + kStepsPerFile;
        for (const std::uint32_t number : numbers) {
            const SshBlock& block = file.BlockAt(number);
            if (!budget.IsSpent() && block.condition.Holds(subject, budget.steps)) Apply(block);
        }
    }

    void Apply(const SshBlock& block) {
        for (const SshStep& step : block.steps) {
            ++budget.steps;
            if (step.included) {
                Visit(*step.included);
            } else {
                values.Offer(step.keyword, step.value);
                FollowMatchSubject(step.keyword);
            }
        }
    }

    /// What `Match` looks at follows the settings as they come.
    void FollowMatchSubject(SshKeyword keyword) {
        if (keyword == SshKeyword::kUser) subject.user = values.Get(keyword).substr(0, kMaxSshNameBytes);
        if (keyword == SshKeyword::kTag) subject.tag = values.Get(keyword).substr(0, kMaxSshNameBytes);
        if (keyword == SshKeyword::kHostName && !subject.isFinalPass) {
            const std::optional<std::string> name = ExpandHostName(values.Get(keyword));
            if (name) subject.realHost = ToAsciiLower(*name).substr(0, kMaxSshNameBytes);
        }
    }

    std::optional<std::string> ExpandHostName(std::string_view written) const {
        const Token host{'h', alias.name};
        return ExpandTokens(written, {&host, 1});
    }

    std::optional<std::string> HostName() const {
        const std::string* const written = values.Find(SshKeyword::kHostName);
        const std::optional<std::string> name = written == nullptr ? alias.name : ExpandHostName(*written);
        if (!name || name->empty() || name->size() > kMaxSshNameBytes) return std::nullopt;
        std::string address = CanonicalIPv4Address(*name);
        return address.empty() ? ToAsciiLower(*name) : std::move(address);
    }

    bool NeedsFinalPass() const {
        const std::string_view canonicalize = values.Get(SshKeyword::kCanonicalizeHostname);
        const bool isOff = canonicalize.empty() || EqualsIgnoringAsciiCase(canonicalize, "no") ||
                           EqualsIgnoringAsciiCase(canonicalize, "false");
        return config.hasFinalPass || !isOff;
    }

    void RunFinalPass(const std::string& name) {
        subject.host = subject.realHost = name;
        subject.isFinalPass = true;
        Visit(*config.root);
    }

    std::string_view RemoteUser(const SshHost& host) const { return host.user.empty() ? user.name : host.user; }

    /// The values with tokens that stand for the others.
    void TakeRoute(SshHost& host, std::string& problem) const {
        const std::string port = std::to_string(host.port);
        const std::array<Token, 6> tokens = {{{'h', host.hostName},
                                              {'n', host.alias},
                                              {'p', port},
                                              {'r', RemoteUser(host)},
                                              {'d', user.home},
                                              {'u', user.name}}};
        for (const std::string* const written : values.IdentityFiles()) {
            if (!EqualsIgnoringAsciiCase(*written, "none")) host.identityFiles.push_back(ExpandPath(*written, tokens));
        }
        const std::string_view command = values.Get(SshKeyword::kProxyCommand);
        if (!EqualsIgnoringAsciiCase(command, "none")) host.proxyCommand = command;
        host.jumps = ParseProxyJump(values.Get(SshKeyword::kProxyJump)).value_or(std::vector<SshHop>());
        // Of the tokens, the last two are for files alone.
        const std::span<const Token> jumpTokens(tokens.data(), tokens.size() - 2);
        for (SshHop& hop : host.jumps) {
            hop.user = ExpandTokens(hop.user, jumpTokens).value_or(hop.user);
            hop.host = ExpandTokens(hop.host, jumpTokens).value_or(hop.host);
        }
        if (IsLoop(host)) {
            problem = "ProxyJump leads back to the host itself and is left out";
            host.jumps.clear();
        }
    }

    /// As it was written when it has a token or an environment variable that only ssh itself can replace, or a `%` of
    /// its own, which ssh would replace once more where the path is handed to it.
    std::string ExpandPath(const std::string& written, std::span<const Token> tokens) const {
        const bool isInHome = written == "~" || written.starts_with("~/");
        const std::string path = isInHome ? user.home + written.substr(1) : written;
        const std::optional<std::string> expanded = ExpandTokens(path, tokens);
        const bool isFinal =
            expanded && expanded->find('%') == std::string::npos && expanded->find("${") == std::string::npos;
        return isFinal ? *expanded : written;
    }

    /// Whether the last jump ends where the host is; ssh refuses to connect then.
    bool IsLoop(const SshHost& host) const {
        if (host.jumps.empty()) return false;
        const SshHop& last = host.jumps.back();
        const int port = last.port == 0 ? kDefaultPort : last.port;
        return last.host == host.hostName && port == host.port && (last.user.empty() || last.user == RemoteUser(host));
    }
};

}  // namespace

std::vector<SshHost> EvaluateSshConfig(const SshConfig& config, const SshUser& user, SshDiagnostics& diagnostics,
                                       std::uint64_t maxSteps) {
    std::vector<SshHost> hosts;
    if (!config.root) return hosts;
    hosts.reserve(config.aliases.size());
    Budget budget{0, maxSteps};
    for (const SshAlias& alias : config.aliases) {
        std::string problem;
        std::optional<SshHost> host = HostEvaluation(config, user, alias, budget).Run(problem);
        if (budget.IsSpent()) {
            diagnostics.Add(SshSeverity::kSkipped, alias.file, alias.line,
                            "this host and those behind it are left out: the patterns take too long to match");
            break;
        }
        if (!problem.empty()) {
            diagnostics.Add(SshSeverity::kSkipped, alias.file, alias.line,
                            QuoteForMessage(alias.name) + ": " + problem);
        }
        if (host) hosts.push_back(*std::move(host));
    }
    return hosts;
}

}  // namespace connectdialog
