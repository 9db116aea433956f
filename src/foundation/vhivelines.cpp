#include "foundation/vhivelines.h"

#include <algorithm>

#include "foundation/casefold.h"
#include "foundation/hextext.h"

namespace connectdialog {

namespace {

constexpr std::u16string_view kBlanks = u" \t";
constexpr std::u16string_view kLineBreaks = u"\r\n";

}  // namespace

void VHiveLines::SkipBlanks() {
    position = std::min(text.find_first_not_of(kBlanks, position), text.size());
}

char16_t VHiveLines::Peek() {
    SkipBlanks();
    return AtEnd() || IsAtLineBreak() ? u'\0' : text[position];
}

std::u16string_view VHiveLines::RestOfLine() const {
    std::u16string_view rest = text.substr(position);
    rest = rest.substr(0, rest.find_first_of(kLineBreaks));
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    return rest.substr(0, rest.find_last_not_of(kBlanks) + 1);
}

void VHiveLines::StepOverLineBreak() {
    const bool isPair = text.substr(position).starts_with(u"\r\n");
    position += isPair ? 2 : 1;
    ++line;
}

void VHiveLines::SkipLine() {
    position = std::min(text.find_first_of(kLineBreaks, position), text.size());
    if (!AtEnd()) StepOverLineBreak();
}

bool VHiveLines::SkipBlankLines(std::u16string& remarks) {
    while (!AtEnd()) {
        const char16_t first = Peek();
        if (AtEnd()) return false;
        if (!IsAtLineBreak() && first != u';') return true;
        TakeEnd(remarks);
        SkipLine();
    }
    return false;
}

bool VHiveLines::TakeCharacter(char16_t character) {
    SkipBlanks();
    if (AtEnd() || text[position] != character) return false;
    ++position;
    return true;
}

bool VHiveLines::TakeWord(std::u16string_view word) {
    SkipBlanks();
    if (!EqualsNoCase(text.substr(position, word.size()), word)) return false;
    position += word.size();
    return true;
}

bool VHiveLines::TakeText(std::u16string& out) {
    if (!TakeCharacter(u'"')) return false;
    while (!AtEnd()) {
        const std::size_t plainEnd = std::min(text.find_first_of(u"\"\\\r\n", position), text.size());
        out += text.substr(position, plainEnd - position);
        position = plainEnd;
        if (AtEnd()) return false;
        const std::size_t start = position;
        if (IsAtLineBreak()) {
            StepOverLineBreak();
            out += text.substr(start, position - start);
            continue;
        }
        ++position;
        if (text[start] == u'"') return true;
        if (AtEnd() || (text[position] != u'"' && text[position] != u'\\')) return false;
        out += text[position++];
    }
    return false;
}

bool VHiveLines::TakeKey(std::u16string_view& path) {
    if (!TakeCharacter(u'[')) return false;
    const std::u16string_view rest = text.substr(position, text.find_first_of(kLineBreaks, position) - position);
    const std::size_t length = FindKeyEnd(rest);
    if (length == rest.npos) return false;
    path = rest.substr(0, length);
    position += length + 1;
    return true;
}

bool VHiveLines::TakeHexNumber(std::size_t maxDigits, std::uint32_t& number) {
    SkipBlanks();
    number = 0;
    std::size_t digits = 0;
    for (; !AtEnd() && HexDigitValue(text[position]) != kNoHexDigit; ++digits, ++position) {
        number = number << 4 | HexDigitValue(text[position]);
    }
    return digits >= 1 && digits <= maxDigits;
}

bool VHiveLines::TakeContinuation(std::u16string& remarks) {
    const VHiveLines mark = *this;
    std::u16string found;
    if (TakeCharacter(u'\\') && TakeEnd(found) && !AtEnd()) {
        StepOverLineBreak();
        remarks += found;
        return true;
    }
    *this = mark;
    return false;
}

bool VHiveLines::TakeBytes(std::vector<std::uint8_t>& bytes, std::u16string& remarks) {
    while (TakeContinuation(remarks)) {
    }
    for (char16_t next = Peek(); next != u'\0' && next != u';'; next = Peek()) {
        std::uint32_t byte = 0;
        if (!TakeHexNumber(2, byte)) return false;
        bytes.push_back(static_cast<std::uint8_t>(byte));
        const bool hasComma = TakeCharacter(u',');
        while (hasComma && TakeContinuation(remarks)) {
        }
        if (!hasComma) break;
    }
    return true;
}

bool VHiveLines::TakeEnd(std::u16string& remarks) {
    if (Peek() == u';') {
        remarks += RestOfLine();
        remarks += u'\n';
        position = std::min(text.find_first_of(kLineBreaks, position), text.size());
    }
    SkipBlanks();
    return AtEnd() || IsAtLineBreak();
}

std::size_t FindKeyEnd(std::u16string_view line) {
    for (std::size_t end = line.find(u']'); end != line.npos; end = line.find(u']', end + 1)) {
        const std::size_t next = line.find_first_not_of(kBlanks, end + 1);
        if (next == line.npos || line[next] == u';') return end;
    }
    return line.npos;
}

}  // namespace connectdialog
