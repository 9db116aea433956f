#include "sessiondb/sessiontree.h"

#include <string>
#include <vector>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/texttools.h"
#include "foundation/vstringarray.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "support/fakesuite.h"
#include "support/faultystore.h"

namespace connectdialog::test {
namespace {

class SessionTreeTest : public LibraryTest {
  protected:
    void ArrangeManually() { panels.global->sessionArrangementMode.Set(static_cast<int>(SessionArrangement::kManual)); }
    static VRef<ISessionConfig> Make(const char16_t* path) {
        const VUnicodeString leaf = GetEntryLeaf(path);
        auto config = VRef<ISessionConfig>::Adopt(CreateSessionConfig(leaf.GetData(), nullptr));
        config->SetPath(path);
        return config;
    }
    static VUnicodeString ListOf(const char16_t* folder, const char16_t* listName) {
        VUnicodeString list;
        WithKey(BuildFolderDataKeyPath(folder).GetData(), [&](VProfileKey& key) { key.ReadString(listName, list); });
        return list;
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

TEST_F(SessionTreeTest, QuestionsAboutWhatIsThere) {
    MakeSession(u"Servers\\alpha");
    MakeFolder(u"Empty");
    EXPECT_TRUE(SessionKeyExists(u"servers\\ALPHA"));
    EXPECT_TRUE(EntryExistsIn(u"Servers", u"alpha"));
    EXPECT_FALSE(EntryExistsIn(u"", u"alpha"));
    EXPECT_TRUE(IsFolderPath(u"Servers"));
    EXPECT_FALSE(IsFolderPath(u"Servers\\alpha"));
    EXPECT_TRUE(FolderHasEntries(u"Servers"));
    EXPECT_FALSE(FolderHasEntries(u"Empty"));
    EXPECT_FALSE(FolderHasEntries(u"nowhere"));
    WriteIsExpanded(u"Empty", true);
    EXPECT_FALSE(FolderHasEntries(u"Empty")) << "arrangement data is no entry";
    EXPECT_TRUE(ReadIsExpanded(u"Empty"));
    EXPECT_FALSE(ReadIsExpanded(u"Servers"));
}

TEST_F(SessionTreeTest, TheWalkMeetsEverySessionOnceDepthFirst) {
    for (const char16_t* path : {u"b\\two", u"b\\c\\three", u"a", u".dot"}) MakeSession(path);
    WriteIsExpanded(u"b", true);
    EXPECT_EQ(Walk(), (std::vector<std::u16string>{u".dot", u"a", u"b\\c\\three", u"b\\two"}));
}

TEST_F(SessionTreeTest, OpeningGivesSessionsOnly) {
    MakeSession(u"f\\s");
    const auto session = OpenSession(u"f\\s");
    ASSERT_TRUE(session);
    EXPECT_EQ(session->GetName(), u"s");
    EXPECT_EQ(session->GetPath(), u"f\\s");
    EXPECT_FALSE(OpenSession(u"f"));
    EXPECT_FALSE(OpenSession(u"gone"));
    EXPECT_FALSE(OpenSession(u"default"));
    EXPECT_FALSE(OpenSession(u""));
    EXPECT_TRUE(OpenSession(u"Default"));
}

TEST_F(SessionTreeTest, AFolderAtDefaultIsNoSession) {
    MakeFolder(u"Default");
    EXPECT_FALSE(OpenSession(u"Default"));
}

TEST_F(SessionTreeTest, ANewSessionGoesToItsParentsListAndAnOldOneKeepsItsPlace) {
    ArrangeManually();
    for (const char16_t* path : {u"f\\b", u"f\\a", u"f\\c"}) EXPECT_TRUE(SaveSession(*Make(path)));
    EXPECT_EQ(ListOf(u"f", u"Session List"), u"b:a:c:");
    EXPECT_TRUE(SaveSession(*Make(u"f\\b")));
    EXPECT_TRUE(StoreSessionEntry(u"f", u"a", *Make(u"a"), u"c", true));
    EXPECT_EQ(ListOf(u"f", u"Session List"), u"b:a:c:");
    EXPECT_TRUE(StoreSessionEntry(u"f", u"n", *Make(u"n"), u"b", false));
    EXPECT_EQ(ListOf(u"f", u"Session List"), u"n:b:a:c:");
    EXPECT_TRUE(OpenSession(u"f\\n"));
    EXPECT_TRUE(SaveSession(*Make(u"default")));
    EXPECT_TRUE(SessionKeyExists(u"default"));
}

TEST_F(SessionTreeTest, FoldersArePlacedByTheirReference) {
    ArrangeManually();
    EXPECT_TRUE(AddFolderEntry(u"", u"a", VUnicodeString(), true));
    EXPECT_TRUE(AddFolderEntry(u"", u"c", VUnicodeString(), true));
    EXPECT_TRUE(AddFolderEntry(u"", u"b", u"a", true));
    EXPECT_EQ(ListOf(u"", u"Folder List"), u"a:b:c:");
    VStringArray shown;
    shown.Add(u"first");
    EnumerateChildFolders(VUnicodeString(), shown);
    EXPECT_EQ(VJoin(shown, u","_v, VUnicodeString(), VUnicodeString()), u"first,a,b,c");
}

TEST_F(SessionTreeTest, ManySessionsAreStoredInTheGivenOrder) {
    ArrangeManually();
    SaveSession(*Make(u"f\\m"));
    const auto session = Make(u"f\\z");
    const char16_t* const names[] = {u"z", u"m", u"a"};
    const auto become = [&](std::size_t index) {
        session->SetPath(u"f\\"_v + names[index]);
        session->GetConnectConfig()->SetHostName(names[index] + u".example.net"_v);
        return true;
    };
    EXPECT_TRUE(StoreSessionEntries(u"f", *session, 3, become));
    EXPECT_EQ(ListOf(u"f", u"Session List"), u"m:z:a:");
    EXPECT_EQ(Walk().size(), 3U);
    for (const char16_t* name : names) {
        VUnicodeString host;
        OpenSession(u"f\\"_v + name)->GetConnectConfig()->GetHostName(host);
        EXPECT_EQ(host, name + u".example.net"_v);
    }
    EXPECT_FALSE(StoreSessionEntries(u"f", *session, 2, [&](std::size_t index) {
        session->SetPath(u"f\\half"_v);
        return index == 0;
    }));
    EXPECT_EQ(Walk().size(), 3U) << "given up in the middle";
}

TEST_F(SessionTreeTest, ARefusedWriteFailsTheWholeSaveAndTheNextOneWritesAll) {
    static FaultyStoreFactory* faulty = nullptr;
    FaultyStoreFactory wrapper(*factory);
    faulty = &wrapper;
    SetProfileFactoryGetter([]() -> VProfileStoreFactory* { return faulty; });
    const auto session = Make(u"f\\s");
    for (const int failing : {1, 5, 40}) {
        wrapper.plan.failWrite = failing;
        EXPECT_FALSE(SaveSession(*session)) << failing;
        EXPECT_FALSE(SessionKeyExists(u"f\\s")) << failing;
    }
    wrapper.plan.failWrite = 0;
    wrapper.plan.failCommit = true;
    EXPECT_FALSE(SaveSession(*session));
    EXPECT_FALSE(AddFolderEntry(u"", u"g", VUnicodeString(), true));
    wrapper.plan.failCommit = false;
    EXPECT_FALSE(SessionKeyExists(u"g"));
    EXPECT_TRUE(SaveSession(*session));
    EXPECT_TRUE(OpenSession(u"f\\s"));
    EXPECT_FALSE(OpenSession(u"f\\s")->IsChanged());
}

TEST_F(SessionTreeTest, WhatCannotBeASessionIsRefused) {
    MakeFolder(u"f");
    EXPECT_FALSE(SaveSession(*Make(u""))) << "the root";
    EXPECT_FALSE(SaveSession(*Make(u"f"))) << "a folder";
    EXPECT_FALSE(StoreSessionEntry(u"", u"", *Make(u"x"), VUnicodeString(), true));
    EXPECT_FALSE(AddFolderEntry(u"f", u"", VUnicodeString(), true));
    EXPECT_FALSE(AddFolderEntry(u"f", VUnicodeString(std::u16string(20000, u'x')), VUnicodeString(), true));
    EXPECT_TRUE(Walk().empty());
    EXPECT_TRUE(IsFolderPath(u"f"));
}

TEST_F(SessionTreeTest, AProtocolCountsWhenTheTableHasIt) {
    struct Row {
        const char16_t* name;
        bool has;
    };
    for (const Row& row :
         {Row{u"SSH2", true}, Row{u"telnet", true}, Row{u"None", false}, Row{u"", false}, Row{u"Gopher", false}}) {
        WithKey(u"Sessions\\s", [&](VProfileKey& key) { key.WriteString(u"Protocol Name", row.name); });
        EXPECT_EQ(SessionHasProtocol(AppKind::kNorHalden, u"s"), row.has);
        EXPECT_FALSE(SessionHasProtocol(AppKind::kTessaly, u"s"));
    }
}

TEST_F(SessionTreeTest, ExpansionIsWrittenOnlyWhenItDiffers) {
    EXPECT_TRUE(WriteIsExpanded(u"f", false));
    EXPECT_FALSE(SessionKeyExists(u"f"));
    EXPECT_TRUE(WriteIsExpanded(u"f", true));
    EXPECT_TRUE(SessionKeyExists(u"f"));
}

}  // namespace
}  // namespace connectdialog::test
