#include "foundation/vipclock.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "foundation/vmemorymappedbuffer.h"
#include "platform/lasterror.h"
#include "support/childprocess.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;
using test::ChildProcess;

/// Gives each test a folder for run time of its own.
class RuntimeFolderTest : public testing::Test {
  protected:
    RuntimeFolderTest() { setenv("XDG_RUNTIME_DIR", folder.GetPath().c_str(), 1); }
    ~RuntimeFolderTest() override { unsetenv("XDG_RUNTIME_DIR"); }

    static bool CanAcquire(std::u16string_view name) {
        const platform::LockHandle handle = platform::OpenNamedLock(name);
        const bool acquired = platform::AcquireNamedLock(handle, false);
        platform::CloseNamedLock(handle);
        return acquired;
    }
    static std::uint32_t LockError(std::u16string_view name) { return VIpcLock(name).GetStatus().GetCode(); }

    test::TemporaryFolder folder;
    const fs::path own = folder.GetPath() / "brennmark";
};

using IpcLockTest = RuntimeFolderTest;
using MappedBufferTest = RuntimeFolderTest;

TEST_F(IpcLockTest, ExcludesAnotherProcessUntilTheLastUnlockOrItsDeath) {
    VIpcLock lock(u"name");
    ASSERT_TRUE(lock.IsCreated());
    lock.Lock();
    lock.Lock();
    ChildProcess child([&](ChildProcess& parent) {
        if (CanAcquire(u"name") || platform::GetLastErrorCode() != platform::kLockViolation) return 1;
        VIpcLock same(u"name");
        parent.Report();
        same.Lock();  // waits here for the parent
        parent.Report();
        parent.WaitForGo();
        return 0;
    });
    EXPECT_TRUE(child.WaitForReport());
    lock.Unlock();
    EXPECT_FALSE(CanAcquire(u"name"));
    EXPECT_TRUE(CanAcquire(u"other"));
    lock.Unlock();
    EXPECT_TRUE(child.WaitForReport());
    EXPECT_FALSE(CanAcquire(u"name"));
    child.Kill();
    EXPECT_TRUE(CanAcquire(u"name"));
}

TEST_F(IpcLockTest, RefusesWhatOthersCouldReach) {
    for (const char16_t* name : {u"a/../b", u"..", u""}) EXPECT_EQ(LockError(name), platform::kInvalidParameter);
    ASSERT_EQ(LockError(u"name"), 0U);
    fs::permissions(own / "name", fs::perms::others_read, fs::perm_options::add);
    EXPECT_EQ(LockError(u"name"), platform::kAccessDenied);
    fs::create_symlink(folder.GetPath() / "victim", own / "link");
    EXPECT_EQ(LockError(u"link"), platform::kCannotResolveName);
    EXPECT_FALSE(fs::exists(folder.GetPath() / "victim"));
    ASSERT_EQ(mkfifo((own / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(LockError(u"pipe"), platform::kAccessDenied);

    fs::permissions(own, fs::perms::group_exec, fs::perm_options::add);
    EXPECT_EQ(LockError(u"other"), platform::kAccessDenied);
    fs::rename(own, folder.GetPath() / "moved");
    fs::permissions(folder.GetPath() / "moved", fs::perms::group_exec, fs::perm_options::remove);
    fs::create_symlink("moved", own);
    EXPECT_EQ(LockError(u"other"), platform::kNotAFolder) << "the folder is a link";
    fs::remove(own);
    folder.Write("brennmark", "");
    EXPECT_EQ(LockError(u"other"), platform::kNotAFolder);
}

TEST_F(MappedBufferTest, NeverGrowsAndIsRefusedWithTheReason) {
    VMemoryMappedBuffer first;
    VMemoryMappedBuffer second;
    EXPECT_FALSE(first.Create(0) || first.Create(platform::kLargestSharedMemory + 1));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kInvalidParameter);
    EXPECT_FALSE(first.Create(platform::kExistingSize));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kFileNotFound);
    EXPECT_EQ(first.AppendString("x"), nullptr) << "nothing is open";
    ASSERT_TRUE(first.Create(4));
    EXPECT_NE(first.AppendString("abc"), nullptr);
    EXPECT_EQ(first.AppendString("de"), nullptr);
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kInsufficientBuffer);
    EXPECT_EQ(first.Append(nullptr, ~std::uint64_t{0}, 0), nullptr);
    EXPECT_EQ(first.GetDataLength(), 3U);
    EXPECT_THROW(first.SetDataLength(5), std::overflow_error);
    EXPECT_FALSE(second.Create(5));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kInsufficientBuffer);
    first.Close();
    EXPECT_EQ(first.GetData(), nullptr);
    EXPECT_FALSE(fs::exists(own / "5FA01C43-3B48-476A-ACC7-D86059F335B0")) << "the last one removes it";
}

TEST_F(MappedBufferTest, MemoryThatIsCutOffIsNotTouched) {
    VMemoryMappedBuffer buffer;
    ASSERT_TRUE(buffer.Create(100000));
    fs::resize_file(own / "5FA01C43-3B48-476A-ACC7-D86059F335B0", 10);
    EXPECT_EQ(buffer.AppendString("x"), nullptr);
    EXPECT_EQ(buffer.GetData(), nullptr);
    EXPECT_EQ(buffer.GetCapacity(), 0U);
}

}  // namespace
}  // namespace connectdialog
