#include "foundation/vhivewriter.h"

#include "foundation/hextext.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

/// Lines of bytes are broken before this column.
constexpr std::size_t kLineWidth = 77;
constexpr std::u16string_view kLineEnd = u"\r\n";

class HiveWriter {
  public:
    explicit HiveWriter(const VHiveTree& tree);
    std::u16string text;

  private:
    void WriteRemarks(std::u16string_view remarks);
    /// The key at `path`, with those below it.
    void WriteKey(const VHiveKey& key);
    void WriteName(std::u16string_view name);
    void WriteValue(const VHiveValue& value);
    void WriteQuoted(std::u16string_view characters);
    void WriteBytes(const VHiveValue& value);
    void WriteHexNumber(std::uint32_t number, std::size_t digits);
    void EndLine() { text += kLineEnd; }

    std::u16string path;
};

/// The characters of a string value when it can stand in quotes: whole, terminated once, fit for a line.
bool GetPlainText(const VHiveValue& value, std::u16string& characters) {
    if (value.type != kHiveString || value.data.size() < 2 || value.data.size() % 2 != 0) return false;
    characters = value.GetCharacters();
    if (characters.back() != u'\0') return false;
    characters.pop_back();
    return IsFitForHive(characters);
}

HiveWriter::HiveWriter(const VHiveTree& tree) {
    text = u"Windows Registry Editor Version 5.00";
    EndLine();
    WriteKey(*tree.Find({}));
    if (!tree.closingRemarks.empty()) EndLine();
    WriteRemarks(tree.closingRemarks);
}

void HiveWriter::WriteRemarks(std::u16string_view remarks) {
    while (!remarks.empty()) {
        const std::size_t end = remarks.find(u'\n');
        text += remarks.substr(0, end);
        EndLine();
        remarks.remove_prefix(end + 1);
    }
}

void HiveWriter::WriteKey(const VHiveKey& key) {
    const bool isTold = !key.values.empty() || !key.remarks.empty() || key.children.empty();
    if (isTold && !path.empty()) {
        EndLine();
        WriteRemarks(key.remarks);
        text += u'[';
        text += path;
        text += u']';
        EndLine();
    }
    for (const auto& [name, entry] : key.values) {
        WriteRemarks(entry.remarks);
        WriteName(name);
        WriteValue(entry.value);
        EndLine();
    }
    for (const auto& [name, child] : key.children) {
        const std::size_t length = path.size();
        if (length > 0) path += u'\\';
        path += name;
        WriteKey(*child);
        path.resize(length);
    }
}

void HiveWriter::WriteName(std::u16string_view name) {
    if (name.empty()) {
        text += u'@';
    } else {
        WriteQuoted(name);
    }
    text += u'=';
}

void HiveWriter::WriteValue(const VHiveValue& value) {
    std::u16string characters;
    std::uint32_t number = 0;
    if (GetPlainText(value, characters)) {
        WriteQuoted(characters);
    } else if (value.type == kHiveDword && value.GetDword(number)) {
        text += u"dword:";
        WriteHexNumber(number, 8);
    } else {
        WriteBytes(value);
    }
}

void HiveWriter::WriteQuoted(std::u16string_view characters) {
    text += u'"';
    for (const char16_t character : characters) {
        if (character == u'"' || character == u'\\') text += u'\\';
        text += character;
    }
    text += u'"';
}

void HiveWriter::WriteBytes(const VHiveValue& value) {
    text += u"hex";
    if (value.type != kHiveBinary) {
        text += u'(';
        WriteHexNumber(value.type, 1);
        text += u')';
    }
    text += u':';
    std::size_t column = text.size() - (text.rfind(u'\n') + 1);
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        if (column > kLineWidth - 4 && i > 0) {
            text += u'\\';
            EndLine();
            text += u"  ";
            column = 2;
        }
        WriteHexNumber(value.data[i], 2);
        if (i + 1 < value.data.size()) text += u',';
        column += 3;
    }
}

/// At least so many digits.
void HiveWriter::WriteHexNumber(std::uint32_t number, std::size_t digits) {
    std::size_t count = digits;
    while (count < 8 && number >> (4 * count) != 0) ++count;
    for (; count > 0; --count) text += HexDigit(number >> (4 * (count - 1)), HexCase::kLower);
}

std::string AsWideBytes(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    bytes.reserve(bytes.size() + text.size() * 2);
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

}  // namespace

std::string WriteHive(const VHiveTree& tree) {
    const HiveWriter writer(tree);
    return tree.isWide ? AsWideBytes(writer.text) : platform::ToNarrow(writer.text);
}

}  // namespace connectdialog
