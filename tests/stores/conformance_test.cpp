// What every provider owes, one suite for all of them. A provider is named by its URL; what it does not do is a trait.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "profile/vprofilekey.h"
#include "stores/openstore.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"
#include "support/valuechecks.h"

namespace connectdialog::test {
namespace {

using testing::ElementsAre;

struct Provider {
    const char* name;
    const char16_t* url;  ///< a trailing slash: a file in the test's own folder
    bool persists;
};

class StoreConformance : public testing::TestWithParam<Provider> {
  protected:
    StoreConformance() { Open(); }

    void Open() {
        std::u16string url = GetParam().url;
        if (url.ends_with(u'/')) {
            const std::string path = folder / "sub/store.db";
            url.pop_back();
            url.append(path.begin(), path.end());
        }
        factory = stores::OpenProfileStoreFactory(VUnicodeString(url), report);
        ASSERT_NE(factory, nullptr);
    }
    void Reopen() {
        if (!GetParam().persists) return;
        factory.reset();
        Open();
    }
    std::string Dump() { return DumpStore(*factory, {u"", u"a", u"Is Session"}); }
    std::vector<std::string> ListNames(const char16_t* path) {
        VProfileStore store(factory.get());
        VProfileKey key(store.GetRootKey(), path, 0);
        VProfileKeyIterator children(key, false);
        std::vector<std::string> names;
        for (VUnicodeString name; children.Next(name);) names.push_back(Escape(name));
        return names;
    }
    bool Set(const char16_t* path, std::uint32_t value = 1) { return WriteDwords(*factory, path, {u"a"}, value); }

    TemporaryFolder folder;
    VReportMessageParams report;
    std::unique_ptr<VProfileStoreFactory> factory;
};

INSTANTIATE_TEST_SUITE_P(Providers, StoreConformance,
                         testing::Values(Provider{"memory", u"memory:", false}, Provider{"sqlite", u"sqlite:/", true}),
                         [](const auto& info) { return std::string(info.param.name); });

std::vector<std::u16string> HostileTexts() {
    return {u"",
            u"plain",
            u"\u00FF latin",
            u"\u0100 wide",
            u"\U0001F511 pair",
            std::u16string{0xD800} + u" high alone",
            std::u16string{u'x', 0xDC00},
            std::u16string{0xDC00, 0xD800},
            u"tab\t line\r\n \x01 \x7F",
            u"quote ' \" % ? : / * '; DROP TABLE rows; --",
            std::u16string(10000, u'n'),
            std::u16string(300, u'\u4E00')};
}

TEST_P(StoreConformance, AnyTextComesBackUnitByUnitAndIsANameWithoutABackslash) {
    const std::vector<std::u16string> texts = HostileTexts();
    VStringArray list;
    for (const std::u16string& text : texts) list.Add(VUnicodeString(text));
    list.Add(VUnicodeString(u"with\0zero", 9));
    {
        VProfileStore store(factory.get());
        VProfileKey key(store.GetRootKey(), u"k", 0);
        for (const std::u16string& text : texts) {
            ASSERT_TRUE(key.WriteString(text.c_str(), text.c_str())) << Escape(text);
            VProfileKey(&key, text.c_str(), 1);
        }
        ASSERT_TRUE(key.WriteMultiString(u"list", list) && key.WriteMultiString(u"none", VStringArray()));
    }
    Reopen();
    EXPECT_EQ(ListNames(u"k").size(), texts.size() - 1) << "all but the empty one";
    VProfileStore store(factory.get());
    VProfileKey key(store.GetRootKey(), u"k", 0);
    for (const std::u16string& expected : texts) {
        VUnicodeString text;
        EXPECT_TRUE(key.ReadString(expected.c_str(), text));
        EXPECT_EQ(Escape(text), Escape(expected));
        EXPECT_TRUE(key.KeyExists(expected.c_str())) << Escape(expected);
    }
    VStringArray read;
    EXPECT_TRUE(key.ReadMultiString(u"LIST", read));
    EXPECT_TRUE(read == list);
    EXPECT_TRUE(key.ReadMultiString(u"none", read) && read.IsEmpty());
}

TEST_P(StoreConformance, ValuesOfEachTypeComeBack) {
    VProfileStore store(factory.get());
    VProfileKey key(store.GetRootKey(), u"k", 0);
    ExpectValuesComeBack(*key.GetImpl());
    ExpectSecurityComesBack(*key.GetImpl());
}

TEST_P(StoreConformance, ABadNameIsRefusedEverywhere) {
    std::u16string deep = u"d";
    for (int level = 1; level < 128; ++level) deep += u"\\d";
    ASSERT_TRUE(Set(deep.c_str()));
    const std::string before = Dump();
    VProfileStore store(factory.get());
    VProfileKey& root = *store.GetRootKey();
    const std::u16string bad[] = {u"\\", u"a\\", u"\\a", u"a\\\\b", deep + u"\\e", std::u16string(16384, u'x')};
    for (const std::u16string& name : bad) {
        VProfileKey key(&root, name.c_str(), 1);
        std::uint32_t value = 3;
        EXPECT_FALSE(key.WriteDword(u"a", 1));
        EXPECT_EQ(CodeOf(key), 87U);
        EXPECT_FALSE(key.ReadDword(u"a", value));
        EXPECT_FALSE(root.KeyExists(name.c_str()));
        EXPECT_FALSE(root.DeleteKey(name.c_str()));
        EXPECT_EQ(CodeOf(root), 87U);
    }
    EXPECT_FALSE(root.DeleteKey(u"") || root.DeleteKey(nullptr));
    EXPECT_FALSE(root.WriteDword(std::u16string(16384, u'x').c_str(), 1));
    EXPECT_TRUE(root.KeyExists(nullptr));
    VProfileKey deepest(&root, deep.c_str(), 0);
    VProfileKey below(&deepest, u"e", 1);
    EXPECT_EQ(CodeOf(below), 87U);
    EXPECT_EQ(Dump(), before);
}

TEST_P(StoreConformance, TheSessionMarkMakesTheKind) {
    ASSERT_TRUE(Set(u"f\\folder") && WriteDwords(*factory, u"f\\Session", {u"IS SESSION"}, 0));
    const auto kinds = [&](bool byKind) {
        VProfileStore store(factory.get());
        VProfileKey key(store.GetRootKey(), u"f", 0);
        VProfileKeyIterator children(key, byKind);
        std::vector<std::uint32_t> found;
        VUnicodeString name;
        for (std::uint32_t kind = 0; children.NextWithKind(name, kind);) found.push_back(kind);
        return found;
    };
    EXPECT_THAT(kinds(false), ElementsAre(5U, 6U));
    EXPECT_THAT(kinds(true), ElementsAre(5U, 3U));
    {
        VProfileStore store(factory.get());
        VProfileKey session(store.GetRootKey(), u"f\\session", 0);
        VProfileKey plain(store.GetRootKey(), u"f\\folder", 0);
        EXPECT_TRUE(session.GetImpl()->DeleteValue(u"is session"));
        EXPECT_FALSE(session.GetImpl()->DeleteValue(u"is session"));
        EXPECT_TRUE(plain.WriteDword(u"Is Session", 1));
        EXPECT_THAT(kinds(false), ElementsAre(6U, 5U));  // before anything was committed
    }
    Reopen();
    EXPECT_THAT(kinds(false), ElementsAre(6U, 5U));
}

TEST_P(StoreConformance, AReadOnlyRootReadsAndRefusesWrites) {
    ASSERT_TRUE(Set(u"k"));
    const std::string before = Dump();
    const std::unique_ptr<IProfileStoreImpl> store(factory->CreateStore());
    const std::unique_ptr<IProfileKeyImpl> root(store->CreateRootKey(true));
    const std::unique_ptr<IProfileKeyImpl> key(root->OpenChild(u"k", 0, 1));
    std::uint32_t value = 0;
    EXPECT_TRUE(key->ReadDword(u"a", value));
    EXPECT_FALSE(key->IsWritable());
    EXPECT_FALSE(key->WriteDword(u"a", 2) || key->WriteSecurity(u"a", VSecurityDescriptor()) || key->DeleteValue(u"a"));
    EXPECT_FALSE(root->DeleteKey(u"k"));
    EXPECT_EQ(root->GetLastReport()->GetCode(), 5U);
    const std::unique_ptr<IProfileKeyImpl> absent(root->OpenChild(u"new", 0, 1));
    EXPECT_EQ(root->GetLastReport()->GetCode(), 5U);
    EXPECT_EQ(Dump(), before);
}

TEST_P(StoreConformance, AbandonPutsEverythingBack) {
    ASSERT_TRUE(Set(u"kept\\below") && WriteDwords(*factory, u"session", {u"Is Session", u"a"}, 1));
    const std::string before = Dump();
    VProfileStore outer(factory.get());
    VProfileKey kept(outer.GetRootKey(), u"kept", 0);
    VProfileKey below(&kept, u"below", 0);
    VProfileKey made(outer.GetRootKey(), u"made\\deep", 1);
    VProfileKey inMade(&made, u"inner", 0);
    EXPECT_TRUE(inMade.WriteDword(u"a", 3) && kept.WriteString(u"new value name", u"x"));
    EXPECT_TRUE(below.WriteDword(u"a", 4) && kept.DeleteKey(u"below") && outer.GetRootKey()->DeleteKey(u"session"));
    {
        VProfileStore inner(factory.get());
        VProfileKey again(inner.GetRootKey(), u"kept\\below", 0);
        EXPECT_TRUE(again.WriteDword(u"a", 5));
    }
    EXPECT_NE(Dump(), before);
    outer.Abandon();
    EXPECT_EQ(Dump(), before);
    std::uint32_t value = 0;
    EXPECT_TRUE(below.ReadDword(u"a", value));
    EXPECT_EQ(value, 1U);
    EXPECT_FALSE(inMade.ReadDword(u"a", value));
    EXPECT_EQ(CodeOf(inMade), 2U);
    EXPECT_TRUE(Set(u"other"));  // may take the place that the undone keys had
    EXPECT_TRUE(inMade.WriteDword(u"a", 6) && below.WriteDword(u"a", 7));
    EXPECT_TRUE(outer.Close());
    Reopen();
    EXPECT_EQ(Dump(),
              "kept 5\n  below 5\n    .a=7\nmade 5\n  deep 5\n    inner 5\n      .a=6\nother 5\n  .a=1\n"
              "session 6\n  .a=1\n  .Is{20}Session=1\n");
}

TEST_P(StoreConformance, TheLastStoreThatTakesPartCommits) {
    VProfileStore reader(factory.get());
    auto first = std::make_unique<VProfileStore>(factory.get());
    auto second = std::make_unique<VProfileStore>(factory.get());
    EXPECT_TRUE(first->JoinUnitOfWork());
    EXPECT_TRUE(WriteDwords(*factory, u"x", {u"a"}, 1));
    EXPECT_TRUE(second->GetRootKey()->WriteDword(u"a", 1));
    EXPECT_TRUE(second->Close() && second->Close());
    first->Abandon();  // still open: nothing was durable yet
    EXPECT_EQ(Dump(), "");
    EXPECT_TRUE(WriteDwords(*factory, u"y", {u"a"}, 1));
    EXPECT_TRUE(first->Commit());
    first->Abandon();
    EXPECT_EQ(Dump(), "y 5\n  .a=1\n");
    EXPECT_TRUE(WriteDwords(*factory, u"z", {u"a"}, 1));
    EXPECT_TRUE(first->Close());
    reader.Abandon();
    EXPECT_EQ(Dump(), "y 5\n  .a=1\nz 5\n  .a=1\n");
}

TEST_P(StoreConformance, HalfOfAUnitNeverBecomesDurable) {
    VProfileStore outer(factory.get());
    EXPECT_TRUE(VProfileKey(outer.GetRootKey(), u"half", 1).WriteDword(u"a", 1));
    {
        VProfileStore inner(factory.get());
        EXPECT_TRUE(inner.GetRootKey()->WriteDword(u"inner", 1));
        inner.Abandon();
        EXPECT_TRUE(VProfileKey(inner.GetRootKey(), u"kept", 0).WriteDword(u"a", 1)) << "who abandons may begin anew";
    }
    EXPECT_FALSE(outer.GetRootKey()->WriteDword(u"second half", 1));
    EXPECT_EQ(CodeOf(*outer.GetRootKey()), 1223U);
    EXPECT_FALSE(outer.Commit());
    EXPECT_FALSE(outer.Close());
    EXPECT_EQ(Dump(), "kept 5\n  .a=1\n");
}

}  // namespace
}  // namespace connectdialog::test
