// The words of a hive file, one after the other. See foundation/vhivereader.h for the grammar.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

/// A place in the text of a file. A copy is a mark to return to.
///
/// Each Take... function passes over blanks and takes what it is named after, and then gives true. On failure it gives
/// false, with the place anywhere on the way and the output in any state. Only texts and bytes go on in the next line.
class VHiveLines {
  public:
    /// The text must outlive the object.
    explicit VHiveLines(std::u16string_view text) : text(text) {}

    bool AtEnd() const { return position >= text.size(); }
    /// The number of the line, from 1.
    std::size_t Line() const { return line; }
    /// The next character of the line that is no blank, which stays; 0 at the line's end.
    char16_t Peek();
    /// What is left of the line, without the blanks around it. Takes nothing.
    std::u16string_view RestOfLine() const;
    /// Goes to the beginning of the next line.
    void SkipLine();
    /// Goes to the next line that is neither blank nor a comment; each comment is added to `remarks` with a line feed.
    /// False at the end of the text.
    bool SkipBlankLines(std::u16string& remarks);

    bool TakeCharacter(char16_t character);
    /// Case is ignored.
    bool TakeWord(std::u16string_view word);
    /// A text in quotes, given without them and their escapes.
    bool TakeText(std::u16string& out);
    /// What stands between [ and the ] that FindKeyEnd finds.
    bool TakeKey(std::u16string_view& path);
    /// One to `maxDigits` hex digits, and no more.
    bool TakeHexNumber(std::size_t maxDigits, std::uint32_t& number);
    /// Bytes up to the end of the line, or of those that continue it, whose comments are added to `remarks`; there may
    /// be none, and a comma may end them.
    bool TakeBytes(std::vector<std::uint8_t>& bytes, std::u16string& remarks);
    /// The end of the line, or a comment up to there, which is added to `remarks`. It stays.
    bool TakeEnd(std::u16string& remarks);

  private:
    void SkipBlanks();
    void StepOverLineBreak();
    bool IsAtLineBreak() const { return text[position] == u'\n' || text[position] == u'\r'; }
    bool TakeContinuation(std::u16string& remarks);

    std::u16string_view text;
    std::size_t position = 0;
    std::size_t line = 1;
};

/// Where in a key's line, or the rest of one, the key ends: at the first ] with nothing behind it but blanks and then
/// perhaps a comment. npos when there is none.
std::size_t FindKeyEnd(std::u16string_view line);

}  // namespace connectdialog
