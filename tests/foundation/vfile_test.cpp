#include "foundation/vfile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "foundation/vaccountlookup.h"
#include "foundation/vsecuritydescriptor.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using test::TemporaryFolder;

constexpr std::uint32_t kReadWrite = platform::kGenericRead | platform::kGenericWrite;

struct OpenRow {
    const char* leaf;
    std::uint32_t access;
    std::uint32_t disposition;
    std::uint32_t lastError;
    bool opens;
    const char* content;  ///< of "old", which holds "text" before; null when it is not looked at
};

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
    struct Entry {
        AccessKind kind;
        std::uint32_t mask;
        VSid sid;
    };
    const std::pair<std::vector<Entry>, unsigned> rows[] = {
        {{}, 0},
        {{{kAllow, 0x10000000, me}, {kAllow, platform::kGenericRead, myGroup}}, 0640},
        {{{kDeny, platform::kGenericWrite, everybody}, {kAllow, kAll, everybody}}, 0444},
        {{{kAllow, kAll, everybody}, {kDeny, kAll, myGroup}}, 0666},
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
        for (const Entry& entry : entries) ASSERT_TRUE(dacl.AddEntry(entry.kind, entry.mask, entry.sid));
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
    const OpenRow rows[] = {
        {"new", kReadWrite, platform::kCreateNew, 0, true, nullptr},
        {"old", kReadWrite, platform::kCreateNew, platform::kFileExists, false, "text"},
        {"old", kReadWrite, platform::kCreateAlways, platform::kAlreadyExists, true, ""},
        {"new", kReadWrite, platform::kOpenExisting, platform::kFileNotFound, false, nullptr},
        {"old", kReadWrite, platform::kOpenExisting, 0, true, "text"},
        {"new", kReadWrite, platform::kOpenAlways, 0, true, nullptr},
        {"old", kReadWrite, platform::kOpenAlways, platform::kAlreadyExists, true, "text"},
        {"old", kReadWrite, platform::kTruncateExisting, 0, true, ""},
        {"old", platform::kGenericRead, platform::kCreateAlways, platform::kInvalidParameter, false, "text"},
        {"old", kReadWrite, 6, platform::kInvalidParameter, false, "text"},
        {".", platform::kGenericRead, platform::kOpenExisting, platform::kAccessDenied, false, nullptr},
        {"old/x", kReadWrite, platform::kCreateAlways, platform::kPathNotFound, false, "text"},
    };
    for (const OpenRow& row : rows) {
        SCOPED_TRACE(std::string(row.leaf) + " " + std::to_string(row.disposition));
        const TemporaryFolder folder;
        folder.Write("old", "text");
        VFile file;
        EXPECT_EQ(file.Open(folder.Name(row.leaf), row.access, row.disposition), row.opens);
        EXPECT_EQ(platform::GetLastErrorCode(), row.lastError);
        EXPECT_EQ(file.GetName(), row.opens ? folder.Name(row.leaf) : VUnicodeString());
        if (row.content != nullptr) {
            EXPECT_EQ(folder.Read("old"), row.content);
        }
    }
}

TEST(File, ReadsWritesAndEnds) {
    const TemporaryFolder folder;
    VFile file;
    ASSERT_TRUE(file.Open(folder.Name("data"), kReadWrite, platform::kCreateNew));
    EXPECT_TRUE(file.Write("0123456789", 10));
    EXPECT_TRUE(file.WriteAt(2, "ab", 2));
    std::uint64_t position = 0;
    EXPECT_TRUE(file.GetPosition(position));
    EXPECT_EQ(position, 10U);
    char bytes[16] = {};
    std::size_t done = 0;
    EXPECT_TRUE(file.ReadAt(8, bytes, sizeof(bytes), done));
    EXPECT_EQ(std::string(bytes, done), "89");
    EXPECT_TRUE(file.Seek(-4, platform::SeekOrigin::kEnd));
    EXPECT_TRUE(file.SetEndOfFile());
    EXPECT_EQ(folder.Read("data"), "01ab45");
    EXPECT_FALSE(file.Seek(-1, platform::SeekOrigin::kBegin) || file.WriteAt(~std::uint64_t{0}, "x", 1));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kInvalidParameter);
}

TEST(File, AppendsAtTheEndAndRefusesWhatItsAccessDoesNotAllow) {
    const TemporaryFolder folder;
    folder.Write("data", "abc");
    VFile file;
    ASSERT_TRUE(file.Open(folder.Name("data"), platform::kFileAppendData, platform::kOpenExisting));
    EXPECT_TRUE(file.Write("d", 1));
    EXPECT_EQ(folder.Read("data"), "abcd");
    char byte = 0;
    std::size_t done = 0;
    EXPECT_FALSE(file.Read(&byte, 1, done));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kAccessDenied);
    ASSERT_TRUE(file.Open(folder.Name("data"), platform::kGenericRead, platform::kOpenExisting));
    EXPECT_FALSE(file.Write("d", 1));
    EXPECT_FALSE(file.LockRange(0, 1, true));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kAccessDenied);
}

TEST(File, ShareModeKeepsOthersOut) {
    const std::tuple<std::uint32_t, std::uint32_t, bool> rows[] = {
        {0, 1, false}, {1, 0, false}, {1, 1, true}, {3, 1, true}};
    for (const auto& [firstShares, secondShares, opens] : rows) {
        const TemporaryFolder folder;
        folder.Write("data", "text");
        VFile first;
        first.SetShareMode(firstShares);
        ASSERT_TRUE(first.Open(folder.Name("data"), kReadWrite, platform::kOpenExisting));
        VFile second;
        second.SetShareMode(secondShares);
        EXPECT_EQ(second.Open(folder.Name("data"), kReadWrite, platform::kCreateAlways), opens);
        EXPECT_EQ(platform::GetLastErrorCode(), opens ? platform::kAlreadyExists : platform::kSharingViolation);
        EXPECT_EQ(folder.Read("data"), opens ? "" : "text") << "a file that is refused must not be emptied";
        first.Close();
        EXPECT_TRUE(second.Open(folder.Name("data"), kReadWrite, platform::kOpenExisting));
    }
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

TEST(File, MapsAViewUntilItIsClosed) {
    const TemporaryFolder folder;
    folder.Write("data", "text");
    VFile file;
    ASSERT_TRUE(file.Open(folder.Name("data"), kReadWrite, platform::kOpenExisting));
    auto* view = static_cast<char*>(file.MapView(true));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(file.GetViewSize(), 4U);
    std::copy_n("next", 4, view);
    EXPECT_EQ(folder.Read("data"), "next");
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(file.GetViewSize(), 0U);
    ASSERT_TRUE(file.Open(folder.Name("data"), kReadWrite, platform::kTruncateExisting));
    EXPECT_EQ(file.MapView(false), nullptr);
}

}  // namespace
}  // namespace connectdialog
