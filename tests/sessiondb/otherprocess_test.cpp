// What another process changes between a check and the lock counts: nothing of it is lost, and nothing is stored where
// it would never be shown.
#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "support/fakesuite.h"
#include "support/faultystore.h"
#include "support/strings.h"

namespace connectdialog::test {
namespace {

class OtherProcessTest : public LibraryTest {
  protected:
    /// Begins with an empty store.
    OtherProcessTest() { Renew(); }
    void Renew() {
        VReportMessageParams report;
        shared = std::make_unique<FaultyStoreFactory>(*(factory = stores::OpenProfileStoreFactory(u"memory:", report)));
        active = shared.get();
        SetProfileFactoryGetter([] { return active; });
        ForgetButtonBarUpgrade();
    }
    std::string Dump() const {
        return DumpStore(*factory, {u"Folder List", u"Session List", u"Is Expanded", u"Is Session", u"Title Bar"});
    }

    static inline VProfileStoreFactory* active = nullptr;
    std::unique_ptr<FaultyStoreFactory> shared;
};

VRef<ISessionConfig> Make(const char16_t* path) {
    auto config = VRef<ISessionConfig>::Adopt(CreateSessionConfig(GetEntryLeaf(path).GetData(), nullptr));
    config->SetPath(path);
    return config;
}

void Put(const char16_t* path) {
    EXPECT_TRUE(SaveSession(*Make(path)));
}
bool StoreAt(const char16_t* parent, const char16_t* name) {
    return StoreSessionEntry(parent, name, *Make(name), u"", true);
}
void MakeParentASession() {
    EXPECT_TRUE(DeleteEntry(u"P"));
    Put(u"P");
}

TEST_F(OtherProcessTest, WhatWasMadeMeanwhileIsNeitherReplacedNorBuried) {
    const struct {
        const char* what;
        void (*other)();
        bool (*run)();
    } rows[] = {
        {"a session takes the new name", [] { EXPECT_TRUE(RenameInPlace(u"b", u"c")); },
         [] { return RenameInPlace(u"a", u"C"); }},
        {"so it does by its reference", [] { Put(u"c"); }, [] { return RenameToFreeName(u"a", u"c", u""); }},
        {"a folder takes the new name", [] { Put(u"g\\one"); }, [] { return RenameInPlace(u"f", u"g"); }},
        {"a folder stands where the session should", [] { Put(u"c\\one"); }, [] { return StoreAt(u"", u"c"); }},
        {"a session is the parent of a session", MakeParentASession, [] { return StoreAt(u"P", u"s"); }},
        {"of a saved one", MakeParentASession, [] { return SaveSession(*Make(u"P\\s")); }},
        {"of one among many", MakeParentASession,
         [] {
             const auto session = Make(u"P\\s");
             return StoreSessionEntries(u"P", *session, 1, [](std::size_t) { return true; });
         }},
        {"of a folder", MakeParentASession, [] { return AddFolderEntry(u"P", u"d", u"", true); }},
        {"one level up", MakeParentASession, [] { return AddFolderEntry(u"P\\Q", u"d", u"", true); }},
        {"of a copy", MakeParentASession, [] { return !CopyEntry(u"a", u"P\\Q", true, u"", true).IsEmpty(); }},
        {"of what is moved", MakeParentASession, [] { return !MoveEntry(u"f", u"P\\Q", true, u"", true).IsEmpty(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Renew();
        for (const char16_t* path : {u"a", u"b", u"f\\s", u"P\\Q\\t"}) Put(path);
        std::string afterOther;
        shared->plan.beforeLock = [&] {
            row.other();
            afterOther = Dump();
        };
        EXPECT_FALSE(row.run());
        EXPECT_EQ(Dump(), afterOther);
    }
    EXPECT_TRUE(RenameToFreeName(u"a", u"A", u"") && RenameInPlace(u"f", u"F")) << "the case alone";
}

TEST_F(OtherProcessTest, ATemplateThatWasMadeMeanwhileCounts) {
    UpgradeButtonBars();  // which would be what takes the lock first
    shared->plan.beforeLock = [] {
        OpenSession(kDefaultSession);
        WithKey(u"Sessions\\Default", [](VProfileKey& key) { key.WriteString(u"Title Bar", u"theirs"); });
    };
    const VRef<ISessionConfig> config = OpenSession(kDefaultSession);
    ASSERT_TRUE(config && !shared->plan.beforeLock);
    WithKey(u"Sessions\\Default", [&](VProfileKey& key) { config->Save(key, false); });
    EXPECT_EQ(TextAt(u"Sessions\\Default", u"Title Bar"), u"theirs");
}

TEST_F(OtherProcessTest, ButtonBarsThatWereMovedMeanwhileStay) {
    WithKey(u"ButtonBarV2", [](VProfileKey& key) { key.WriteMultiString(u"Mine", Strings({u"SEND,2,,,"})); });
    shared->plan.beforeLock = [] {
        UpgradeButtonBars();
        WithKey(u"ButtonBarV3", [](VProfileKey& key) { key.WriteMultiString(u"Mine", Strings({u"SEND,9,,,"})); });
    };
    UpgradeButtonBars();
    VStringArray lines;
    WithKey(u"ButtonBarV3", [&](VProfileKey& key) { key.ReadMultiString(u"Mine", lines); });
    EXPECT_EQ(lines, Strings({u"SEND,9,,,"}));
}

}  // namespace
}  // namespace connectdialog::test
