#include "sessiondb/profilefolderdata.h"

#include "foundation/texttools.h"
#include "sessiondb/listmerge.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "support/fakesuite.h"

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

class ProfileFolderDataTest : public LibraryTest {
  protected:
    void Arrange(SessionArrangement arrangement) {
        panels.global->sessionArrangementMode.Set(static_cast<int>(arrangement));
    }
    static void WriteLists(const char16_t* folders, const char16_t* sessions) {
        WithKey(u"Sessions\\__FolderData__", [&](VProfileKey& key) {
            key.WriteString(u"Folder List", folders);
            key.WriteString(u"Session List", sessions);
        });
    }
    static VUnicodeString StoredList(const char16_t* name) {
        VUnicodeString list;
        WithKey(u"Sessions\\__FolderData__", [&](VProfileKey& key) { key.ReadString(name, list); });
        return list;
    }
};

TEST(ListMergeTest, TheOrderIsTheUsersAndTheNamesAreTheStores) {
    struct Row {
        const char16_t* list;
        const char16_t* present;
        const char16_t* ordered;
        bool differs;
    };
    constexpr Row kRows[] = {
        {u"", u"", u"", false},          {u"b:a:", u"a,b", u"b,a", false},
        {u"b:a", u"a,b", u"b,a", true},  {u"b:b:a:", u"a,b", u"b,a", true},
        {u"gone:a:", u"a", u"a", true},  {u"c:", u"a,B,c", u"c,B,a", true},
        {u"x:y:", u"x:y", u"x:y", true}, {u":::", u"a", u"a", true},
        {u"A:", u"a", u"a", true},
    };
    for (const Row& row : kRows) {
        VStringArray ordered;
        EXPECT_EQ(MergeList(row.list, Names(row.present), ordered), row.differs) << &row - kRows;
        EXPECT_EQ(Joined(ordered), row.ordered) << &row - kRows;
    }
    EXPECT_EQ(MakeList(Names(u"a,b")), u"a:b:");
    EXPECT_EQ(MakeList(VStringArray()), u"");
}

TEST_F(ProfileFolderDataTest, ChildrenAreSortedOut) {
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
}

TEST_F(ProfileFolderDataTest, LogicalOrderCountsNumbersOfSessionsOnly) {
    for (const char16_t* name : {u"s10", u"s9", u"s1"}) MakeSession(name);
    for (const char16_t* name : {u"f10", u"f9"}) MakeFolder(name);
    EXPECT_EQ(Joined(ProfileFolderData(VUnicodeString(), true).GetSessions()), u"s1,s10,s9");
    Arrange(SessionArrangement::kLogical);
    const ProfileFolderData folder(VUnicodeString(), true);
    EXPECT_EQ(Joined(folder.GetSessions()), u"s1,s9,s10");
    EXPECT_EQ(Joined(folder.GetFolders()), u"f10,f9");
}

TEST_F(ProfileFolderDataTest, NothingIsWrittenUntilItIsSaved) {
    MakeSession(u"b");
    MakeSession(u"a");
    WriteLists(u"", u"gone:b:");
    {
        ProfileFolderData folder(VUnicodeString(), false);
        EXPECT_EQ(StoredList(u"Session List"), u"gone:b:");
        EXPECT_TRUE(folder.SaveToStore());
    }
    EXPECT_EQ(StoredList(u"Session List"), u"b:a:");
}

TEST_F(ProfileFolderDataTest, NamesAreInsertedByTheReferenceWhereTheUserArranges) {
    struct Row {
        SessionArrangement arrangement;
        const char16_t* name;
        const char16_t* reference;
        bool after;
        const char16_t* result;
    };
    constexpr auto kManual = SessionArrangement::kManual;
    constexpr Row kRows[] = {
        {kManual, u"n", u"b", false, u"a,n,b"},
        {kManual, u"n", u"a", true, u"a,n,b"},
        {kManual, u"n", u"", true, u"a,b,n"},
        {kManual, u"n", u"gone", false, u"a,b,n"},
        {kManual, u"b", u"a", false, u"a,b"},
        {SessionArrangement::kAlphabetical, u"n", u"a", false, u"a,b,n"},
        {SessionArrangement::kLogical, u"n", u"a", false, u"a,b,n"},
    };
    for (const Row& row : kRows) {
        Arrange(row.arrangement);
        VStringArray ordered = Names(u"a,b");
        InsertEntryName(ordered, row.name, row.reference, row.after);
        EXPECT_EQ(Joined(ordered), row.result) << &row - kRows;
    }
}

}  // namespace
}  // namespace connectdialog::test
