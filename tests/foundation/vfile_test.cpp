// Files: who may open them, what they share, and their text.
#include "foundation/vfile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "foundation/vaccountlookup.h"
#include "foundation/vsecuritydescriptor.h"
#include "foundation/vtextfile.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using test::TemporaryFolder;

constexpr std::uint32_t kReadWrite = platform::kGenericRead | platform::kGenericWrite;

VSid Account(platform::Account::Kind kind, std::uint32_t more) {
    platform::Account account = platform::GetOwnAccount(kind);
    account.id += more;
    return MakeAccountSid(account);
}

TEST(File, ADescriptorSaysWhoMayOpenAFileThatIsMade) {
    using Kind = platform::Account::Kind;
    constexpr std::uint32_t kWorld[] = {0};
    const VSid everybody(1, kWorld);
    const VSid me = Account(Kind::kUser, 0);
    const VSid myGroup = Account(Kind::kGroup, 0);
    const VSid another = Account(Kind::kUser, 1);
    constexpr AccessKind kAllow = AccessKind::kAllow;
    constexpr AccessKind kDeny = AccessKind::kDeny;
    constexpr std::uint32_t kAll = 0x001F01FF;
    using Entry = std::tuple<AccessKind, std::uint32_t, VSid>;
    const std::pair<std::vector<Entry>, unsigned> rows[] = {
        {{{kAllow, 0x10000000, me}, {kAllow, platform::kGenericRead, myGroup}}, 0640},
        {{{kDeny, platform::kGenericWrite, everybody}, {kAllow, kAll, everybody}}, 0444},
        {{{kDeny, kAll, another}, {kAllow, kAll, everybody}}, 0600},
        {{{kDeny, platform::kFileWriteData, myGroup}, {kAllow, kAll, everybody}}, 0446},
    };
    const mode_t mask = umask(0);
    const TemporaryFolder folder;
    const auto modeOfNew = [&](const VSecurityDescriptor* descriptor) {
        VFile file;
        file.SetSecurityDescriptor(descriptor);
        std::filesystem::remove(folder / "new");
        EXPECT_TRUE(file.Open(folder.Name("new"), kReadWrite, platform::kCreateNew));
        return test::ModeOf(folder / "new");
    };
    for (const auto& [entries, mode] : rows) {
        VAcl dacl;
        for (const auto& [kind, mask, sid] : entries) ASSERT_TRUE(dacl.AddEntry(kind, mask, sid));
        VSecurityDescriptor descriptor;
        descriptor.SetDacl(&dacl);
        EXPECT_EQ(modeOfNew(&descriptor), mode);
    }
    VSecurityDescriptor open;
    EXPECT_EQ(modeOfNew(&open), 0600U) << "no DACL";
    open.SetDacl(nullptr);
    EXPECT_EQ(modeOfNew(&open), 0666U) << "the null DACL";
    EXPECT_EQ(modeOfNew(nullptr), 0600U);
    umask(mask);
}

TEST(File, ReplacingLeavesTheOldFileOrTheNewOne) {
    const TemporaryFolder folder;
    folder.Write("old", "old");
    std::filesystem::create_symlink("old", folder.GetPath() / "link");
    EXPECT_TRUE(platform::ReplaceFileWith(folder.Name("link"), "new"));
    EXPECT_EQ(folder.Read("old"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath() / "link"));
    EXPECT_EQ(test::ModeOf(folder / "old"), 0600U);
    const auto files = [&] { return std::ranges::distance(std::filesystem::directory_iterator(folder.GetPath())); };
    EXPECT_EQ(files(), 2) << "nothing is left beside them";
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder.GetPath() / "dangling");
    const std::pair<const char*, std::uint32_t> rows[] = {
        {"pipe", 5}, {".", 5}, {"dangling", 1921}, {"none/x", 2}, {"old/x", 3}};
    for (const auto& [leaf, error] : rows) {
        EXPECT_FALSE(platform::ReplaceFileWith(folder.Name(leaf), "new")) << leaf;
        EXPECT_EQ(platform::GetLastErrorCode(), error) << leaf;
    }
    EXPECT_EQ(files(), 4);
}

TEST(File, DispositionsAndTheirLastErrors) {
    const std::tuple<const char*, std::uint32_t, std::uint32_t, std::uint32_t, bool, const char*> rows[] = {
        // The file, access, disposition; the last error, whether it opens, and what "old" holds after "text" before.
        {"new", kReadWrite, platform::kCreateNew, 0, true, nullptr},
        {"old", kReadWrite, platform::kCreateNew, platform::kFileExists, false, "text"},
        {"old", kReadWrite, platform::kCreateAlways, platform::kAlreadyExists, true, ""},
        {"old", kReadWrite, platform::kOpenExisting, 0, true, "text"},
        {"old", kReadWrite, platform::kOpenAlways, platform::kAlreadyExists, true, "text"},
        {"old", kReadWrite, platform::kTruncateExisting, 0, true, ""},
        {"old", platform::kGenericRead, platform::kCreateAlways, platform::kInvalidParameter, false, "text"},
        {".", platform::kGenericRead, platform::kOpenExisting, platform::kAccessDenied, false, nullptr},
        {"old/x", kReadWrite, platform::kCreateAlways, platform::kPathNotFound, false, "text"},
    };
    for (const auto& [leaf, access, disposition, lastError, opens, content] : rows) {
        SCOPED_TRACE(std::string(leaf) + " " + std::to_string(disposition));
        const TemporaryFolder folder;
        folder.Write("old", "text");
        VFile file;
        EXPECT_EQ(file.Open(folder.Name(leaf), access, disposition), opens);
        EXPECT_EQ(platform::GetLastErrorCode(), lastError);
        EXPECT_EQ(file.GetName(), opens ? folder.Name(leaf) : VUnicodeString());
        if (content != nullptr) {
            EXPECT_EQ(folder.Read("old"), content);
        }
    }
}

TEST(File, WritesAtItsPositionAndMapsAView) {
    const TemporaryFolder folder;
    VFile file;
    ASSERT_TRUE(file.Open(folder.Name("data"), kReadWrite, platform::kCreateNew));
    EXPECT_EQ(file.MapView(true), nullptr) << "nothing to map";
    EXPECT_TRUE(file.Write("0123456789", 10) && file.WriteAt(2, "ab", 2));
    EXPECT_TRUE(file.Seek(-4, platform::SeekOrigin::kEnd) && file.SetEndOfFile());
    auto* view = static_cast<char*>(file.MapView(true));
    ASSERT_NE(view, nullptr);
    *view = 'x';
    VFile other;
    EXPECT_FALSE(other.Open(folder.Name("data"), kReadWrite, platform::kCreateAlways)) << "it is not shared";
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kSharingViolation);
    EXPECT_EQ(folder.Read("data"), "x1ab45");
}

TEST(File, RangeLocksAreSeenByAnotherProcess) {
    using platform::LockMode;
    const TemporaryFolder folder;
    folder.Write("data", "text");
    const auto othersCanLock = [&](std::uint64_t offset, LockMode mode) {
        test::ChildProcess child([&](test::ChildProcess&) {
            const auto file =
                platform::OpenFile(folder.Name("data"), {kReadWrite, platform::kOpenExisting, platform::kShareRead});
            if (platform::LockFileRange(file, offset, 1, mode, false)) return 1;
            return platform::GetLastErrorCode() == platform::kLockViolation ? 0 : 2;
        });
        return child.Wait();
    };
    VFile file;
    file.SetShareMode(platform::kShareRead | platform::kShareWrite);
    ASSERT_TRUE(file.Open(folder.Name("data"), kReadWrite, platform::kOpenExisting));
    ASSERT_TRUE(file.LockRange(10, 10, true) && file.LockRange(30, 10, false));
    EXPECT_EQ(othersCanLock(20, LockMode::kExclusive), 1);
    EXPECT_EQ(othersCanLock(30, LockMode::kShared), 1);
    EXPECT_EQ(othersCanLock(30, LockMode::kExclusive), 0);
    {
        // Another handle of this process that comes and goes takes no lock away.
        VFile other;
        other.SetShareMode(platform::kShareRead);
        ASSERT_TRUE(other.Open(folder.Name("data"), kReadWrite, platform::kOpenExisting));
    }
    EXPECT_EQ(othersCanLock(19, LockMode::kShared), 0);
    EXPECT_TRUE(file.UnlockRange(10, 10));
    EXPECT_EQ(othersCanLock(10, LockMode::kExclusive), 1);
    file.Close();
    EXPECT_EQ(othersCanLock(30, LockMode::kExclusive), 1);
}

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

/// What it is, the bytes, their encoding and lines, and the last error.
const std::tuple<const char*, std::string, TextEncoding, Lines, std::uint32_t> kReadRows[] = {
    {"empty file", "", TextEncoding::kLocal, {}, platform::kHandleEof},
    {"no end at the last line", "a\nb", TextEncoding::kLocal, {u"a", u"b"}, platform::kHandleEof},
    {"all ends",
     "a\rb\nc\r\n\r\r\n\n\nd\r",
     TextEncoding::kLocal,
     {u"a", u"b", u"c", u"", u"", u"", u"", u"d"},
     platform::kHandleEof},
    {"zeros are text", "a\0b\n"s, TextEncoding::kLocal, {u"a\0b"s}, platform::kHandleEof},
    {"UTF-8", "\xEF\xBB\xBF\xC3\xA4\n\xF0\x9F\x98\x80", TextEncoding::kUtf8, {u"ä", u"😀"}, platform::kHandleEof},
    {"UTF-16LE", "\xFF\xFE\xE4\0\r\0\n\0b\0"s, TextEncoding::kUtf16Le, {u"ä", u"b"}, platform::kHandleEof},
    {"UTF-16BE", "\xFE\xFF\0\xE4\0\r\0\n\0b"s, TextEncoding::kUtf16Be, {u"ä", u"b"}, platform::kHandleEof},
    {"malformed UTF-8", "\xEF\xBB\xBFx\nb\xC3(c\n", TextEncoding::kUtf8, {u"x", u"b"}, platform::kNoUnicodeTranslation},
    {"malformed local text",
     "\xC3\n\xA4\xC3(",
     TextEncoding::kLocal,
     {u"\xFFFD", u"\xFFFD\xFFFD("},
     platform::kHandleEof},
};

TEST_F(TextFileTest, FindsTheEncodingAndTheLines) {
    for (const auto& [name, bytes, encoding, lines, lastError] : kReadRows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ReadLines(bytes), lines);
        EXPECT_EQ(platform::GetLastErrorCode(), lastError);
        EXPECT_EQ(file.GetEncoding(), encoding);
    }
}

TEST_F(TextFileTest, WritesEachEncodingWithItsMark) {
    const std::tuple<TextEncoding, LineEnding, std::string> rows[] = {
        {TextEncoding::kUnknown, LineEnding::kCrLf, "\xFF\xFE\xE4\0=\xD8\0\xDE\r\0\n\0"s},
        {TextEncoding::kLocal, LineEnding::kCr, "\xC3\xA4\xF0\x9F\x98\x80\r"},
        {TextEncoding::kUtf8, LineEnding::kLf, "\xEF\xBB\xBF\xC3\xA4\xF0\x9F\x98\x80\n"},
        {TextEncoding::kUtf16Be, LineEnding::kCrLfToo, "\xFE\xFF\0\xE4\xD8=\xDE\0\0\r\0\n"s},
        {TextEncoding::kUtf32Le, LineEnding::kLf, "\xFF\xFE\0\0\xE4\0\0\0\0\xF6\1\0\n\0\0\0"s},
    };
    for (const auto& [encoding, ending, bytes] : rows) {
        file.SetEncoding(encoding);
        file.SetLineEnding(ending);
        ASSERT_TRUE(Open(platform::kCreateAlways));
        EXPECT_TRUE(file.WriteLine(u"ä😀"));
        EXPECT_TRUE(file.Close());
        EXPECT_EQ(folder.Read("text"), bytes) << static_cast<int>(encoding);
    }
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
