// Several processes on one store: killed writers, writers side by side, a writer that holds on.
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sqlite3.h>
#include <string>
#include <thread>
#include <unistd.h>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "stores/sqlite/sqlitestore.h"
#include "support/childprocess.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

unsigned stepsLeft = 0;

void Step() {
    if (--stepsLeft == 0) ::raise(SIGKILL);
}

ssize_t Write(int file, const void* bytes, std::size_t count) {
    Step();
    return ::write(file, bytes, count);
}
ssize_t WriteAt(int file, const void* bytes, std::size_t count, off_t offset) {
    Step();
    return ::pwrite(file, bytes, count, offset);
}
int Truncate(int file, off_t size) {
    Step();
    return ::ftruncate(file, size);
}
int Unlink(const char* path) {
    Step();
    return ::unlink(path);
}

/// From now on this process kills itself before that step of its work on the files of stores.
void DieAtFileStep(unsigned step) {
    sqlite3_initialize();
    stepsLeft = step;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const auto replace = [files](const char* name, auto function) {
        files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(function));
    };
    replace("write", Write);
    replace("pwrite", WriteAt);
    replace("pwrite64", WriteAt);
    replace("ftruncate", Truncate);
    replace("unlink", Unlink);
}

using Factory = std::unique_ptr<VProfileStoreFactory>;

constexpr std::uint32_t kSessions = 3;

Factory OpenFile(const std::string& path, int busyMilliseconds = 5000) {
    VReportMessageParams report;
    stores::SqliteStoreOptions options;
    options.busyTimeout = std::chrono::milliseconds(busyMilliseconds);
    return stores::OpenSqliteStore(path, options, report);
}

std::u16string SessionPath(std::uint32_t number) {
    return std::u16string(u"Sessions\\") + static_cast<char16_t>(u'a' + number % kSessions);
}

std::size_t TextLength(std::uint32_t number) {
    return 30000 + number % 9000;
}
char16_t Letter(std::uint32_t number) {
    return static_cast<char16_t>(u'A' + number % 26);
}

/// Unit `number`: one of the sessions, with a text of many pages, and the count of units. Now and then a subtree comes
/// and goes with it.
bool SaveUnit(VProfileStoreFactory& factory, std::uint32_t number) {
    VProfileStore store(&factory);
    bool done = true;
    {
        VProfileKey session(store.GetRootKey(), SessionPath(number).c_str(), 0);
        const std::u16string text(TextLength(number), Letter(number));
        done = session.WriteDword(u"First", number) && session.WriteString(u"Text", text.c_str()) &&
               session.WriteDword(u"Is Session", 1) && session.WriteDword(u"Last", number);
        VProfileKey count(store.GetRootKey(), u"Count", 0);
        done = count.WriteDword(u"Units", number) && done;
        if (number % 5 == 0) VProfileKey(store.GetRootKey(), u"Passing\\x\\y", 1);
        if (number % 5 == 1 && store.GetRootKey()->KeyExists(u"Passing")) {
            done = store.GetRootKey()->DeleteKey(u"Passing") && done;
        }
    }
    return store.Close() && done;
}

/// The tree is exactly what the first `count` units made. Gives the count, or all ones when it is not.
std::uint32_t CheckUnits(VProfileStoreFactory& factory) {
    VProfileStore store(&factory);
    if (!store.JoinUnitOfWork()) return UINT32_MAX;  // one state for all that follows
    VProfileKey& root = *store.GetRootKey();
    std::uint32_t count = 0;
    VProfileKey(&root, u"Count", 0).ReadDword(u"Units", count);
    for (std::uint32_t unit = count; unit > 0 && unit + kSessions > count; --unit) {
        VProfileKey session(&root, SessionPath(unit).c_str(), 0);
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        VUnicodeString text;
        const bool found =
            session.ReadDword(u"First", first) && session.ReadDword(u"Last", last) && session.ReadString(u"Text", text);
        const std::u16string expected(TextLength(unit), Letter(unit));
        if (!found || first != unit || last != unit || text.View() != expected) return UINT32_MAX;
    }
    if (count > 0 && root.KeyExists(u"Passing\\x\\y") != (count % 5 == 0)) return UINT32_MAX;
    return count;
}

/// Saves units from `first` on until it is killed, at the latest at that step of its work on files (0: at none).
int WriteUnits(ChildProcess& parent, const std::string& path, std::uint32_t first, unsigned step) {
    if (step != 0) DieAtFileStep(step);
    const Factory factory = OpenFile(path);
    for (std::uint32_t number = first; SaveUnit(*factory, number); ++number) parent.Report(number);
    return 1;
}

/// Reads the sessions again and again, and reports all ones when one of them is torn.
int ReadSessions(ChildProcess& parent, const std::string& path) {
    const Factory factory = OpenFile(path);
    for (std::uint32_t reads = 0;; ++reads) {
        for (std::uint32_t i = 0; i < kSessions; ++i) {
            VProfileStore store(factory.get());
            VProfileKey session(store.GetRootKey(), SessionPath(i).c_str(), 0);
            std::uint32_t first = 0;
            std::uint32_t last = 0;
            session.ReadDword(u"First", first);
            session.ReadDword(u"Last", last);
            if (first != last) parent.Report(UINT32_MAX);
        }
        parent.Report(reads);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));  // leaves the processor to the writers
    }
}

TEST(StoreProcesses, AcknowledgedSavesSurviveTwoHundredKills) {
    const TemporaryFolder folder;
    const std::string path = folder / "store.db";
    std::mt19937 random(std::random_device{}());
    ASSERT_TRUE(SaveUnit(*OpenFile(path), 1));
    std::uint32_t count = 1;
    ChildProcess reader([&](ChildProcess& parent) { return ReadSessions(parent, path); });
    std::uint32_t reads = 0;
    for (int round = 0; round < 200; ++round) {
        // Half of the writers are killed at some moment of their work, the others at a step of a commit.
        const unsigned step = round % 2 == 0 ? 0 : static_cast<unsigned>(random() % 80 + 1);
        ChildProcess writer([&](ChildProcess& parent) { return WriteUnits(parent, path, count + 1, step); });
        std::uint32_t acknowledged = count;
        if (step == 0) {
            ASSERT_TRUE(writer.ReadReport(acknowledged));
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 12000));
            writer.Kill();
        }
        while (writer.ReadReport(acknowledged)) {
        }
        const std::uint32_t found = CheckUnits(*OpenFile(path));
        ASSERT_NE(found, UINT32_MAX) << "torn in round " << round;
        ASSERT_TRUE(found == acknowledged || found == acknowledged + 1) << found << " of " << acknowledged;
        count = found;
        ASSERT_TRUE(reads != 0 || reader.ReadReport(reads));
    }
    std::uint32_t lastReport = 0;
    reader.Kill();
    while (reader.ReadReport(lastReport)) ASSERT_NE(lastReport, UINT32_MAX) << "the reader saw a torn session";
    EXPECT_GT(count, 100U);
    RecordProperty("units", static_cast<int>(count));
    RecordProperty("reads", static_cast<int>(lastReport));
}

TEST(StoreProcesses, AWriterThatWaitsTooLongFailsAndLosesNothing) {
    const TemporaryFolder folder;
    const Factory theirs = OpenFile(folder / "store.db");
    const Factory mine = OpenFile(folder / "store.db", 50);
    ASSERT_TRUE(WriteDwords(*theirs, u"k", {u"mine", u"theirs"}, 1));
    VProfileStore holder(theirs.get());
    VProfileStore store(mine.get());
    VProfileKey openBefore(store.GetRootKey(), u"k", 0);
    ASSERT_TRUE(VProfileKey(holder.GetRootKey(), u"k", 0).WriteDword(u"theirs", 2));
    EXPECT_FALSE(store.JoinUnitOfWork());
    EXPECT_EQ(store.GetLastReport()->GetCode(), 32U);
    EXPECT_FALSE(openBefore.WriteDword(u"mine", 3));
    EXPECT_EQ(CodeOf(openBefore), 32U);
    EXPECT_EQ(ReadDwordOr(*mine, u"k", u"theirs", 0), 1U) << "reading goes on beside the writer";
    EXPECT_TRUE(holder.Commit());
    EXPECT_TRUE(openBefore.WriteDword(u"mine", 3) && store.Close());
    EXPECT_EQ(DumpStore(*mine, {u"mine", u"theirs"}), "k 5\n  .mine=3\n  .theirs=2\n");
}

TEST(StoreProcesses, AViewIsOneStateUntilItsStoreClosesOrAUnitBegins) {
    const TemporaryFolder folder;
    const std::string path = folder / "store.db";
    const Factory factory = OpenFile(path, 50);
    const Factory other = OpenFile(path, 50);
    const auto write = [](VProfileStoreFactory& into, std::uint32_t value) {
        VProfileStore store(&into);
        return VProfileKey(store.GetRootKey(), u"k", 0).WriteDword(u"v", value) && store.Close();
    };
    ASSERT_TRUE(write(*factory, 1));
    {
        VProfileStore viewer(factory.get());
        viewer.HoldView();
        EXPECT_EQ(ReadDwordOr(*factory, u"k", u"v", 0), 1U);
        EXPECT_FALSE(write(*other, 2)) << "it waits as long as the view is held";
        EXPECT_EQ(ReadDwordOr(*factory, u"k", u"v", 0), 1U);
        EXPECT_TRUE(write(*factory, 3)) << "our own unit ends the view";
        EXPECT_TRUE(write(*other, 4));
        EXPECT_EQ(ReadDwordOr(*factory, u"k", u"v", 0), 4U);
    }
    EXPECT_TRUE(write(*other, 5));
}

TEST(StoreProcesses, AKeyThatAnotherMadeAnewIsFoundWhereItIsNow) {
    const TemporaryFolder folder;
    const Factory mine = OpenFile(folder / "store.db");
    const Factory theirs = OpenFile(folder / "store.db");
    const auto theyDelete = [&] {
        VProfileStore store(theirs.get());
        EXPECT_TRUE(store.GetRootKey()->DeleteKey(u"f"));
        EXPECT_TRUE(store.Close());
    };
    ASSERT_TRUE(WriteDwords(*mine, u"f\\k", {u"a"}, 1));
    EXPECT_EQ(ReadDwordOr(*mine, u"f\\k", u"a", 0), 1U);
    theyDelete();
    ASSERT_TRUE(WriteDwords(*theirs, u"f\\k", {u"a"}, 2));
    EXPECT_EQ(ReadDwordOr(*mine, u"f\\k", u"a", 0), 2U);
    theyDelete();
    EXPECT_EQ(ReadDwordOr(*mine, u"f\\k", u"a", 0), 0U);
}

/// What another user finds at a store: the code of what is refused.
std::uint32_t CodeForAStranger(const std::string& path) {
    ChildProcess child([&](ChildProcess& parent) {
        if (::setuid(65534) != 0) return 2;
        VReportMessageParams report;
        const Factory factory = stores::OpenSqliteStore(path, {}, report);
        if (factory == nullptr) return parent.Report(report.GetCode()), 0;
        VProfileStore store(factory.get());
        std::uint32_t value = 0;
        if (!VProfileKey(store.GetRootKey(), u"k", 0).ReadDword(u"a", value)) return 3;
        if (store.GetRootKey()->GetImpl()->IsWritable()) return 4;
        store.GetRootKey()->WriteDword(u"a", 1);
        return parent.Report(CodeOf(*store.GetRootKey())), 0;
    });
    std::uint32_t code = 0;
    EXPECT_TRUE(child.ReadReport(code));
    return code;
}

TEST(StoreProcesses, PermissionsDecideWhatAnotherUserMayDo) {
    if (::getuid() != 0) GTEST_SKIP() << "only root can become another user";
    const TemporaryFolder folder;
    const std::string path = folder / "store.db";
    ASSERT_TRUE(WriteDwords(*OpenFile(path), u"k", {u"a"}, 1));
    std::filesystem::permissions(folder.GetPath(), std::filesystem::perms(0755));
    EXPECT_EQ(CodeForAStranger(path), 5U) << "unreadable";
    std::filesystem::permissions(path, std::filesystem::perms(0644));
    EXPECT_EQ(CodeForAStranger(path), 5U) << "read-only";
}

}  // namespace
}  // namespace connectdialog::test
