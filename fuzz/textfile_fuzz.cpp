// Reads any bytes as a text file, and compares the lines with those of the same text decoded in one piece; then writes
// the lines and reads them back.
//
// The first byte of the input says how much of plain text is put behind the mark, so that the input comes to stand
// where the read buffer ends.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "foundation/vtextfile.h"
#include "fuzz/memoryfile.h"
#include "fuzz/require.h"

using namespace connectdialog;
using fuzz::MemoryFile;
using fuzz::Require;

namespace {

using Lines = std::vector<std::u16string>;

Lines Split(std::u16string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of(u"\r\n");
        lines.emplace_back(text.substr(0, end));
        if (end == text.npos) break;
        text.remove_prefix(text.substr(end).starts_with(u"\r\n") ? end + 2 : end + 1);
    }
    return lines;
}

Lines ExpectedLines(std::string_view bytes) {
    const TextEncoding encoding = DetectEncoding(bytes);
    bytes.remove_prefix(MarkOf(encoding).size());
    std::u16string text(bytes.size(), u'\0');
    text.resize(DecodeText(encoding, bytes, true, text.data()).written);
    return Split(text);
}

Lines ReadLines(VTextFile& file, const VUnicodeString& name) {
    Require(file.Open(name, platform::kGenericRead, platform::kOpenExisting), "the file opens");
    Lines lines;
    VUnicodeString line;
    while (file.ReadLine(line)) lines.emplace_back(line.View());
    Require(line.IsEmpty(), "no line is left at the end");
    return lines;
}

void WriteLines(VTextFile& file, const VUnicodeString& name, const Lines& lines, LineEnding ending) {
    file.SetLineEnding(ending);
    const auto access = platform::kGenericRead | platform::kGenericWrite;
    Require(file.Open(name, access, platform::kCreateAlways), "the file is made");
    for (const std::u16string& line : lines) Require(file.WriteLine(std::u16string_view(line)), "a line is written");
}

std::string WithFiller(std::string_view bytes, std::uint8_t amount) {
    const std::size_t mark = MarkOf(DetectEncoding(bytes)).size();
    constexpr std::size_t kMost = 4112;
    std::string filled(bytes.substr(0, mark));
    if (amount < 64) filled.append(kMost - amount, 'x');
    return filled.append(bytes.substr(mark));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile memory;
    if (size == 0) return 0;
    const std::string bytes = WithFiller({reinterpret_cast<const char*>(data + 1), size - 1}, data[0]);
    memory.Write(bytes);
    VTextFile file;
    const Lines lines = ReadLines(file, memory.Name());
    Require(lines == ExpectedLines(bytes), "the lines are those of the whole text");

    // UTF-16 takes every line as it is, also one with lone surrogates.
    VTextFile copy;
    file.Close();
    copy.SetEncoding(data[0] % 2 == 0 ? TextEncoding::kUtf16Le : TextEncoding::kUtf16Be);
    WriteLines(copy, memory.Name(), lines, static_cast<LineEnding>(data[0] % 4));
    copy.Close();
    Require(ReadLines(copy, memory.Name()) == lines, "the lines stay when they are written");
    return 0;
}
