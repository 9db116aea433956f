// Random operations on two stores: once as the library does them, once step by step.
#include <array>
#include <random>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "tests/sessiondb/entrytest.h"
#include "tests/sessiondb/stepwiseoperations.h"

namespace connectdialog::test {
namespace {

enum class Kind { kMakeSession, kMakeFolder, kExpand, kArrange, kRename, kDelete, kCopy, kReplace, kCount };

struct Operation {
    Kind kind;
    VUnicodeString path;
    VUnicodeString folder;
    VUnicodeString name;
    VUnicodeString reference;
    bool after;

    std::string Describe() const {
        return std::to_string(static_cast<int>(kind)) + " " + Escape(path) + " " + Escape(folder) + " " + Escape(name) +
               " " + Escape(reference) + "\n";
    }
};

struct RandomCase {
    std::vector<const char16_t*> names;
    /// Names that lists cannot hold may stand in them for one look longer.
    bool looksOnceMore;
};

class RandomOperationsTest : public EntryOperationsTest, public ::testing::WithParamInterface<RandomCase> {
  protected:
    std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(random() % bound); }
    VUnicodeString PickName() { return GetParam().names[Below(static_cast<std::uint32_t>(GetParam().names.size()))]; }
    VUnicodeString PickPath() {
        VUnicodeString path = PickName();
        for (std::uint32_t depth = Below(3); depth > 0; --depth) path = JoinEntryPath(path, PickName());
        return path;
    }
    Operation PickOperation() {
        const auto kind = static_cast<Kind>(Below(static_cast<std::uint32_t>(Kind::kCount)));
        return {kind,
                PickPath(),
                Below(3) == 0 ? VUnicodeString() : PickPath(),
                PickName(),
                Below(2) == 0 ? VUnicodeString() : PickName(),
                Below(2) == 0};
    }

    /// A session with something missing and, at times, something to correct.
    static bool MakeSessionIn(const Operation& operation) {
        const VUnicodeString made = JoinEntryPath(operation.folder, operation.name);
        MakeSession(made.GetData());
        SetValue(made.GetData(), u"SSH2 Host", operation.reference.GetData());
        if (operation.after) SetValue(made.GetData(), u"Idle Timeout", u"no number");
        return true;
    }
    static VUnicodeString Perform(const Operation& operation, bool isModel) {
        const auto& [kind, path, folder, name, reference, after] = operation;
        const auto answer = [](bool isDone) { return isDone ? u"yes"_v : u"no"_v; };
        const bool hasFolder = folder.IsEmpty() || (SessionKeyExists(folder) && IsFolderPath(folder));
        switch (kind) {
            case Kind::kMakeSession:
                return answer(hasFolder && !EntryExistsIn(folder, name) && MakeSessionIn(operation));
            case Kind::kMakeFolder:
                return answer(hasFolder && !EntryExistsIn(folder, name) &&
                              AddFolderEntry(folder, name, reference, after));
            case Kind::kExpand:
                return answer(SessionKeyExists(path) && IsFolderPath(path) && WriteIsExpanded(path, after));
            case Kind::kArrange:
                return isModel ? stepwise::ArrangeEntry(path, reference, after) : ArrangeEntry(path, reference, after);
            case Kind::kRename:
                return answer(isModel ? stepwise::RenameEntry(path, name, reference)
                                      : RenameEntry(path, name, reference));
            case Kind::kDelete:
                return answer(after && (isModel ? stepwise::DeleteEntry(path) : DeleteEntry(path)));
            default:
                if (!hasFolder) return VUnicodeString();
                return isModel ? stepwise::CopyEntry(path, folder, kind == Kind::kCopy, reference, after)
                               : CopyEntry(path, folder, kind == Kind::kCopy, reference, after);
        }
    }

    std::mt19937 random;
};

/// Brings the lists of every folder up to date.
void RefreshAll(const VUnicodeString& folder) {
    ProfileFolderData data(folder, false);
    const bool hasLists = SessionKeyExists(JoinEntryPath(folder, VUnicodeString(kFolderDataKey)));
    EXPECT_TRUE(!hasLists || data.SaveToStore());
    for (const VUnicodeString& name : data.GetFolders()) RefreshAll(JoinEntryPath(folder, name));
}

TEST_P(RandomOperationsTest, GiveWhatTheirStepsGive) {
    constexpr std::size_t kLargestDump = 300000;
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    random.seed(seed);
    VReportMessageParams report;
    const auto model = stores::OpenProfileStoreFactory(u"memory:", report);
    const ValueNames allNames = AllNames();
    std::string history;
    for (int round = 0; round < 500 && Dump().size() < kLargestDump; ++round) {
        Arrange(static_cast<SessionArrangement>(Below(3)));
        const Operation operation = PickOperation();
        history += operation.Describe();
        std::array<VUnicodeString, 2> results;
        for (std::size_t i = 0; i < results.size(); ++i) {
            Use(i == 0 ? *factory : *model);
            results[i] = Perform(operation, i == 1);
            if (GetParam().looksOnceMore) RefreshAll(VUnicodeString());
        }
        ASSERT_EQ(results[0], results[1]) << history;
        ASSERT_EQ(DumpStore(*factory, allNames), DumpStore(*model, allNames)) << history;
    }
}

INSTANTIATE_TEST_SUITE_P(Names, RandomOperationsTest,
                         ::testing::Values(RandomCase{{u"a", u"b", u"c", u"d (1)", u"a (1)"}, false},
                                           RandomCase{{u"a", u"B", u"A", u"a:b", u"b", u"B:", u".x"}, true}));

}  // namespace
}  // namespace connectdialog::test
