// Several processes on one store: killed writers, writers side by side, a writer that holds on.
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "stores/sqlite/sqlitestore.h"
#include "support/childprocess.h"
#include "support/dyingfiles.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

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

const RoleRegistration kWriter("write units", [](const auto& arguments, RoleSide& side) {
    if (const unsigned long step = std::stoul(arguments[2]); step != 0) DieAtFileStep(static_cast<unsigned>(step));
    const Factory factory = OpenFile(arguments[0]);
    for (auto number = static_cast<std::uint32_t>(std::stoul(arguments[1]));; ++number) {
        if (!SaveUnit(*factory, number)) std::_Exit(2);
        side.Report(number);
    }
});

const RoleRegistration kReader("read sessions", [](const auto& arguments, RoleSide& side) {
    const Factory factory = OpenFile(arguments[0]);
    for (std::uint32_t reads = 0;; ++reads) {
        for (std::uint32_t i = 0; i < kSessions; ++i) {
            VProfileStore store(factory.get());
            VProfileKey session(store.GetRootKey(), SessionPath(i).c_str(), 0);
            std::uint32_t first = 0;
            std::uint32_t last = 0;
            session.ReadDword(u"First", first);
            session.ReadDword(u"Last", last);
            if (first != last) side.Report(UINT32_MAX);
        }
        side.Report(reads);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));  // leaves the processor to the writers
    }
});

TEST(StoreProcesses, AcknowledgedSavesSurviveTwoHundredKills) {
    const TemporaryFolder folder;
    const std::string path = folder.File("store.db");
    const Factory factory = OpenFile(path);
    std::mt19937 random(std::random_device{}());
    ASSERT_TRUE(SaveUnit(*factory, 1));
    std::uint32_t count = 1;
    ChildProcess reader("read sessions", {path});
    std::uint32_t reads = 0;
    for (int round = 0; round < 200; ++round) {
        // Half of the writers are killed at some moment of their work, the others at a step of a commit.
        const unsigned step = round % 2 == 0 ? 0 : static_cast<unsigned>(random() % 80 + 1);
        ChildProcess writer("write units", {path, std::to_string(count + 1), std::to_string(step)});
        std::uint32_t acknowledged = count;
        if (step == 0) {
            ASSERT_TRUE(writer.ReadReport(acknowledged));
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 12000));
            writer.Kill();
        }
        while (writer.ReadReport(acknowledged)) {
        }
        const std::uint32_t found = CheckUnits(*factory);
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

const RoleRegistration kCounter("count up", [](const auto& arguments, RoleSide& side) {
    const Factory factory = OpenFile(arguments[0], 60000);
    const std::u16string name(arguments[1].begin(), arguments[1].end());
    for (std::uint32_t i = 1; i <= 100; ++i) {
        if (ReadDwordOr(*factory, u"shared", name.c_str(), 0) != i - 1) std::_Exit(2);
        if (!WriteDwords(*factory, u"shared", {name.c_str()}, i)) std::_Exit(3);
    }
    side.Report(0);
});

TEST(StoreProcesses, WritersOfDifferentValuesOfOneKeyBothKeepTheirs) {
    const TemporaryFolder folder;
    const std::string path = folder.File("store.db");
    ChildProcess first("count up", {path, "one"});
    ChildProcess second("count up", {path, "two"});
    EXPECT_TRUE(first.Wait() && second.Wait());
    const Factory factory = OpenFile(path);
    EXPECT_EQ(ReadDwordOr(*factory, u"shared", u"one", 0), 100U);
    EXPECT_EQ(ReadDwordOr(*factory, u"shared", u"two", 0), 100U);
}

const RoleRegistration kHolder("hold the lock", [](const auto& arguments, RoleSide& side) {
    const Factory factory = OpenFile(arguments[0]);
    VProfileStore store(factory.get());
    VProfileKey key(store.GetRootKey(), u"k", 0);
    if (!key.WriteDword(u"theirs", 2)) std::_Exit(2);
    side.Report(0);
    side.WaitForGo();
    if (!store.Commit()) std::_Exit(3);
    side.Report(1);
});

TEST(StoreProcesses, AWriterThatWaitsTooLongFailsAndLosesNothing) {
    const TemporaryFolder folder;
    const std::string path = folder.File("store.db");
    const Factory factory = OpenFile(path, 50);
    ASSERT_TRUE(WriteDwords(*factory, u"k", {u"mine", u"theirs"}, 1));
    VProfileStore store(factory.get());
    VProfileKey openBefore(store.GetRootKey(), u"k", 0);
    ChildProcess holder("hold the lock", {path});
    std::uint32_t step = 0;
    ASSERT_TRUE(holder.ReadReport(step));
    EXPECT_FALSE(store.JoinUnitOfWork());
    EXPECT_EQ(store.GetLastReport()->GetCode(), 32U);
    EXPECT_FALSE(openBefore.WriteDword(u"mine", 3));
    EXPECT_EQ(CodeOf(openBefore), 32U);
    EXPECT_EQ(ReadDwordOr(*factory, u"k", u"theirs", 0), 1U);  // reading goes on beside the writer
    holder.LetGo();
    ASSERT_TRUE(holder.ReadReport(step));
    EXPECT_EQ(ReadDwordOr(*factory, u"k", u"theirs", 0), 2U);
    EXPECT_TRUE(openBefore.WriteDword(u"mine", 3) && store.Close());
    EXPECT_TRUE(holder.Wait());
    EXPECT_EQ(DumpStore(*factory, {u"mine", u"theirs"}), "k 5\n  .mine=3\n  .theirs=2\n");
}

const RoleRegistration kStranger("try as a stranger", [](const auto& arguments, RoleSide& side) {
    if (::setuid(65534) != 0) std::_Exit(2);
    VReportMessageParams report;
    const Factory factory = stores::OpenSqliteStore(arguments[0], {}, report);
    if (factory == nullptr) return side.Report(report.GetCode());
    VProfileStore store(factory.get());
    std::uint32_t value = 0;
    if (!VProfileKey(store.GetRootKey(), u"k", 0).ReadDword(u"a", value)) return side.Report(1);
    if (store.GetRootKey()->GetImpl()->IsWritable()) return side.Report(1);
    store.GetRootKey()->WriteDword(u"a", 1);
    side.Report(CodeOf(*store.GetRootKey()));
});

TEST(StoreProcesses, PermissionsDecideWhatAnotherUserMayDo) {
    if (::getuid() != 0) GTEST_SKIP() << "only root can become another user";
    const TemporaryFolder folder;
    ASSERT_TRUE(WriteDwords(*OpenFile(folder.File("store.db")), u"k", {u"a"}, 1));
    namespace fs = std::filesystem;
    fs::permissions(folder.GetPath(), fs::perms(0755));
    std::uint32_t code = 0;
    ChildProcess kept("try as a stranger", {folder.File("store.db")});
    EXPECT_TRUE(kept.ReadReport(code));
    EXPECT_EQ(code, 5U) << "unreadable";
    fs::permissions(folder.File("store.db"), fs::perms(0644));
    ChildProcess reading("try as a stranger", {folder.File("store.db")});
    EXPECT_TRUE(reading.ReadReport(code));
    EXPECT_EQ(code, 5U) << "read-only";
}

}  // namespace
}  // namespace connectdialog::test
