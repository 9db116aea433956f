// What every provider owes, one suite for all of them. A provider is named by its URL; what it does not do is a trait.
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "stores/openstore.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"
#include "support/valuechecks.h"

namespace connectdialog::test {
namespace {

struct Provider {
    const char* name;
    const char16_t* url;  ///< a trailing slash: a file in the test's own folder
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
    std::string Dump() { return DumpStore(*factory, {u"", u"a", u"Is Session"}); }
    bool Set(const char16_t* path, std::uint32_t value = 1) { return WriteDwords(*factory, path, {u"a"}, value); }

    TemporaryFolder folder;
    VReportMessageParams report;
    std::unique_ptr<VProfileStoreFactory> factory;
};

INSTANTIATE_TEST_SUITE_P(Providers, StoreConformance,
                         testing::Values(Provider{"memory", u"memory:"}, Provider{"sqlite", u"sqlite:/"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(StoreConformance, ValuesOfEachTypeComeBack) {
    VProfileStore store(factory.get());
    VProfileKey key(store.GetRootKey(), u"k", 0);
    ExpectValuesComeBack(*key.GetImpl());
    ExpectSecurityComesBack(*key.GetImpl());
}

TEST_P(StoreConformance, AValueThatGoesRenamesNoOther) {
    ASSERT_TRUE(WriteDwords(*factory, u"order", {u"1", u"2", u"3", u"4"}, 0));
    {
        VProfileStore store(factory.get());
        VProfileKey key(store.GetRootKey(), u"k", 0);
        EXPECT_TRUE(key.WriteDword(u"1", 1) && key.WriteDword(u"3", 3) && key.WriteBinary(u"2", nullptr, 0) &&
                    key.WriteDword(u"4", 4) && key.GetImpl()->DeleteValue(u"3"));
    }
    EXPECT_EQ(DumpStore(*factory, {u"1", u"2", u"3", u"4"}),
              "k 5\n  .1=1\n  .2=<>\n  .4=4\norder 5\n  .1=0\n  .2=0\n  .3=0\n  .4=0\n");
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
