// Reading a configuration: lines to blocks, Includes to files in their places.
#include <algorithm>
#include <filesystem>
#include <unordered_set>
#include <utility>

#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshdiagnostics.h"
#include "suite/importers/openssh/sshfiles.h"
#include "suite/importers/openssh/sshlexer.h"
#include "suite/importers/openssh/sshproxyjump.h"
#include "suite/importers/openssh/sshservices.h"

namespace connectdialog {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// What all files of one configuration share.
struct Reading {
    ISshFiles& files;
    const std::string& home;
    SshDiagnostics& diagnostics;
    SshConfig& config;
    SshServices services;
    std::vector<std::string> openFiles;  ///< From the configuration itself down to the one being read.
    std::unordered_set<std::string> knownAliases;
    SshPatternSet ignoredKeywords;  ///< From any block: which one applies is not known when a file is read.
    std::size_t filesLeft = kMaxSshFiles;
    std::size_t bytesLeft = kMaxSshTotalBytes;
    std::size_t globEntriesLeft = kMaxSshGlobEntries;

    /// Reads a file within the limits that are left.
    SshReadResult Load(const std::string& path, std::string& text, std::string& error) {
        --filesLeft;
        const SshReadResult result = files.Read(path, bytesLeft, text, error);
        bytesLeft -= text.size();
        return result;
    }
};

/// `text` so that a glob matches it and nothing else.
std::string EscapedForGlob(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string_view("*?[\\").find(c) != std::string_view::npos) escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// Reads one file, line after line.
class FileReader {
  public:
    FileReader(Reading& reading, const std::string& path)
        : reading(reading), path(path), file(std::make_unique<SshConfigFile>()) {
        StartBlock(SshCondition::Always());
    }

    std::unique_ptr<SshConfigFile> Read(std::string_view text) {
        if (text.starts_with(kByteOrderMark)) {
            lineNumber = 1;
            Add(SshSeverity::kRefused, "the file begins with a byte order mark");
            text.remove_prefix(kByteOrderMark.size());
            lineNumber = 0;
        }
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            ++lineNumber;
            ReadLine(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        file->Seal();
        return std::move(file);
    }

  private:
    Reading& reading;
    const std::string& path;
    std::unique_ptr<SshConfigFile> file;
    SshLine line;  ///< The one that is read: kept for its memory.
    std::size_t lineNumber = 0;
    std::uint32_t keywordsSeen = 0;  ///< Of the block: a bit each.
    std::size_t identityFiles = 0;   ///< Of the block.

    void Add(SshSeverity severity, std::string_view text) { reading.diagnostics.Add(severity, path, lineNumber, text); }

    void StartBlock(SshCondition condition) {
        file->AddBlock(std::move(condition));
        keywordsSeen = 0;
        identityFiles = 0;
    }

    void ReadLine(std::string_view text) {
        const std::size_t end = text.find('\0');
        if (end != std::string_view::npos) {
            Add(SshSeverity::kSkipped, "the line holds a NUL byte; what stands behind it is left out");
            text = text.substr(0, end);
        }
        const bool isTooLong = text.size() > kMaxSshLineBytes;
        ParseSshLine(isTooLong ? text.substr(0, kMaxSshValueBytes) : text, line);
        if (line.kind == SshLineKind::kEmpty && !isTooLong) return;
        const SshKeywordRow* const row = FindSshKeyword(line.keyword);
        if (!isTooLong && line.kind == SshLineKind::kDirective) {
            Take(row, line);
            return;
        }
        if (isTooLong) {
            Add(SshSeverity::kSkipped, "the line is longer than " + std::to_string(kMaxSshLineBytes) + " bytes");
        } else if (line.kind == SshLineKind::kNoArgument) {
            Add(SshSeverity::kRefused, "no argument after keyword " + QuoteForMessage(line.keyword));
        } else {
            Add(SshSeverity::kRefused, "a quote is not closed");
        }
        const bool startsBlock =
            row != nullptr && (row->keyword == SshKeyword::kHost || row->keyword == SshKeyword::kMatch);
        if (startsBlock) StartBlock(SshCondition::Never());
    }

    void Take(const SshKeywordRow* row, const SshLine& line) {
        if (row == nullptr) {
            TakeUnknown(line.keyword);
            return;
        }
        if (!row->since.empty()) {
            Add(SshSeverity::kNote, "OpenSSH before " + std::string(row->since) + " refuses keyword " + line.keyword);
        }
        const SshArgumentCheck check = CheckSshArguments(*row, line);
        if (!check.error.empty()) Add(SshSeverity::kRefused, check.error);
        switch (row->keyword) {
            case SshKeyword::kOther:
                break;
            case SshKeyword::kHost:
                TakeHost(line);
                break;
            case SshKeyword::kMatch:
                TakeMatch(line);
                break;
            case SshKeyword::kInclude:
                TakeInclude(line);
                break;
            case SshKeyword::kProxyJump:
                TakeProxyJump(line);
                break;
            case SshKeyword::kProxyCommand:
                TakeProxyCommand(line);
                break;
            default:
                if (check.isFirstGood) TakeValue(row->keyword, line.arguments.front());
        }
    }

    void TakeUnknown(const std::string& keyword) {
        std::uint64_t steps = 0;
        const std::string_view name = std::string_view(keyword).substr(0, kMaxSshNameBytes);
        if (reading.ignoredKeywords.Matches(name, steps)) return;
        Add(SshSeverity::kRefused, "unknown keyword " + QuoteForMessage(keyword));
    }

    void TakeHost(const SshLine& line) {
        SshPatternSet patterns;
        for (const std::string& argument : line.arguments) {
            if (argument.empty()) {
                Add(SshSeverity::kRefused, "keyword host has an empty argument");
                continue;
            }
            patterns.Add(argument);
            if (argument.find_first_of("*?!") == std::string::npos) TakeAlias(argument);
        }
        StartBlock(SshCondition::Host(std::move(patterns)));
    }

    void TakeAlias(const std::string& name) {
        if (name.size() > kMaxSshNameBytes) {
            Add(SshSeverity::kSkipped, "the host name " + QuoteForMessage(name) + " is too long");
        } else if (reading.config.aliases.size() == kMaxSshAliases && !reading.knownAliases.contains(name)) {
            Add(SshSeverity::kSkipped, "more hosts than " + std::to_string(kMaxSshAliases));
        } else if (reading.knownAliases.insert(name).second) {
            reading.config.aliases.push_back({name, path, lineNumber});
        }
    }

    void TakeMatch(const SshLine& line) {
        SshMatchReport report;
        SshCondition condition = SshCondition::Match(line.rest, report);
        if (!report.error.empty()) Add(SshSeverity::kRefused, report.error);
        for (const std::string& note : report.notes) Add(SshSeverity::kNote, note);
        reading.config.hasFinalPass = reading.config.hasFinalPass || report.hasFinal;
        StartBlock(std::move(condition));
    }

    void TakeProxyJump(const SshLine& line) {
        const std::string_view argument = TakeProxyJumpArgument(line.rest);
        if (ParseProxyJump(argument)) {
            TakeValue(SshKeyword::kProxyJump, std::string(argument));
        } else {
            Add(SshSeverity::kRefused, "ProxyJump cannot be " + QuoteForMessage(argument));
        }
    }

    void TakeProxyCommand(const SshLine& line) {
        std::string_view command = line.rest;
        command.remove_prefix(std::min(command.find_first_not_of(" \t\r\n="), command.size()));
        TakeValue(SshKeyword::kProxyCommand, std::string(command));
    }

    void TakeValue(SshKeyword keyword, std::string value) {
        if (value.size() > kMaxSshValueBytes) {
            Add(SshSeverity::kSkipped, "the value is longer than " + std::to_string(kMaxSshValueBytes) + " bytes");
            return;
        }
        if (keyword == SshKeyword::kIgnoreUnknown) {
            reading.ignoredKeywords.AddList(ToAsciiLower(value));
            return;
        }
        if (keyword == SshKeyword::kPort) {
            const int port = PortOf(value);
            if (port == 0) {
                Add(SshSeverity::kRefused, "bad port " + QuoteForMessage(value));
                return;
            }
            value = std::to_string(port);
        }
        if (CanCount(keyword)) file->LastBlock().steps.push_back({keyword, std::move(value), nullptr});
    }

    /// Whether a setting can count: the first of its kind in the block, or not too many where all count.
    bool CanCount(SshKeyword keyword) {
        if (keyword == SshKeyword::kIdentityFile) {
            if (++identityFiles <= kMaxSshIdentityFiles) return true;
            Add(SshSeverity::kSkipped, "more identity files than " + std::to_string(kMaxSshIdentityFiles));
            return false;
        }
        const std::uint32_t bit = 1U << static_cast<unsigned>(keyword);
        const bool isFirst = (keywordsSeen & bit) == 0;
        keywordsSeen |= bit;
        return isFirst;
    }

    int PortOf(const std::string& text) {
        const int port = ParseSshPort(text);
        return port != 0 ? port : reading.services.FindPort(text);
    }

    void TakeInclude(const SshLine& line) {
        for (const std::string& argument : line.arguments) {
            if (argument.empty()) {
                Add(SshSeverity::kRefused, "keyword include has an empty argument");
            } else if (argument.size() > kMaxSshValueBytes) {
                Add(SshSeverity::kSkipped, "the path is longer than " + std::to_string(kMaxSshValueBytes) + " bytes");
            } else {
                IncludeGlob(argument);
            }
        }
    }

    void IncludeGlob(const std::string& argument) {
        std::string glob = argument;
        if (argument.starts_with('~')) {
            if (argument.size() > 1 && argument[1] != '/') {
                Add(SshSeverity::kSkipped, "the home folder in " + QuoteForMessage(argument) + " is another user's");
                return;
            }
            glob = EscapedForGlob(reading.home) + argument.substr(1);
        } else if (!IsAbsolute(argument)) {
            glob = EscapedForGlob(reading.home + "/.ssh/") + argument;
        }
        for (const std::string& found : ExpandSshGlob(reading.files, glob, reading.globEntriesLeft)) Include(found);
        if (reading.globEntriesLeft == 0)
            Add(SshSeverity::kSkipped, "the Includes look through too many folder entries");
    }

    static bool IsAbsolute(const std::string& path) {
        return path.starts_with('/') || std::filesystem::path(path).is_absolute();
    }

    void Include(const std::string& included) {
        if (std::ranges::find(reading.openFiles, included) != reading.openFiles.end()) {
            Add(SshSeverity::kRefused, "the file " + QuoteForMessage(included) + " includes itself");
        } else if (reading.openFiles.size() > kMaxSshDepth) {
            Add(SshSeverity::kRefused, "files are included deeper than " + std::to_string(kMaxSshDepth) + " levels");
        } else if (reading.filesLeft == 0) {
            Add(SshSeverity::kSkipped, "more than " + std::to_string(kMaxSshFiles) + " files are included");
        } else {
            IncludeExisting(included);
        }
    }

    void IncludeExisting(const std::string& included) {
        std::string text;
        std::string error;
        const SshReadResult result = reading.Load(included, text, error);
        if (result == SshReadResult::kFailed) {
            Add(SshSeverity::kSkipped, "the file " + QuoteForMessage(included) + " cannot be read: " + error);
        }
        if (result != SshReadResult::kRead) return;
        reading.openFiles.push_back(included);
        std::unique_ptr<SshConfigFile> nested = FileReader(reading, included).Read(text);
        reading.openFiles.pop_back();
        if (!nested->IsEmpty()) file->LastBlock().steps.push_back({SshKeyword::kInclude, {}, std::move(nested)});
    }
};

}  // namespace

SshConfig ReadSshConfig(ISshFiles& files, const std::string& path, const std::string& home,
                        SshDiagnostics& diagnostics) {
    SshConfig config;
    Reading reading{files, home, diagnostics, config, SshServices(files), {path}, {}, {}};
    std::string text;
    std::string error;
    switch (reading.Load(path, text, error)) {
        case SshReadResult::kRead:
            config.root = FileReader(reading, path).Read(text);
            return config;
        case SshReadResult::kMissing:
            error = "no such file";
            break;
        case SshReadResult::kFolder:
            error = "is a folder";
            break;
        case SshReadResult::kFailed:
            error = "cannot be read: " + error;
            break;
    }
    diagnostics.Add(SshSeverity::kRefused, path, 0, error);
    return config;
}

}  // namespace connectdialog
