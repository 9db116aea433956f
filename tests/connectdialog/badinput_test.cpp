// What other tools and other processes do to the store.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "support/childprocess.h"
#include "support/connectdialogtest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;
namespace fs = std::filesystem;

using BadInput = ConnectDialogTest;

TEST_F(BadInput, NamesThatNobodyCouldTypeCanStillBeMovedCopiedRenamedAndDeleted) {
    const std::u16string longName(400, u'n');
    for (const std::u16string_view name :
         {std::u16string_view(u"a:b"), std::u16string_view(u"a\r\nb"), std::u16string_view(u"a & \"b\" "),
          std::u16string_view(u"\x202Eright"), std::u16string_view(u"\xD800"), std::u16string_view(longName)}) {
        for (const SessionArrangement arrangement : {SessionArrangement::kAlphabetical, SessionArrangement::kManual}) {
            SCOPED_TRACE(Escape(name));
            WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"Sessions"); });
            const std::u16string path(name);
            AddSession((u"f\\" + path).c_str());
            AddSession(u"f\\other");
            MakeFolder(u"g");
            Arrange(arrangement);
            Open();
            EXPECT_TRUE(DragTo(u"f\\" + path, u"g"));
            CopyTo(u"g\\" + path, u"f", false);
            Rename(u"g\\" + path, u"plain"_v);
            EXPECT_EQ(StoredIn(u"g"), "plain");
            Click(u"f\\" + path);
            EXPECT_TRUE(SessionKeyExists(VUnicodeString(u"f\\" + path)));
            Delete();
            EXPECT_EQ(StoredIn(u"f"), "other");
        }
    }
}

TEST_F(BadInput, WhatAnotherDialogChangedIsNotLostAndWhatItDeletedDoesNotComeBack) {
    AddSessions({u"f\\a", u"f\\b", u"g\\c"});
    Arrange(SessionArrangement::kManual);
    Open();
    Click(u"f\\a");
    AddSessions({u"f\\new", u"f\\h\\deep"});
    EXPECT_TRUE(DragTo(u"f\\b", u"f\\a", 0));
    EXPECT_EQ(StoredIn(u"f"), "h/ b a new");
    WithKey(u"Sessions", [](VProfileKey& key) {
        key.DeleteKey(u"g");
        key.DeleteKey(u"f\\a");
    });
    const std::string left = StoredIn(u"") + StoredIn(u"f");
    kit.AnswerBoxes(
        [](const VUnicodeString&, unsigned flags) { return (flags & kBoxYesNo) != 0 ? kAnswerYes : kAnswerOk; });
    Rename(u"f\\a", u"x"_v);
    Rename(u"g", u"x"_v);
    EXPECT_FALSE(DragTo(u"g", u"f"));
    CopyTo(u"f\\a", u"", true);
    Click(u"g");
    Command(kConnect);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u"") + StoredIn(u"f"), left);
    dialog->Destroy();
    EXPECT_EQ(StoredIn(u"") + StoredIn(u"f"), left) << "not by keeping how the tree looked either";
}

/// The store is a file, which other processes open and change too.
class StoreInFile : public ConnectDialogTest {
  protected:
    ~StoreInFile() override {
        dialog.reset();
        stored.reset();
    }
    void OpenFile() {
        VReportMessageParams report;
        stored = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + (folder / "store.db")).c_str()), report);
        ASSERT_NE(stored, nullptr);
        SetProfileFactoryGetter([] { return stored.get(); });
    }
    /// Makes ten sessions in f, renames every second one and deletes every third.
    void Work(const std::string& name) {
        kit.AnswerBoxes(
            [](const VUnicodeString&, unsigned flags) { return (flags & 7U) == kBoxYesNo ? kAnswerYes : kAnswerOk; });
        Open();
        for (int i = 0; i < 10; ++i) {
            const VUnicodeString made((name + std::to_string(i)).c_str());
            const VUnicodeString renamed = i % 2 == 0 ? made + u"r" : made;
            options.edit = [&](ISessionConfig& config) { config.SetName(made); };
            Click(u"f");
            Command(kNewSession);
            if (renamed != made) Rename((u"f\\" + made).View(), renamed);
            if (i % 3 != 0) continue;
            Click((u"f\\" + renamed).View());
            Command(kDelete);
        }
        EXPECT_EQ(kit.GetBoxes().size(), 4U) << "nothing was refused";
    }

    TemporaryFolder folder;
    static inline std::unique_ptr<VProfileStoreFactory> stored;
};

TEST_F(StoreInFile, DialogsOfTwoProcessesChangeOneFolderAndLoseNothing) {
    Arrange(SessionArrangement::kManual);
    ChildProcess other([this](ChildProcess& parent) {
        parent.WaitForGo();
        OpenFile();
        Work("c");
        dialog->Destroy();
        return HasFailure() ? 1 : 0;
    });
    OpenFile();
    MakeFolder(u"f");
    other.LetGo();
    Work("p");
    EXPECT_EQ(other.Wait(), 0);
    Open();
    Click(u"f");
    const std::string list = StoredIn(u"f");
    std::vector<std::string> names;
    for (std::size_t at = 0; at < list.size(); at += names.back().size() + 1)
        names.push_back(list.substr(at, list.find(' ', at) - at));
    std::ranges::sort(names);
    EXPECT_EQ(names,
              (std::vector<std::string>{"c1", "c2r", "c4r", "c5", "c7", "c8r", "p1", "p2r", "p4r", "p5", "p7", "p8r"}));
}

}  // namespace
}  // namespace connectdialog::test
