// Random operations on the memory store and on SQLite at once: every outcome must be the same, and so must the trees,
// also after the file was opened anew. CONNECTDIALOG_SEED repeats a run, CONNECTDIALOG_STEPS makes it longer.
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

namespace connectdialog::test {
namespace {

unsigned long FromEnvironment(const char* name, unsigned long otherwise) {
    const char* text = std::getenv(name);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : otherwise;
}

const std::vector<std::u16string> kLevels = {u"Alpha",   u"ALPHA",   u"a:b",         u"q\"'%", std::u16string{0xD800},
                                             u"\u00C9t", u"\u00E9T", u"\U0001F511x", u"\x01",  u"alp"};
const ValueNames kValues = {u"Is Session", u"Port", u"HOST", u"host", u"", u"Gr\u00F6\u00DFe"};
const std::vector<std::u16string> kTexts = {u"", u"short", std::u16string(400, u'y'), u"\u4E00\u4E01",
                                            std::u16string{0xDC00, u'!'}};

/// What one operation gave: its result, the report's code and what was read.
struct Outcome {
    bool result = false;
    std::uint32_t code = 0;
    std::string read;
    bool operator==(const Outcome&) const = default;
};

/// The two stores side by side. Operations take the index of the side, so that both do the same.
class Pair {
  public:
    explicit Pair(std::string path) : path(std::move(path)) { Open(); }

    void Open() {
        VReportMessageParams report;
        const std::u16string url = u"sqlite:" + std::u16string(path.begin(), path.end());
        sides[1].factory = stores::OpenProfileStoreFactory(VUnicodeString(url), report);
        if (sides[0].factory == nullptr) sides[0].factory = stores::OpenProfileStoreFactory(u"memory:", report);
    }
    void Compare(const std::function<Outcome(std::size_t side)>& operation, const std::string& what) {
        const Outcome expected = operation(0);
        const Outcome actual = operation(1);
        EXPECT_TRUE(expected == actual) << what << ": memory " << expected.result << "/" << expected.code << " "
                                        << expected.read << ", sqlite " << actual.result << "/" << actual.code << " "
                                        << actual.read;
    }
    void CompareTrees() { EXPECT_EQ(DumpStore(*sides[0].factory, kValues), DumpStore(*sides[1].factory, kValues)); }
    void Reopen() {
        CloseAll();
        sides[1].factory.reset();
        Open();
    }
    void CloseAll() {
        for (Side& side : sides) {
            side.keys.clear();
            while (!side.stores.empty()) side.stores.pop_back();
        }
    }

    struct Side {
        std::unique_ptr<VProfileStoreFactory> factory;
        std::vector<std::unique_ptr<VProfileStore>> stores;
        std::vector<std::unique_ptr<VProfileKey>> keys;  ///< all opened from the first store
    };
    std::array<Side, 2> sides;

  private:
    std::string path;
};

class Walker {
  public:
    Walker(Pair& pair, unsigned long seed) : pair(pair), random(static_cast<std::mt19937::result_type>(seed)) {}

    void Step() {
        if (pair.sides[0].stores.empty()) OpenStore();
        static constexpr std::array kSteps = {
            &Walker::OpenStore, &Walker::CloseStore, &Walker::OpenKey, &Walker::OpenKey,   &Walker::OpenKey,
            &Walker::CloseKey,  &Walker::Write,      &Walker::Write,   &Walker::Write,     &Walker::Write,
            &Walker::Write,     &Walker::CopyValues, &Walker::Erase,   &Walker::DeleteKey, &Walker::KeyExists,
            &Walker::Read,      &Walker::Read,       &Walker::List,    &Walker::Commit,    &Walker::Abandon,
            &Walker::Join};
        (this->*kSteps[Pick(kSteps.size())])();
    }

  private:
    std::size_t Pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); }
    const std::u16string& PickFrom(const std::vector<std::u16string>& pool) { return pool[Pick(pool.size())]; }
    std::u16string PickPath() {
        std::u16string path = PickFrom(kLevels);
        for (std::size_t more = Pick(3); more > 0; --more) path += u"\\" + PickFrom(kLevels);
        return Pick(40) == 0 ? path + u"\\" : path;
    }
    /// A key that both sides have open: one of the pool or the root.
    std::function<VProfileKey&(std::size_t)> PickKey() {
        const std::size_t index = Pick(pair.sides[0].keys.size() + 1);
        return [this, index](std::size_t side) -> VProfileKey& {
            Pair::Side& at = pair.sides[side];
            return index < at.keys.size() ? *at.keys[index] : *at.stores.front()->GetRootKey();
        };
    }
    /// The same on both sides with a picked key; what `act` adds to its text is compared too.
    void OnKey(const std::string& what, const std::function<bool(VProfileKey& key, std::string& read)>& act) {
        const auto key = PickKey();
        pair.Compare(
            [&](std::size_t side) {
                Outcome outcome;
                outcome.result = act(key(side), outcome.read);
                outcome.code = CodeOf(key(side));
                return outcome;
            },
            what);
    }
    void OnStore(const std::string& what, const std::function<bool(Pair::Side& side)>& act) {
        pair.Compare([&](std::size_t side) { return Outcome{act(pair.sides[side]), 0, ""}; }, what);
    }

    void OpenStore() {
        if (pair.sides[0].stores.size() == 3) return;
        for (Pair::Side& side : pair.sides) side.stores.push_back(std::make_unique<VProfileStore>(side.factory.get()));
    }
    void CloseStore() {
        const bool isLast = pair.sides[0].stores.size() == 1;
        OnStore("close", [&](Pair::Side& side) {
            if (isLast) side.keys.clear();
            const bool closed = side.stores.back()->Close();
            side.stores.pop_back();
            return closed;
        });
    }
    void OpenKey() {
        const auto parent = PickKey();
        const std::u16string path = Pick(10) == 0 ? u"" : PickPath();
        const std::uint32_t folder = Pick(4) == 0 ? 1 : 0;
        const bool full = pair.sides[0].keys.size() == 6;
        const std::size_t replaced = Pick(6);
        pair.Compare(
            [&](std::size_t side) {
                auto key = std::make_unique<VProfileKey>(&parent(side), path.c_str(), folder);
                const Outcome outcome{true, CodeOf(*key), ""};
                auto& keys = pair.sides[side].keys;
                full ? keys[replaced].swap(key) : keys.push_back(std::move(key));
                return outcome;
            },
            "open " + Escape(path));
    }
    void CloseKey() {
        for (Pair::Side& side : pair.sides) {
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
        const auto key = PickKey();
        const auto source = PickKey();
        pair.Compare(
            [&](std::size_t side) {
                const bool copied = key(side).CopyValues(source(side));
                return Outcome{copied, CodeOf(key(side)), ""};
            },
            "copy");
    }
    void Erase() {
        const std::u16string& name = PickFrom(kValues);
        OnKey("erase " + Escape(name),
              [&](VProfileKey& key, std::string&) { return key.GetImpl()->DeleteValue(name.c_str()); });
    }
    void DeleteKey() {
        const std::u16string path = PickPath();
        OnKey("delete " + Escape(path), [&](VProfileKey& key, std::string&) { return key.DeleteKey(path.c_str()); });
    }
    void KeyExists() {
        const std::u16string path = PickPath();
        OnKey("exists " + Escape(path), [&](VProfileKey& key, std::string&) { return key.KeyExists(path.c_str()); });
    }
    void Read() {
        const std::u16string& name = PickFrom(kValues);
        OnKey("read " + Escape(name), [&](VProfileKey& key, std::string& read) {
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
            for (std::uint32_t kind = 0; children.NextWithKind(name, kind);) {
                read += Escape(name) + "/" + std::to_string(kind) + " ";
            }
            return true;
        });
    }
    void Commit() {
        OnStore("commit", [](Pair::Side& side) { return side.stores.front()->Commit(); });
    }
    void Abandon() {
        for (Pair::Side& side : pair.sides) side.stores.front()->Abandon();
    }
    void Join() {
        OnStore("join", [](Pair::Side& side) { return side.stores.back()->JoinUnitOfWork(); });
    }

    Pair& pair;
    std::mt19937 random;
};

TEST(StoreModelCheck, SqliteDoesWhatTheMemoryStoreDoes) {
    const unsigned long seed = FromEnvironment("CONNECTDIALOG_SEED", std::random_device()());
    const unsigned long steps = FromEnvironment("CONNECTDIALOG_STEPS", 5000);
    std::printf("seed %lu, %lu steps\n", seed, steps);
    SCOPED_TRACE("CONNECTDIALOG_SEED=" + std::to_string(seed));
    const TemporaryFolder folder;
    Pair pair(folder / "store.db");
    Walker walker(pair, seed);
    for (unsigned long step = 1; step <= steps && !testing::Test::HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        walker.Step();
        if (step % 50 == 0) pair.CompareTrees();
        if (step % 500 == 0) {
            pair.Reopen();
            pair.CompareTrees();
        }
    }
    pair.CloseAll();
    pair.CompareTrees();
}

}  // namespace
}  // namespace connectdialog::test
