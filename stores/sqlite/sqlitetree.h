// The tree of the SQLite provider: one connection, the keys in use, and the unit of work as a transaction.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "stores/common/storetree.h"
#include "stores/sqlite/nametable.h"
#include "stores/sqlite/packedvalues.h"
#include "stores/sqlite/pathcache.h"
#include "stores/sqlite/sqlitedatabase.h"
#include "stores/sqlite/storefile.h"

namespace connectdialog::stores {

class SqliteNode;
struct TreeEntry;

/// The transaction takes the write lock when the unit begins, so whatever is read inside it is what the commit will
/// replace. Reads outside a unit and a view are transactions of their own.
class SqliteTree : public StoreTree {
  public:
    SqliteTree(const std::string& path, const SqliteStoreOptions& options) : file(path, options) {}
    ~SqliteTree() override;

    NodePtr GetRoot() override;
    bool IsWritable() override;
    void StoreOpened() override;
    void StoreClosed() override { lastChecked.reset(); }
    void BeginView() override;
    void EndView() override;
    bool BeginUnit(VReportMessageParams& report) override;
    bool CommitUnit(VReportMessageParams& report) override;
    void RollbackUnit() override;

    /// Opens the file when that was not done yet and there is one. On failure: false, with a report.
    bool Connect(VReportMessageParams& report) {
        return database != nullptr || Open(false, report) <= OpenResult::kAbsent;
    }
    /// Opens once more when another process set the store aside at this moment.
    OpenResult Open(bool create, VReportMessageParams& report);

    // For the nodes.

    bool HasDatabase() const { return database != nullptr; }
    SqliteDatabase& GetDatabase() { return *database; }
    NameTable& GetNames() { return names; }
    bool InUnit() const { return inUnit; }
    /// Counts the units that began.
    std::uint64_t GetUnit() const { return unit; }
    NodePtr FindNode(std::int64_t base, const KeyName& name, bool forCheck, VReportMessageParams& report);
    NodePtr CreateNode(std::int64_t base, const KeyName& name, VReportMessageParams& report);
    bool RemoveNode(std::int64_t base, const KeyName& name, VReportMessageParams& report);
    bool ListChildren(std::int64_t parent, std::size_t limit, ChildPage& page, VReportMessageParams& report);
    /// Whether the current unit created the key of an id.
    bool IsOfThisUnit(std::int64_t id) const { return firstNewId != 0 && id >= firstNewId; }
    /// Reads the names that other processes added, when `id` is beyond those in memory.
    bool LoadNames(std::uint32_t id, VReportMessageParams& report);
    /// 0, with a report, on failure.
    std::uint32_t InternName(const char16_t* name, VReportMessageParams& report);
    void NoteChanged(SqliteNode& node) { changedNodes.push_back(&node); }
    /// The node ends; its changes are written.
    void Release(SqliteNode& node, bool changed);
    std::string rowBuffer;     ///< where a node packs its row
    PackedValues spareValues;  ///< empty, with the memory of a node that ended, for the next one

  private:
    void CloseView();
    void NoteFile();

    /// How far a name led: the key found last, the one above it, and where the first level that is absent begins.
    struct Reached {
        std::int64_t id = 0;
        std::int64_t parent = 0;
        std::size_t position = 0;
    };
    /// The walk that led nowhere last. Inside one unit it leads there again, until the generation changes: whoever
    /// asks for a key and then makes it looks once.
    struct Miss {
        std::uint64_t unit = 0;  ///< 0: none
        std::uint64_t generation = 0;
        std::int64_t base = 0;
        std::u16string folded;
        Reached reached;
    };
    bool Walk(std::int64_t base, const KeyName& name, Reached& reached, VReportMessageParams& report);
    bool WalkFromFolder(std::int64_t base, const KeyName& name, Reached& reached, VReportMessageParams& report);
    bool Descend(std::int64_t base, const KeyName& name, Reached& reached, VReportMessageParams& report);
    std::shared_ptr<SqliteNode> OpenNode(TreeEntry entry, bool forCheck, VReportMessageParams& report);
    std::shared_ptr<SqliteNode> AddNode(std::int64_t base, const KeyName& name, Reached& reached,
                                        VReportMessageParams& report);
    bool NextId(std::int64_t& id, VReportMessageParams& report);
    bool Flush(VReportMessageParams& report);
    bool FailUnit(const VReportMessageParams& cause);
    void EndUnit();
    void ForgetLookups();

    StoreFile file;
    std::unique_ptr<SqliteDatabase> database;
    NameTable names;
    PathCache paths;
    Miss latestMiss;
    std::unordered_map<std::int64_t, std::weak_ptr<SqliteNode>> nodes;  ///< the keys in use, by id
    std::vector<SqliteNode*> changedNodes;
    std::shared_ptr<SqliteNode> lastChecked;  ///< its values are those of the latest check for existence
    FileStamp stamp;                          ///< of the file when it was last looked at
    std::uint32_t changeCounter = 0;          ///< the same
    std::uint64_t unit = 0;
    std::int64_t lastId = 0;      ///< handed out in this unit; 0 before the first
    std::int64_t firstNewId = 0;  ///< of this unit; 0 before there is one
    /// Hashes of the children that keys of this unit have got: what is not here is not there, and not searched.
    std::unordered_set<std::size_t> newChildren;
    bool inUnit = false;
    bool inView = false;  ///< a transaction that only reads is open
    std::size_t views = 0;
    bool unitFailed = false;
    VReportMessageParams unitFailure;
};

}  // namespace connectdialog::stores
