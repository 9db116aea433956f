// The words of one line of an OpenSSH configuration.
//
//     line      = [space] [keyword separator arguments] [space]
//     keyword   = characters without space, `=` and `"`; a part in `"..."` is joined on
//     separator = space, or `=` with space around it; one `=` at most, a second belongs to the arguments
//     arguments = argument {space argument} ["#" comment]        a comment begins where an argument would
//     argument  = parts in `'...'` or `"..."`, or without quotes, joined; `\` before a quote or `\`, and outside
//                 quotes before a blank, stands for that character; any other `\` is itself
//     space     = blanks, tabs, CR between keyword and arguments and at the line's end; blanks and tabs between
//                 arguments
//
// A line whose first word begins with `#` is a comment. Keywords are case-insensitive. The rules are those that
// OpenSSH 9.2 shows (ssh_config(5) tells part of them), warts included: a keyword with an unclosed quote makes an
// empty line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

/// Takes words off a text by the keyword's rules above; `Match` is read with it to the end of its line.
class SshWords {
  public:
    explicit SshWords(std::string_view text) : rest(text) {}

    /// The next word, which may be empty (before a separator at the very start). None at the end and after a quote
    /// that is not closed.
    std::optional<std::string> Next();
    /// What is left, without leading space. Empty at the end.
    std::string_view Rest() const { return rest; }

  private:
    std::string_view rest;
    bool isAtEnd = false;
};

enum class SshLineKind {
    kEmpty,       ///< Nothing to do: blank, or a comment.
    kDirective,   ///< Keyword and arguments.
    kNoArgument,  ///< A keyword alone; ssh refuses it.
    kBadQuotes,   ///< A quote among the arguments is not closed; ssh refuses it.
};

/// One line, taken apart. `rest` points into the text it was made of.
struct SshLine {
    SshLineKind kind = SshLineKind::kEmpty;
    std::string keyword;                 ///< In lower case. Empty when kEmpty.
    std::string_view rest;               ///< All behind the keyword as written, quotes and comment included.
    std::vector<std::string> arguments;  ///< Only of a kDirective; none when a comment follows the keyword.
};

/// Takes apart one line (without its line feed, NUL-free).
void ParseSshLine(std::string_view line, SshLine& result);

/// Letters A to Z to lower case, all else as it is: what ssh does to keywords and host names.
std::string ToAsciiLower(std::string_view text);
/// Whether the two differ in nothing but the case of A to Z.
bool EqualsIgnoringAsciiCase(std::string_view left, std::string_view right);

}  // namespace connectdialog
