#include "foundation/vtextfile.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::u16string>;

Lines ReadAll(VTextFile& file) {
    Lines lines;
    VUnicodeString line;
    while (file.ReadLine(line)) lines.emplace_back(line.View());
    EXPECT_TRUE(line.IsEmpty());
    return lines;
}

class TextFileTest : public testing::Test {
  protected:
    bool Open(std::uint32_t disposition, std::uint32_t access = platform::kGenericRead | platform::kGenericWrite) {
        return file.Open(folder.Name("text"), access, disposition);
    }
    Lines ReadLines(std::string_view bytes) {
        folder.Write("text", bytes);
        EXPECT_TRUE(Open(platform::kOpenExisting, platform::kGenericRead));
        return ReadAll(file);
    }

    test::TemporaryFolder folder;
    VTextFile file;
};

struct ReadRow {
    const char* name;
    std::string bytes;
    TextEncoding encoding;
    Lines lines;
    std::uint32_t lastError = platform::kHandleEof;
};

const ReadRow kReadRows[] = {
    {"empty file", "", TextEncoding::kLocal, {}},
    {"mark alone", "\xEF\xBB\xBF", TextEncoding::kUtf8, {}},
    {"half a mark is text", "\xFFx", TextEncoding::kLocal, {u"\xFFFDx"}},
    {"no end at the last line", "a\nb", TextEncoding::kLocal, {u"a", u"b"}},
    {"all ends", "a\rb\nc\r\n\r\r\n\n\nd\r", TextEncoding::kLocal, {u"a", u"b", u"c", u"", u"", u"", u"", u"d"}},
    {"zeros are text", "a\0b\n"s, TextEncoding::kLocal, {u"a\0b"s}},
    {"UTF-8", "\xEF\xBB\xBF\xC3\xA4\n\xF0\x9F\x98\x80", TextEncoding::kUtf8, {u"ä", u"😀"}},
    {"UTF-16LE", "\xFF\xFE\xE4\0\r\0\n\0b\0"s, TextEncoding::kUtf16Le, {u"ä", u"b"}},
    {"UTF-16BE", "\xFE\xFF\0\xE4\0\r\0\n\0b"s, TextEncoding::kUtf16Be, {u"ä", u"b"}},
    {"UTF-16 cut in a unit", "\xFF\xFEx\0y"s, TextEncoding::kUtf16Le, {u"x"}},
    {"malformed UTF-8", "\xEF\xBB\xBFx\nb\xC3(c\n", TextEncoding::kUtf8, {u"x", u"b"}, platform::kNoUnicodeTranslation},
    {"UTF-8 cut in a sequence", "\xEF\xBB\xBFx\xE2\x82", TextEncoding::kUtf8, {u"x"}},
    {"local text cut in a sequence", "a\xE2\x82", TextEncoding::kLocal, {u"a\xFFFD"}},
    {"malformed local text", "\xC3\n\xA4\xC3(", TextEncoding::kLocal, {u"\xFFFD", u"\xFFFD\xFFFD("}},
};

TEST_F(TextFileTest, FindsTheEncodingAndTheLines) {
    for (const ReadRow& row : kReadRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ReadLines(row.bytes), row.lines);
        EXPECT_EQ(platform::GetLastErrorCode(), row.lastError);
        EXPECT_EQ(file.GetEncoding(), row.encoding);
    }
}

/// Moves the text over the borders of the buffer, byte by byte.
TEST_F(TextFileTest, BordersOfTheBufferDoNoDamage) {
    const std::u16string last = u"ä€😀\xFEFFz";
    struct Form {
        std::string mark;
        std::string (*encode)(std::u16string_view);
    };
    const auto units = [](std::u16string_view text) {
        std::string bytes;
        for (const char16_t unit : text) bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        return bytes;
    };
    for (const Form& form :
         {Form{"", platform::ToNarrow}, Form{"\xEF\xBB\xBF", platform::ToNarrow}, Form{"\xFF\xFE", units}}) {
        for (std::size_t length = 4070; length <= 4100; ++length) {
            const std::size_t count = form.encode(u"x").size() == 2 ? length / 2 : length;
            const std::u16string first(count, u'x');
            const Lines lines = ReadLines(form.mark + form.encode(first + u"\r\n" + last + u"\r\n\r\n" + last));
            ASSERT_EQ(lines, (Lines{first, last, u"", last})) << form.mark.size() << " " << length;
        }
    }
}

TEST_F(TextFileTest, WritesEachEncodingWithItsMark) {
    const struct {
        TextEncoding encoding;
        LineEnding ending;
        std::string bytes;
    } rows[] = {
        {TextEncoding::kUnknown, LineEnding::kCrLf, "\xFF\xFE\xE4\0=\xD8\0\xDE\r\0\n\0"s},
        {TextEncoding::kLocal, LineEnding::kCr, "\xC3\xA4\xF0\x9F\x98\x80\r"},
        {TextEncoding::kUtf8, LineEnding::kLf, "\xEF\xBB\xBF\xC3\xA4\xF0\x9F\x98\x80\n"},
        {TextEncoding::kUtf16Be, LineEnding::kCrLfToo, "\xFE\xFF\0\xE4\xD8=\xDE\0\0\r\0\n"s},
        {TextEncoding::kUtf32Le, LineEnding::kLf, "\xFF\xFE\0\0\xE4\0\0\0\0\xF6\1\0\n\0\0\0"s},
    };
    for (const auto& row : rows) {
        file.SetEncoding(row.encoding);
        file.SetLineEnding(row.ending);
        ASSERT_TRUE(Open(platform::kCreateAlways));
        EXPECT_TRUE(file.WriteLine(u"ä😀"));
        EXPECT_TRUE(file.Close());
        EXPECT_EQ(folder.Read("text"), row.bytes) << static_cast<int>(row.encoding);
    }
}

TEST_F(TextFileTest, RefusesTextThatUtf8CannotHold) {
    file.SetEncoding(TextEncoding::kUtf8);
    ASSERT_TRUE(Open(platform::kCreateAlways));
    EXPECT_FALSE(file.WriteLine(u"a\xD83D"));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kNoUnicodeTranslation);
    EXPECT_EQ(folder.Read("text"), "\xEF\xBB\xBF");
}

TEST_F(TextFileTest, OpenAlwaysGoesOnInTheEncodingOfTheFile) {
    file.SetEncoding(TextEncoding::kUtf16Be);
    ASSERT_TRUE(Open(platform::kOpenAlways));
    EXPECT_TRUE(file.Write(u"a"));
    VTextFile again;
    file.Close();
    ASSERT_TRUE(
        again.Open(folder.Name("text"), platform::kGenericRead | platform::kGenericWrite, platform::kOpenAlways));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kAlreadyExists);
    EXPECT_TRUE(again.Write(u"b"));
    EXPECT_EQ(folder.Read("text"), "\xFE\xFF\0a\0b"s);
    EXPECT_TRUE(again.Seek(0, platform::SeekOrigin::kBegin));
    EXPECT_EQ(ReadAll(again), Lines{u"ab"});
}

TEST_F(TextFileTest, WritesBehindWhatWasReadAndForgetsTheRest) {
    folder.Write("text", "one\ntwo\n");
    ASSERT_TRUE(Open(platform::kOpenExisting));
    file.SetLocking(true);
    file.SetLineEnding(LineEnding::kLf);
    VUnicodeString line;
    EXPECT_TRUE(file.ReadLine(line));
    EXPECT_TRUE(file.WriteLine(u"three"));
    EXPECT_FALSE(file.ReadLine(line));
    EXPECT_EQ(folder.Read("text"), "one\ntwo\nthree\n");
}

TEST_F(TextFileTest, EndsALineThatIsTooLong) {
    folder.Write("text", "");
    std::filesystem::resize_file(folder.GetPath() / "text", 40 << 20);
    ASSERT_TRUE(Open(platform::kOpenExisting));
    VUnicodeString line(u"old");
    EXPECT_FALSE(file.ReadLine(line));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kFileTooLarge);
    EXPECT_TRUE(line.IsEmpty());
}

TEST_F(TextFileTest, FailsClearlyWhereThereIsNoTextFile) {
    EXPECT_FALSE(Open(platform::kOpenExisting));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kFileNotFound);
    ASSERT_EQ(mkfifo((folder.GetPath() / "text").c_str(), 0600), 0);
    EXPECT_FALSE(Open(platform::kOpenExisting, platform::kGenericRead));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kAccessDenied);
    VUnicodeString line;
    EXPECT_FALSE(file.ReadLine(line));
    EXPECT_FALSE(file.WriteLine(u"x"));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kInvalidHandle);
}

}  // namespace
}  // namespace connectdialog
