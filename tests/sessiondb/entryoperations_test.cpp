#include "sessiondb/entryoperations.h"

#include <array>
#include <string>

#include "foundation/vreportmessageparams.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessiontree.h"
#include "stores/sqlite/sqlitestore.h"
#include "support/childprocess.h"
#include "support/dyingfiles.h"
#include "support/faultystore.h"
#include "support/temporaryfolder.h"
#include "tests/sessiondb/entrytest.h"

namespace connectdialog::test {
namespace {

TEST_F(EntryOperationsTest, UniqueNamesCountFromOne) {
    for (const char16_t* path : {u"f\\a", u"f\\a (1)", u"f\\a (2)", u"f\\b (1)"}) MakeSession(path);
    VUnicodeString path;
    EXPECT_EQ(MakeUniqueEntryName(u"f", u"A", path), u"A (3)");
    EXPECT_EQ(path, u"f\\A (3)");
    EXPECT_EQ(MakeUniqueName(u"f", u"b"), u"b");
    EXPECT_EQ(MakeUniqueName(u"", u"f"), u"f (1)");
}

TEST_F(EntryOperationsTest, AFolderCopiedBesideItselfGetsAFreeNameAndKeepsItsContent) {
    Arrange(SessionArrangement::kManual);
    for (const char16_t* path : {u"A\\z", u"A\\m", u"A\\sub\\deep", u"A\\A (1)\\x", u"B\\y"}) MakeSession(path);
    EXPECT_EQ(ArrangeEntry(u"A\\z", u"m", false), u"A\\z");
    WriteIsExpanded(u"A", true);
    WriteIsExpanded(u"A\\sub", true);
    EXPECT_EQ(CopyEntry(u"A", u"", true, u"A", true), u"A (1)");
    EXPECT_EQ(FoldersOf(u""), u"A:A (1):B:");
    EXPECT_EQ(SessionsOf(u"A (1)"), u"z:m:");
    EXPECT_EQ(FoldersOf(u"A (1)"), u"sub:") << "a child with the name of the copy is left out";
    EXPECT_TRUE(ReadIsExpanded(u"A (1)"));
    EXPECT_TRUE(ReadIsExpanded(u"A (1)\\sub"));
    EXPECT_TRUE(OpenSession(u"A (1)\\sub\\deep"));
}

TEST_F(EntryOperationsTest, ACopyIntoItselfEnds) {
    for (const char16_t* path : {u"A\\s", u"A\\B\\t"}) MakeSession(path);
    EXPECT_EQ(CopyEntry(u"A", u"a\\B", true, VUnicodeString(), true), u"a\\B\\A");
    EXPECT_TRUE(OpenSession(u"A\\B\\A\\B\\t"));
    EXPECT_FALSE(SessionKeyExists(u"A\\B\\A\\B\\A"));
    EXPECT_EQ(CopyEntry(u"A", u"A", true, VUnicodeString(), true), u"A\\A");
    EXPECT_EQ(CopyEntry(u"A", u"A", true, VUnicodeString(), true), u"A\\A (1)");
    EXPECT_TRUE(OpenSession(u"A\\A (1)\\A\\B\\A\\B\\t"));
    const std::string before = Dump();
    EXPECT_EQ(MoveEntry(u"A", u"a\\B", true, VUnicodeString(), true), u"");
    EXPECT_EQ(MoveEntry(u"A\\A (1)\\A", u"", true, VUnicodeString(), true), u"")
        << "a copy leaves out what it clashes with";
    EXPECT_FALSE(RenameFolderTree(u"A", u"A\\B", u"C", VUnicodeString()));
    EXPECT_FALSE(RenameFolderTree(u"A", u"", u"a", VUnicodeString()));
    EXPECT_EQ(Dump(), before);
}

TEST_F(EntryOperationsTest, ACopyKeepsWhatNoSettingKnowsAndReplacesInPlace) {
    Arrange(SessionArrangement::kManual);
    for (const char16_t* path : {u"f\\s", u"g\\b", u"g\\s", u"g\\a"}) MakeSession(path);
    SetValue(u"f\\s", u"Own Value", u"mine");
    EXPECT_EQ(ArrangeEntry(u"g\\s", u"a", false), u"g\\s");
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", true, u"b", true), u"g\\s (1)");
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", false, u"b", true), u"g\\s");
    EXPECT_EQ(SessionsOf(u"g"), u"s:a:b:s (1):");
    EXPECT_EQ(ValueOf(u"g\\s", u"Own Value"), u"mine");
    EXPECT_TRUE(RenameEntry(u"g\\s", u"S", u"a"));
    EXPECT_EQ(ValueOf(u"g\\S", u"Own Value"), u"mine");
    EXPECT_EQ(SessionsOf(u"g"), u"a:S:b:s (1):");
    EXPECT_EQ(MoveEntry(u"g\\S", u"", true, VUnicodeString(), true), u"S");
    EXPECT_EQ(ValueOf(u"S", u"Own Value"), u"mine");
    EXPECT_EQ(SessionsOf(u"g"), u"a:b:s (1):");
}

TEST_F(EntryOperationsTest, HiddenEntriesTravelWithTheirFolder) {
    for (const char16_t* path : {u"f\\.dot", u"f\\.hidden\\in", u"f\\s"}) MakeSession(path);
    panels.global->hideDotEntries.Set(true);
    EXPECT_TRUE(RenameEntry(u"f", u"g", VUnicodeString()));
    EXPECT_EQ(SessionsOf(u"g"), u"s:");
    EXPECT_TRUE(OpenSession(u"g\\.dot"));
    EXPECT_TRUE(OpenSession(u"g\\.hidden\\in"));
    EXPECT_FALSE(SessionKeyExists(u"f"));
}

TEST_F(EntryOperationsTest, RenamingAFolder) {
    Arrange(SessionArrangement::kManual);
    for (const char16_t* path : {u"FolderData\\s", u"abc\\s", u"x\\s"}) MakeSession(path);
    EXPECT_TRUE(RenameEntry(u"abc", u"ABC", u"x"));
    EXPECT_EQ(FoldersOf(u""), u"FolderData:x:ABC:");
    EXPECT_TRUE(RenameEntry(u"FolderData", u"FOLDERDATA", VUnicodeString())) << "by way of a name that is no entry's";
    EXPECT_EQ(FoldersOf(u""), u"x:ABC:FOLDERDATA:");
    EXPECT_TRUE(OpenSession(u"FOLDERDATA\\s"));
    EXPECT_TRUE(RenameEntry(u"x", u"x", VUnicodeString()));
    EXPECT_TRUE(OpenSession(u"x\\s"));
}

TEST_F(EntryOperationsTest, WhatCannotBeDoneChangesNothing) {
    for (const char16_t* path : {u"f\\s", u"f\\d\\e", u"g\\d", u"g\\s\\x", u"both\\d\\x", u"both\\s"})
        MakeSession(path);
    const std::string before = Dump();
    EXPECT_FALSE(DeleteEntry(u"gone"));
    EXPECT_FALSE(DeleteEntry(u""));
    EXPECT_EQ(DeleteEntries({}), 0U);
    EXPECT_EQ(ArrangeEntry(u"gone", u"f", true), u"");
    for (const char16_t* source : {u"", u"gone", u"f\\gone"})
        EXPECT_EQ(CopyEntry(source, u"g", true, VUnicodeString(), true), u"");
    EXPECT_EQ(CopyEntry(u"g", u"f\\s", true, VUnicodeString(), true), u"") << "into a session";
    EXPECT_EQ(CopyEntry(u"f\\d", u"g", false, VUnicodeString(), true), u"") << "a folder over a session";
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", false, VUnicodeString(), true), u"") << "a session over a folder";
    EXPECT_FALSE(RenameEntry(u"both", u"g", VUnicodeString())) << "the same one level down";
    for (const char16_t* name : {u"", u"x\\y"}) EXPECT_FALSE(RenameEntry(u"f", name, VUnicodeString()));
    EXPECT_EQ(Dump(), before);
}

TEST_F(EntryOperationsTest, ManyAreDeletedUpToTheFirstThatIsNotThere) {
    for (const char16_t* path : {u"f\\a", u"f\\b", u"g\\c", u"d", u"e"}) MakeSession(path);
    const std::array<VUnicodeString, 6> paths = {u"f\\a", u"g\\c", u"f", u"d", u"f\\b", u"e"};
    EXPECT_EQ(DeleteEntries(paths), 4U) << "the fifth went with its folder";
    EXPECT_FALSE(SessionKeyExists(u"f")) << "nor do its lists bring it back";
    EXPECT_EQ(SessionsOf(u"g"), u"");
    EXPECT_EQ(SessionsOf(u""), u"e:");
}

TEST_F(EntryOperationsTest, AnEntryArrangedByAVanishedReferenceGoesToTheEnd) {
    Arrange(SessionArrangement::kManual);
    for (const char16_t* path : {u"a", u"b", u"c"}) MakeSession(path);
    EXPECT_EQ(ArrangeEntry(u"a", u"gone", true), u"a");
    EXPECT_EQ(SessionsOf(u""), u"b:c:");
    const ProfileFolderData root(u"", true);
    EXPECT_EQ(root.GetShownSessions()[2], u"a");
}

TEST_F(EntryOperationsTest, ARefusedWriteOrCommitChangesNothing) {
    for (const char16_t* path : {u"f\\s", u"f\\d\\e", u"g\\x"}) MakeSession(path);
    FaultyStoreFactory faulty(*factory);
    Use(faulty);
    const std::string before = Dump();
    for (int failing = 1;; ++failing) {
        faulty.plan.writes = 0;
        faulty.plan.failWrite = failing;
        if (RenameEntry(u"f", u"h", VUnicodeString())) break;
        faulty.plan.failWrite = 0;
        ASSERT_EQ(Dump(), before) << failing;
    }
    EXPECT_GT(faulty.plan.writes, 10);
    const std::string after = Dump();
    faulty.plan.failCommit = true;
    EXPECT_FALSE(DeleteEntry(u"h"));
    EXPECT_EQ(MoveEntry(u"h", u"g", true, VUnicodeString(), true), u"");
    EXPECT_EQ(Dump(), after);
}

/// The store's file that a child works on, and what is in it as text.
class StoreFile {
  public:
    explicit StoreFile(const std::string& path) : path(path) {}
    std::unique_ptr<VProfileStoreFactory> Open() const {
        VReportMessageParams report;
        auto opened = stores::OpenSqliteStore(path, {}, report);
        Use(*opened);
        return opened;
    }
    std::string Dump(const ValueNames& names) const { return DumpStore(*Open(), names); }

  private:
    std::string path;
};

TEST_F(EntryOperationsTest, AProcessThatDiesLeavesTheStateBeforeOrAfter) {
    const TemporaryFolder scratch;
    const std::string original = scratch / "original.db";
    {
        const auto opened = StoreFile(original).Open();
        for (const char16_t* path : {u"f\\s", u"f\\d\\e", u"f\\d\\g", u"g\\x"}) MakeSession(path);
        ASSERT_TRUE(WriteIsExpanded(u"f\\d", true));
    }
    const ValueNames names = AllNames();
    const std::string before = StoreFile(original).Dump(names);
    const struct {
        const char* name;
        bool (*run)();
    } operations[] = {
        {"copy", [] { return !CopyEntry(u"f", u"g", true, VUnicodeString(), true).IsEmpty(); }},
        {"move", [] { return !MoveEntry(u"f", u"g", true, VUnicodeString(), true).IsEmpty(); }},
        {"rename", [] { return RenameEntry(u"f", u"F", VUnicodeString()); }},
        {"delete", [] { return DeleteEntry(u"f"); }},
    };
    const StoreFile copy(scratch / "copy.db");
    /// Runs an operation on a fresh copy, killed before that step on files (0: not at all).
    const auto runCopy = [&](bool (*run)(), unsigned step) {
        std::filesystem::copy_file(original, scratch / "copy.db", std::filesystem::copy_options::overwrite_existing);
        ChildProcess child([&](ChildProcess&) {
            const auto opened = copy.Open();
            if (step != 0) DieAtFileStep(step);
            return run() ? 0 : 1;
        });
        return child.Wait();
    };
    for (const auto& operation : operations) {
        ASSERT_EQ(runCopy(operation.run, 0), 0) << operation.name;
        const std::string after = copy.Dump(names);
        ASSERT_NE(after, before) << operation.name;
        int stayed = 0;
        int exitCode = -1;
        for (unsigned step = 1; exitCode != 0; ++step) {
            exitCode = runCopy(operation.run, step);
            const std::string dump = copy.Dump(names);
            ASSERT_TRUE(exitCode == 0 || exitCode == -1) << operation.name << step;
            ASSERT_TRUE(dump == after || (dump == before && exitCode == -1)) << operation.name << step << dump;
            stayed += dump == before ? 1 : 0;
        }
        EXPECT_GT(stayed, 3) << operation.name;
    }
}

}  // namespace
}  // namespace connectdialog::test
