// An OpenSSH client configuration as read: its blocks, their settings, and the files it includes in their place.
//
//     file      = {line LF} [line]            a UTF-8 byte order mark in front is read past, with a finding
//     line      = as in sshlexer.h            what stands behind a NUL byte of a line is read past, with a finding
//     block     = ("Host" patterns | "Match" criteria) {setting | "Include" globs}
//     a file    = {setting | "Include" globs} {block}
//
// An included file stands where its Include stands: what it has before its first block belongs to the block around
// the Include, its own blocks apply only where that one does, and behind the Include the block around it goes on. A
// relative path is looked up in `.ssh` of the home folder, whatever file names it; `~` is the home folder. A path or
// glob that matches nothing is nothing. A line that ssh would refuse gives a finding and the rest is read; a broken
// `Host` or `Match` line begins a block that never applies.
//
// Settings are kept as far as an import needs them; the others are only checked. Commands are never run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/importers/openssh/sshcondition.h"
#include "suite/importers/openssh/sshkeywords.h"

namespace connectdialog {

class ISshFiles;
class SshConfigFile;
class SshDiagnostics;

// The limits of a configuration. What lies beyond is left out with a finding.
inline constexpr std::size_t kMaxSshTotalBytes = std::size_t{64} << 20U;  ///< Of all files together.
inline constexpr std::size_t kMaxSshLineBytes = std::size_t{1} << 20U;
inline constexpr std::size_t kMaxSshValueBytes = 4096;      ///< Of one setting's value, one path of an Include.
inline constexpr std::size_t kMaxSshFiles = 4096;           ///< Each occurrence of an included file counts.
inline constexpr std::size_t kMaxSshGlobEntries = 200'000;  ///< Folder entries that all Includes may look through.
inline constexpr std::size_t kMaxSshAliases = 100'000;
inline constexpr int kMaxSshDepth = 16;                   ///< Files within files, as in ssh.
inline constexpr std::size_t kMaxSshIdentityFiles = 100;  ///< Of one block, of one host; as in ssh.

/// One setting of a block, or one included file in its place.
struct SshStep {
    SshKeyword keyword = SshKeyword::kInclude;
    std::string value;                        ///< ProxyJump and ProxyCommand: the text behind the keyword.
    std::unique_ptr<SshConfigFile> included;  ///< Only of kInclude, and then never null.
};

struct SshBlock {
    SshCondition condition;
    /// In file order. Of settings whose first value counts, only the first of the block.
    std::vector<SshStep> steps;
};

/// One file at the place where it is read.
class SshConfigFile {
  public:
    /// Adds a block behind the others and gives it; valid until the next is added.
    SshBlock& AddBlock(SshCondition condition);
    SshBlock& LastBlock() { return blocks.back(); }
    /// Makes the index of the blocks. Requires: once, after the last block and step.
    void Seal();

    /// The numbers of the blocks that may apply to `host`, in file order; the others do not. Found by name: what it
    /// costs does not grow with the blocks of other hosts.
    std::vector<std::uint32_t> BlocksFor(std::string_view host) const;
    const SshBlock& BlockAt(std::uint32_t number) const { return blocks[number]; }
    /// Whether no block can set anything.
    bool IsEmpty() const { return forAny.empty() && byName.empty(); }

  private:
    std::vector<SshBlock> blocks;
    std::vector<std::pair<std::string_view, std::uint32_t>> byName;  ///< Sorted; the names are those of the blocks.
    std::vector<std::uint32_t> forAny;
};

/// A host that the configuration names: an argument of `Host` without `*`, `?` and `!`.
struct SshAlias {
    std::string name;
    std::string file;
    std::size_t line;
};

/// A configuration with all it includes.
struct SshConfig {
    /// Null when the file itself could not be read.
    std::unique_ptr<SshConfigFile> root;
    /// In file order with the included files in their places; each name once, where it stands first.
    std::vector<SshAlias> aliases;
    /// `Match final` stands somewhere: the files are gone through a second time with the real host name.
    bool hasFinalPass = false;
};

/// Reads the configuration at `path` with what it includes. `home` is the home folder's path without `/` at its end.
/// What is found goes to `diagnostics`. Takes time and memory in proportion to the bytes read.
/// On failure (the file is missing or cannot be read): a null root, and a finding that tells why.
SshConfig ReadSshConfig(ISshFiles& files, const std::string& path, const std::string& home,
                        SshDiagnostics& diagnostics);

}  // namespace connectdialog
