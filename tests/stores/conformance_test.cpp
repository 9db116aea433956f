// What every provider owes, one suite for all of them, a provider named by its URL; and random operations on the memory
// store and on SQLite at once: every outcome must be the same, and so must the trees, also after the file was opened
// anew. CONNECTDIALOG_SEED repeats a run, CONNECTDIALOG_STEPS makes it longer.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <random>
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

unsigned long FromEnvironment(const char* name, unsigned long otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : otherwise;
}

const std::vector<std::u16string> kLevels = {u"Alpha",   u"ALPHA",   u"a:b",         u"q\"'%", std::u16string{0xD800},
                                             u"\u00C9t", u"\u00E9T", u"\U0001F511x", u"\x01",  u"alp"};
const ValueNames kValues = {u"Is Session", u"Port", u"HOST", u"host", u"", u"Gr\u00F6\u00DFe"};
const std::vector<std::u16string> kTexts = {u"", u"short", std::u16string(400, u'y'), u"\u4E00\u4E01",
                                            std::u16string{0xDC00, u'!'}};

/// One of the two stores. All keys are opened from the first handle.
struct Side {
    std::unique_ptr<VProfileStoreFactory> factory;
    std::vector<std::unique_ptr<VProfileStore>> stores;
    std::vector<std::unique_ptr<VProfileKey>> keys;

    VProfileKey& At(std::size_t index) { return index < keys.size() ? *keys[index] : *stores.front()->GetRootKey(); }
};

/// Does the same on both sides. What an operation gives is a text: its result, the report's code, what was read.
class Walker {
  public:
    Walker(std::string path, unsigned long seed)
        : path(std::move(path)), random(static_cast<std::mt19937::result_type>(seed)) {
        VReportMessageParams report;
        sides[0].factory = stores::OpenProfileStoreFactory(u"memory:", report);
        Reopen();
    }
    void CompareTrees() { EXPECT_EQ(DumpStore(*sides[0].factory, kValues), DumpStore(*sides[1].factory, kValues)); }
    void CloseAll() {
        for (Side& side : sides) {
            side.keys.clear();
            while (!side.stores.empty()) side.stores.pop_back();
        }
    }
    void Reopen() {
        CloseAll();
        VReportMessageParams report;
        sides[1].factory.reset();
        sides[1].factory = stores::OpenProfileStoreFactory(u"sqlite:"_v + VUnicodeString(path.c_str()), report);
    }
    void Step() {
        if (sides[0].stores.empty()) OpenStore();
        static constexpr std::array kSteps = {
            &Walker::OpenStore, &Walker::CloseStore, &Walker::OpenKey, &Walker::OpenKey,   &Walker::OpenKey,
            &Walker::CloseKey,  &Walker::Write,      &Walker::Write,   &Walker::Write,     &Walker::Write,
            &Walker::Write,     &Walker::CopyValues, &Walker::Erase,   &Walker::DeleteKey, &Walker::KeyExists,
            &Walker::Read,      &Walker::Read,       &Walker::List,    &Walker::EndUnit,   &Walker::EndUnit,
            &Walker::EndUnit};
        (this->*kSteps[Pick(kSteps.size())])();
    }

  private:
    std::size_t Pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); }
    const std::u16string& PickFrom(const std::vector<std::u16string>& pool) { return pool[Pick(pool.size())]; }
    std::u16string PickPath() {
        std::u16string picked = PickFrom(kLevels);
        for (std::size_t more = Pick(3); more > 0; --more) picked += u"\\" + PickFrom(kLevels);
        return Pick(40) == 0 ? picked + u"\\" : picked;
    }
    /// A key that both sides have open: one of the pool or the root.
    std::size_t PickKey() { return Pick(sides[0].keys.size() + 1); }

    void Compare(const std::string& what, const std::function<std::string(Side&)>& act) {
        const std::string expected = act(sides[0]);
        EXPECT_EQ(act(sides[1]), expected) << what;
    }
    void OnKey(const std::string& what, const std::function<bool(VProfileKey& key, std::string& read)>& act) {
        Compare(what, [&, index = PickKey()](Side& side) {
            std::string read;
            const bool result = act(side.At(index), read);
            return std::to_string(result) + ' ' + std::to_string(CodeOf(side.At(index))) + ' ' + read;
        });
    }

    void OpenStore() {
        if (sides[0].stores.size() == 3) return;
        for (Side& side : sides) side.stores.push_back(std::make_unique<VProfileStore>(side.factory.get()));
    }
    void CloseStore() {
        Compare("close", [](Side& side) {
            if (side.stores.size() == 1) side.keys.clear();
            const bool closed = side.stores.back()->Close();
            side.stores.pop_back();
            return std::to_string(closed);
        });
    }
    void OpenKey() {
        const std::size_t parent = PickKey();
        const std::u16string opened = Pick(10) == 0 ? u"" : PickPath();
        const std::uint32_t folder = Pick(4) == 0 ? 1 : 0;
        const std::size_t replaced = Pick(6);
        Compare("open " + Escape(opened), [&](Side& side) {
            auto key = std::make_unique<VProfileKey>(&side.At(parent), opened.c_str(), folder);
            const std::string code = std::to_string(CodeOf(*key));
            side.keys.size() == 6 ? side.keys[replaced].swap(key) : side.keys.push_back(std::move(key));
            return code;
        });
    }
    void CloseKey() {
        for (Side& side : sides) {
            if (!side.keys.empty()) side.keys.pop_back();
        }
    }
    void Write() {
        const std::u16string& name = PickFrom(kValues);
        const std::u16string& text = PickFrom(kTexts);
        const auto number = static_cast<std::uint32_t>(random()) >> (8 * Pick(4));
        const std::size_t type = Pick(4);
        VStringArray strings;
        for (std::size_t i = Pick(3); i > 0; --i) strings.Add(VUnicodeString(PickFrom(kTexts)));
        OnKey("write " + Escape(name), [&](VProfileKey& key, std::string&) {
            return type == 0   ? key.WriteDword(name.c_str(), number)
                   : type == 1 ? key.WriteString(name.c_str(), text.c_str())
                   : type == 2 ? key.WriteBinary(name.c_str(), text.data(), number & 3)
                               : key.WriteMultiString(name.c_str(), strings);
        });
    }
    void CopyValues() {
        Compare("copy", [&, target = PickKey(), source = PickKey()](Side& side) {
            const bool copied = side.At(target).CopyValues(side.At(source));
            return std::to_string(copied) + ' ' + std::to_string(CodeOf(side.At(target)));
        });
    }
    void Erase() {
        OnKey("erase", [&, name = PickFrom(kValues)](VProfileKey& key, std::string&) {
            return key.GetImpl()->DeleteValue(name.c_str());
        });
    }
    void DeleteKey() {
        const std::u16string deleted = PickPath();
        OnKey("delete " + Escape(deleted),
              [&](VProfileKey& key, std::string&) { return key.DeleteKey(deleted.c_str()); });
    }
    void KeyExists() {
        const std::u16string asked = PickPath();
        OnKey("exists " + Escape(asked), [&](VProfileKey& key, std::string&) { return key.KeyExists(asked.c_str()); });
    }
    void Read() {
        OnKey("read", [&, name = PickFrom(kValues)](VProfileKey& key, std::string& read) {
            VUnicodeString text;
            const bool found = key.ReadString(name.c_str(), text);
            read = Escape(text);
            return found;
        });
    }
    void List() {
        OnKey("list", [](VProfileKey& key, std::string& read) {
            VProfileKeyIterator children(key, false);
            VUnicodeString name;
            for (std::uint32_t kind = 0; children.NextWithKind(name, kind);)
                read += Escape(name) + "/" + std::to_string(kind) + " ";
            return true;
        });
    }
    void EndUnit() {
        Compare("end", [&, how = Pick(3)](Side& side) {
            if (how == 0) side.stores.front()->Abandon();
            return std::to_string(how == 0   ? true
                                  : how == 1 ? side.stores.front()->Commit()
                                             : side.stores.back()->JoinUnitOfWork());
        });
    }

    std::string path;
    std::array<Side, 2> sides;
    std::mt19937 random;
};

TEST(StoreModelCheck, SqliteDoesWhatTheMemoryStoreDoes) {
    const unsigned long seed = FromEnvironment("CONNECTDIALOG_SEED", std::random_device()());
    const unsigned long steps = FromEnvironment("CONNECTDIALOG_STEPS", 5000);
    std::printf("seed %lu, %lu steps\n", seed, steps);
    SCOPED_TRACE("CONNECTDIALOG_SEED=" + std::to_string(seed));
    const TemporaryFolder folder;
    Walker walker(folder / "store.db", seed);
    for (unsigned long step = 1; step <= steps && !testing::Test::HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        walker.Step();
        if (step % 50 == 0) walker.CompareTrees();
        if (step % 500 == 0) walker.Reopen();
    }
    walker.CloseAll();
    walker.CompareTrees();
}

}  // namespace
}  // namespace connectdialog::test
