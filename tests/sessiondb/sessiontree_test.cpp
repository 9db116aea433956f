// The tree in the store, one folder of it, and the operations on its entries.
#include "sessiondb/sessiontree.h"

#include <string>
#include <vector>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "config/settingwalk.h"
#include "foundation/texttools.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/listmerge.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/storedspelling.h"
#include "support/childprocess.h"
#include "support/fakesuite.h"
#include "support/faultystore.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

VStringArray Names(const char16_t* commaSeparated) {
    VStringArray names;
    VSplitOnChar(commaSeparated, names, u',');
    return names;
}

VUnicodeString Joined(const VStringArray& names) {
    return VJoin(names, u","_v, VUnicodeString(), VUnicodeString());
}

class SessionTreeTest : public LibraryTest {
  protected:
    static VUnicodeString SessionsOf(const char16_t* folder) {
        return TextAt(BuildFolderDataKeyPath(folder), u"Session List");
    }
    static VRef<ISessionConfig> Make(const char16_t* path) {
        const VUnicodeString leaf = GetEntryLeaf(path);
        auto config = VRef<ISessionConfig>::Adopt(CreateSessionConfig(leaf.GetData(), nullptr));
        config->SetPath(path);
        return config;
    }
    static std::vector<std::u16string> Walk() {
        std::vector<std::u16string> paths;
        WithKey(u"Sessions", [&](VProfileKey& key) {
            WalkSessions(
                key, VUnicodeString(),
                [](VProfileKey&, const VUnicodeString& path, const VUnicodeString&, void* context) {
                    static_cast<std::vector<std::u16string>*>(context)->emplace_back(path.View());
                },
                &paths);
        });
        return paths;
    }
};

TEST_F(SessionTreeTest, WhatCannotBeASessionIsRefused) {
    MakeFolder(u"f");
    EXPECT_FALSE(SaveSession(*Make(u""))) << "the root";
    EXPECT_FALSE(SaveSession(*Make(u"f"))) << "a folder";
    EXPECT_FALSE(StoreSessionEntry(u"", u"", *Make(u"x"), VUnicodeString(), true));
    EXPECT_FALSE(AddFolderEntry(u"f", u"", VUnicodeString(), true));
    EXPECT_FALSE(AddFolderEntry(u"f", VUnicodeString(std::u16string(20000, u'x')), VUnicodeString(), true));
    EXPECT_TRUE(Walk().empty());
    EXPECT_TRUE(IsFolderPath(u"f"));
    VProfileStore store;
    VProfileKey marked(store.GetRootKey(), BuildSessionKeyPath(u"m"_v).GetData(), 0);
    EXPECT_TRUE(marked.WriteString(kIsSessionValue, u"whatever it holds") && store.Commit());
    EXPECT_FALSE(IsFolderPath(u"m"));
}

TEST(ListMergeTest, TheOrderIsTheUsersAndTheNamesAreTheStores) {
    // The list, the names that are there, their order, and whether the list differs from it.
    using Text = const char16_t*;
    constexpr std::tuple<Text, Text, Text, bool> kRows[] = {
        {u"", u"", u"", false},          {u"b:a:", u"a,b", u"b,a", false},
        {u"b:a", u"a,b", u"b,a", true},  {u"b:b:a:", u"a,b", u"b,a", true},
        {u"gone:a:", u"a", u"a", true},  {u"c:", u"a,B,c", u"c,B,a", true},
        {u"x:y:", u"x:y", u"x:y", true}, {u":::", u"a", u"a", true},
        {u"A:", u"a", u"a", true},
    };
    for (const auto& [list, present, expected, differs] : kRows) {
        VStringArray ordered;
        EXPECT_EQ(MergeList(list, Names(present), ordered), differs) << ::testing::PrintToString(list);
        EXPECT_EQ(Joined(ordered), expected);
    }
    EXPECT_EQ(MakeList(Names(u"a,b")), u"a:b:");
    EXPECT_EQ(MakeList(VStringArray()), u"");
}

TEST_F(SessionTreeTest, APathIsSpelledAsFarAsItIsStored) {
    ASSERT_TRUE(AddFolderEntry(u"", u"Servers", u"", false));
    ASSERT_TRUE(StoreSessionEntry(u"Servers", u"Web", *Make(u"Servers\\Web"), u"", false));
    std::u16string names;
    for (int i = 0; i < 100'000; ++i) names += u"servers\\";
    const VUnicodeString deep(names);
    for (const auto& [path, spelled] : {std::pair<VUnicodeString, VUnicodeString>{u"", u""},
                                        {u"sERVERS\\wEB", u"Servers\\Web"},
                                        {u"servers\\", u"Servers\\"},
                                        {u"servers\\no\\web", u"Servers\\no\\web"},
                                        {u"no\\servers", u"no\\servers"},
                                        {deep, u"S" + deep.Mid(1)}})
        EXPECT_EQ(SpelledAsStored(path), spelled);
}

TEST_F(SessionTreeTest, ChildrenAreSortedOut) {
    for (const char16_t* name : {u"b", u".hidden", u"A"}) MakeSession(name);
    for (const char16_t* name : {u"Folder", u".git"}) MakeFolder(name);
    MakeFolder(u"__folderdata__");
    {
        const ProfileFolderData all(VUnicodeString(), true);
        EXPECT_EQ(Joined(all.GetSessions()), u".hidden,A,b");
        EXPECT_EQ(Joined(all.GetFolders()), u".git,Folder");
    }
    panels.global->hideDotEntries.Set(true);
    const ProfileFolderData shown(VUnicodeString(), true);
    EXPECT_EQ(Joined(shown.GetSessions()), u"A,b");
    EXPECT_EQ(Joined(shown.GetFolders()), u"Folder");
    const ProfileFolderData absent(u"nowhere", true);
    EXPECT_TRUE(absent.GetSessions().IsEmpty());
    EXPECT_TRUE(FolderHasEntries(VUnicodeString()));
    EXPECT_FALSE(FolderHasEntries(u"Folder") || FolderHasEntries(u"nowhere"));
    VStringArray folders;
    EnumerateChildFolders(VUnicodeString(), folders);
    EXPECT_EQ(Joined(folders), u"Folder");
}

class EntryOperationsTest : public SessionTreeTest {
  protected:
    static VUnicodeString OwnValueOf(const VUnicodeString& session) {
        return TextAt(BuildSessionKeyPath(session), u"Own Value");
    }
    /// Every value that a session or a folder of these tests can have.
    static ValueNames AllNames() {
        ValueNames names = {u"Folder List", u"Session List", u"Is Expanded", u"Own Value"};
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"s", nullptr));
        VisitSettings(*session, [&](VProfileData& setting) { names.emplace_back(setting.GetName().View()); });
        return names;
    }
    std::string Dump() const { return DumpStore(*factory, AllNames()); }
};

TEST_F(EntryOperationsTest, ACopyIntoItselfEnds) {
    for (const char16_t* path : {u"A\\s", u"A\\B\\t"}) MakeSession(path);
    EXPECT_EQ(CopyEntry(u"A", u"a\\B", true, VUnicodeString(), true), u"a\\B\\A");
    EXPECT_TRUE(OpenSession(u"A\\B\\A\\B\\t"));
    EXPECT_FALSE(SessionKeyExists(u"A\\B\\A\\B\\A"));
    const std::string before = Dump();
    EXPECT_EQ(MoveEntry(u"A", u"a\\B", true, VUnicodeString(), true), u"");
    EXPECT_FALSE(RenameFolderTree(u"A", u"A\\B", u"C", VUnicodeString()));
    EXPECT_FALSE(RenameFolderTree(u"A", u"", u"a", VUnicodeString()));
    EXPECT_EQ(Dump(), before);
}

TEST_F(EntryOperationsTest, ACopyKeepsWhatNoSettingKnowsAndReplacesInPlace) {
    Arrange(SessionArrangement::kManual);
    for (const char16_t* path : {u"f\\s", u"g\\b", u"g\\s", u"g\\a"}) MakeSession(path);
    WithKey(u"Sessions\\f\\s", [](VProfileKey& key) { key.WriteString(u"Own Value", u"mine"); });
    EXPECT_EQ(ArrangeEntry(u"g\\s", u"a", false), u"g\\s");
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", true, u"b", true), u"g\\s (1)");
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", false, u"b", true), u"g\\s");
    EXPECT_EQ(SessionsOf(u"g"), u"s:a:b:s (1):");
    EXPECT_EQ(OwnValueOf(u"g\\s"), u"mine");
    EXPECT_TRUE(RenameEntry(u"g\\s", u"S", u"a"));
    EXPECT_EQ(OwnValueOf(u"g\\S"), u"mine");
    EXPECT_EQ(SessionsOf(u"g"), u"a:S:b:s (1):");
    EXPECT_EQ(MoveEntry(u"g\\S", u"", true, VUnicodeString(), true), u"S");
    EXPECT_EQ(OwnValueOf(u"S"), u"mine");
    EXPECT_EQ(SessionsOf(u"g"), u"a:b:s (1):");
    const VUnicodeString gone[] = {u"g\\a"};
    EXPECT_EQ(DeleteEntries(gone), 1U);
    EXPECT_EQ(SessionsOf(u"g"), u"b:s (1):");
}

TEST_F(EntryOperationsTest, ANameThatIsTakenIsCountedAndFitsAllTheSame) {
    const std::u16string wide = std::u16string(250, u'x') + u"\U0001F600";
    const std::u16string longest = wide + u"xyz";
    for (const char16_t* path : {u"a", u"a (1)", u"b (1)", longest.c_str()}) MakeSession(path);
    MakeFolder(u"a (2)");
    const std::pair<std::u16string, std::u16string> rows[] = {
        {u"a", u"a (3)"}, {u"b", u"b"}, {longest, std::u16string(250, u'x') + u" (1)"}};
    for (const auto& [base, unique] : rows) EXPECT_EQ(MakeUniqueName(u"", VUnicodeString(base)), unique);
}

TEST_F(EntryOperationsTest, ACaseChangesWhateverStandsBeside) {
    for (const char16_t* path : {u"abc\\s", u"__abc__\\t", u"in\\FolderData\\u", u"v"}) MakeSession(path);
    for (const auto& [from, to] : {std::pair(u"abc", u"ABC"), {u"in\\FolderData", u"folderdata"}, {u"v", u"V"}})
        EXPECT_TRUE(RenameEntry(from, to, VUnicodeString()));
    EXPECT_EQ(Escape(Joined(ProfileFolderData(u"", true).GetFolders())), "__abc__,ABC,in");
    for (const char16_t* path : {u"ABC\\s", u"__abc__\\t", u"in\\folderdata\\u", u"V"}) EXPECT_TRUE(OpenSession(path));
    EXPECT_FALSE(SessionKeyExists(u"__FolderData__\\v")) << "nothing is left of the way there";
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
    EXPECT_EQ(MoveEntry(u"f\\d", u"g", true, VUnicodeString(), true), u"") << "a folder to a name that is taken";
    EXPECT_EQ(CopyEntry(u"g", u"f\\s", true, VUnicodeString(), true), u"") << "into a session";
    EXPECT_EQ(CopyEntry(u"f\\d", u"g", false, VUnicodeString(), true), u"") << "a folder over a session";
    EXPECT_EQ(CopyEntry(u"f\\s", u"g", false, VUnicodeString(), true), u"") << "a session over a folder";
    EXPECT_FALSE(RenameEntry(u"both", u"g", VUnicodeString())) << "the same one level down";
    for (const char16_t* name : {u"", u"x\\y"}) EXPECT_FALSE(RenameEntry(u"f", name, VUnicodeString()));
    EXPECT_EQ(Dump(), before);
    std::u16string deepest = u"d";
    for (int level = 1; level < 127; ++level) deepest += u"\\d";
    MakeFolder(deepest.c_str());
    EXPECT_EQ(DescribeEntryRefusal(CheckCopy(u"f\\s", VUnicodeString(deepest)), u"f\\s"),
              u"There is no room for s: the folders lie in each other too deep");
}

TEST_F(EntryOperationsTest, ARefusedWriteOrCommitChangesNothing) {
    for (const char16_t* path : {u"f\\s", u"f\\d\\e", u"g\\x"}) MakeSession(path);
    FaultyStoreFactory faulty(*factory);
    UseStore(faulty);
    const std::string before = Dump();
    bool (*const operations[])() = {[] { return !CopyEntry(u"f", u"g", true, VUnicodeString(), true).IsEmpty(); },
                                    [] { return !MoveEntry(u"f", u"g", true, VUnicodeString(), true).IsEmpty(); },
                                    [] { return RenameEntry(u"f", u"h", VUnicodeString()); },
                                    [] { return DeleteEntry(u"f"); }};
    for (const auto run : operations) {
        faulty.plan = {.failCommit = true};
        EXPECT_FALSE(run());
        faulty.plan = {};
        ASSERT_EQ(Dump(), before) << "the commit";
        VProfileStore whole(&faulty);
        ASSERT_TRUE(whole.JoinUnitOfWork() && run());
        ASSERT_NE(Dump(), before);
        EXPECT_GT(faulty.plan.writes, 0);
        whole.Abandon();
        ASSERT_EQ(Dump(), before) << "a unit that it took part in";
        for (int failing = faulty.plan.writes; failing > 0; --failing) {
            faulty.plan.failWrite = failing;
            EXPECT_FALSE(run()) << failing;
            faulty.plan.failWrite = 0;
            ASSERT_EQ(Dump(), before) << failing;
        }
    }
}

}  // namespace
}  // namespace connectdialog::test
