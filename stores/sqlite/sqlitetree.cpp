#include "stores/sqlite/sqlitetree.h"

#include <algorithm>
#include <utility>

#include "platform/lasterror.h"
#include "stores/common/keyname.h"
#include "stores/common/profilestore.h"
#include "stores/sqlite/sqlitenode.h"
#include "stores/sqlite/wtf8.h"

namespace connectdialog::stores {

namespace {

constexpr std::int64_t kRootId = 1;

std::u16string_view LastLevel(std::u16string_view name) {
    return name.substr(name.rfind(u'\\') + 1);  // without a backslash: npos + 1 is 0
}

std::size_t LevelEnd(std::u16string_view name, std::size_t position) {
    return std::min(name.find(u'\\', position), name.size());
}

/// One read transaction around several reads takes the file's locks once. Inside a unit there is one already.
class ReadTransaction {
  public:
    explicit ReadTransaction(SqliteDatabase& database) : database(database) {
        VReportMessageParams ignored;
        active = !database.InTransaction() && database.Run(Sql::kBeginRead, ignored);
    }
    ~ReadTransaction() {
        VReportMessageParams ignored;
        if (active) database.Run(Sql::kCommit, ignored);
    }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

  private:
    SqliteDatabase& database;
    bool active;
};

}  // namespace

std::unique_ptr<VProfileStoreFactory> OpenSqliteStore(const std::string& path, const SqliteStoreOptions& options,
                                                      VReportMessageParams& report) {
    report.Clear();
    auto tree = std::make_shared<SqliteTree>(path, options);
    OpenResult result = tree->Open(false, report);
    if (result == OpenResult::kSetAside) {
        VReportMessageParams failure;
        result = tree->Open(false, failure);
        if (result > OpenResult::kAbsent) report = failure;
    }
    return result <= OpenResult::kAbsent ? std::make_unique<TreeStoreFactory>(std::move(tree)) : nullptr;
}

SqliteTree::~SqliteTree() {
    lastChecked.reset();
    SqliteTree::RollbackUnit();
}

NodePtr SqliteTree::GetRoot() {
    std::weak_ptr<SqliteNode>& known = nodes[kRootId];
    std::shared_ptr<SqliteNode> root = known.lock();
    if (root == nullptr) {
        root = std::make_shared<SqliteNode>(*this, TreeEntry{kRootId, 0, u""});
        known = root;
    } else if (!inUnit) {
        root->Invalidate();
    }
    return root;
}

bool SqliteTree::IsWritable() {
    return database != nullptr ? !database->IsReadOnly() : file.IsWritable();
}

/// With no key in use nothing refers to the open file: the moment to notice that another one has taken its place, or
/// was written over it. Then ids mean other keys and other names.
void SqliteTree::StoreOpened() {
    lastChecked.reset();
    if (database == nullptr || inUnit || inView || !nodes.empty()) return;
    const FileStamp former = stamp;
    const std::uint32_t formerCounter = changeCounter;
    if (file.GetStamp() == former) return;
    NoteFile();
    // SQLite sees by the counter alone that its pages are old.
    if (!stamp.IsOfSameFile(former) || changeCounter == formerCounter) database.reset();
    names.Clear();
    paths.Clear();
}

void SqliteTree::NoteFile() {
    stamp = file.GetStamp();
    FileHeader header;
    VReportMessageParams ignored;
    ReadFileHeader(database->GetHandle(), header, ignored);
    changeCounter = header.changeCounter;
}

OpenResult SqliteTree::Open(bool create, VReportMessageParams& report) {
    OpenResult result = file.Open(create, database, report);
    if (result == OpenResult::kSetAside && report.GetCode() == 0) result = file.Open(create, database, report);
    if (result == OpenResult::kReady) NoteFile();
    return result;
}

void SqliteTree::BeginView() {
    VReportMessageParams ignored;
    const bool canBegin = views++ == 0 && Connect(ignored) && database != nullptr && !database->InTransaction();
    inView = inView || (canBegin && database->Run(Sql::kBeginRead, ignored));
}

void SqliteTree::EndView() {
    if (--views == 0) CloseView();
}

void SqliteTree::CloseView() {
    VReportMessageParams ignored;
    if (std::exchange(inView, false)) database->Run(Sql::kCommit, ignored);
}

bool SqliteTree::BeginUnit(VReportMessageParams& report) {
    if (inUnit) {
        if (unitFailed) report = unitFailure;
        return !unitFailed;
    }
    if (database == nullptr && Open(true, report) != OpenResult::kReady) return false;
    if (database->IsReadOnly()) return report.Fail(platform::kAccessDenied);
    CloseView();
    if (!database->Run(Sql::kBeginWrite, report)) return false;
    inUnit = true;
    ++unit;
    return true;
}

bool SqliteTree::CommitUnit(VReportMessageParams& report) {
    if (!inUnit) return true;
    VReportMessageParams failure;
    if (Flush(failure) && database->Run(Sql::kCommit, failure)) {
        names.Committed();
        EndUnit();
        NoteFile();
        file.BackUp(*database);
        return true;
    }
    RollbackUnit();
    report = failure;
    return false;
}

void SqliteTree::RollbackUnit() {
    if (!inUnit) return;
    VReportMessageParams ignored;
    if (database->InTransaction()) database->Run(Sql::kRollback, ignored);
    changedNodes.clear();
    std::erase_if(nodes, [](const auto& known) {
        const std::shared_ptr<SqliteNode> node = known.second.lock();
        return node == nullptr || !node->RollBack();
    });
    names.RolledBack();
    EndUnit();
    ForgetLookups();
}

void SqliteTree::EndUnit() {
    inUnit = false;
    unitFailed = false;
    lastId = 0;
    firstNewId = 0;
    newChildren = std::unordered_set<std::size_t>();  // clearing would walk through the room that a large unit took
}

void SqliteTree::ForgetLookups() {
    lastChecked.reset();
    paths.Clear();
    ++generation;
}

/// Keeps the first cause: the unit can only be abandoned now, and whoever commits is told why. Gives false.
bool SqliteTree::FailUnit(const VReportMessageParams& cause) {
    if (!unitFailed) unitFailure = cause;
    unitFailed = true;
    return false;
}

bool SqliteTree::Flush(VReportMessageParams& report) {
    if (unitFailed) {
        report = unitFailure;
        return false;
    }
    const std::vector<SqliteNode*> pending = std::exchange(changedNodes, {});
    for (SqliteNode* node : pending) {
        if (!node->Flush(report)) return FailUnit(report);
    }
    return true;
}

void SqliteTree::Release(SqliteNode& node, bool changed) {
    const auto known = nodes.find(node.GetEntry().id);
    if (known != nodes.end() && known->second.expired()) nodes.erase(known);
    if (!changed) return;
    std::erase(changedNodes, &node);
    VReportMessageParams report;
    if (!unitFailed && !node.Flush(report)) FailUnit(report);
}

bool SqliteTree::LoadNames(std::uint32_t id, VReportMessageParams& report) {
    return id <= names.GetCount() || names.LoadNew(*database, report);
}

std::uint32_t SqliteTree::InternName(const char16_t* name, VReportMessageParams& report) {
    const std::uint32_t id = names.Intern(*database, name, report);
    if (id == 0) FailUnit(report);
    return id;
}

/// The node of an entry that may be old: null with 1018 when its row is gone.
std::shared_ptr<SqliteNode> SqliteTree::OpenNode(TreeEntry entry, bool forCheck, VReportMessageParams& report) {
    std::shared_ptr<SqliteNode> node;
    if (const auto known = nodes.find(entry.id); known != nodes.end()) node = known->second.lock();
    if (node == nullptr) {
        node = std::make_shared<SqliteNode>(*this, std::move(entry));
        nodes[node->GetEntry().id] = node;
    }
    const bool isFresh = node->IsCurrent() || (node == lastChecked && !forCheck);
    if (!isFresh && !node->Load(report)) return nullptr;
    lastChecked = forCheck ? node : nullptr;
    return node;
}

NodePtr SqliteTree::FindNode(std::int64_t base, const KeyName& name, bool forCheck, VReportMessageParams& report) {
    if (!Connect(report)) return nullptr;
    if (database == nullptr) {
        report.Fail(platform::kFileNotFound);
        return nullptr;
    }
    const std::u16string level(LastLevel(name.folded));
    if (const PathCache::Entry* known = paths.Find(base, name.folded); known != nullptr) {
        if (auto node = OpenNode({known->id, known->parent, level}, forCheck, report)) return node;
        if (report.GetCode() != platform::kKeyDeleted) return nullptr;
        report.Clear();
        paths.Forget(base, name.folded);
    }
    const ReadTransaction transaction(*database);
    Reached reached;
    if (!Walk(base, name, reached, report)) return nullptr;
    if (reached.position == name.folded.size()) return OpenNode({reached.id, reached.parent, level}, forCheck, report);
    report.Fail(platform::kFileNotFound);
    return nullptr;
}

/// Follows a name as far as there are keys.
bool SqliteTree::Walk(std::int64_t base, const KeyName& name, Reached& reached, VReportMessageParams& report) {
    if (!Flush(report)) return false;
    const bool isKnownMiss = inUnit && latestMiss.unit == unit && latestMiss.generation == generation &&
                             latestMiss.base == base && latestMiss.folded == name.folded;
    if (isKnownMiss) {
        reached = latestMiss.reached;
        return true;
    }
    if (!WalkFromFolder(base, name, reached, report)) return false;
    if (inUnit && reached.position < name.folded.size()) latestMiss = {unit, generation, base, name.folded, reached};
    return true;
}

/// Tries the folder above first: a child found under a known id is right, and only a child that is not found may be so
/// because the folder is another one by now.
bool SqliteTree::WalkFromFolder(std::int64_t base, const KeyName& name, Reached& reached,
                                VReportMessageParams& report) {
    const std::size_t cut = name.folded.rfind(u'\\');
    if (cut != std::u16string::npos) {
        const PathCache::Entry* folder = paths.Find(base, std::u16string_view(name.folded).substr(0, cut));
        if (folder != nullptr) {
            const bool isTrusted = inUnit && folder->unit == unit;
            reached = {folder->id, folder->parent, cut + 1};
            if (!Descend(base, name, reached, report)) return false;
            if (isTrusted || reached.position == name.folded.size()) return true;
        }
    }
    reached = {base, 0, 0};
    return Descend(base, name, reached, report);
}

bool SqliteTree::Descend(std::int64_t base, const KeyName& name, Reached& reached, VReportMessageParams& report) {
    const std::u16string_view path = name.folded;
    while (reached.position < path.size()) {
        const std::size_t end = LevelEnd(path, reached.position);
        const std::u16string_view folded = path.substr(reached.position, end - reached.position);
        if (IsOfThisUnit(reached.id) && !newChildren.contains(HashOfPath(reached.id, folded))) return true;
        const std::string level = EncodeBigEndian(folded);
        Query query(*database, Sql::kSelectChild, report);
        if (!query.Bind(reached.id).BindBlob(level).Step()) return !query.HasFailed();
        reached = {query.GetInteger(0), reached.id, std::min(end + 1, path.size())};
        paths.Remember(base, path.substr(0, end), {reached.id, reached.parent, inUnit ? unit : 0});
    }
    return true;
}

NodePtr SqliteTree::CreateNode(std::int64_t base, const KeyName& name, VReportMessageParams& report) {
    Reached reached;
    if (!Walk(base, name, reached, report)) return nullptr;
    std::shared_ptr<SqliteNode> node;
    if (reached.position == name.folded.size()) {
        return OpenNode({reached.id, reached.parent, std::u16string(LastLevel(name.folded))}, false, report);
    }
    while (reached.position < name.folded.size()) {
        node = AddNode(base, name, reached, report);
        if (node == nullptr) return nullptr;
    }
    return node;
}

/// Creates the next level of a name and moves on to it.
std::shared_ptr<SqliteNode> SqliteTree::AddNode(std::int64_t base, const KeyName& name, Reached& reached,
                                                VReportMessageParams& report) {
    std::int64_t id = 0;
    if (!NextId(id, report)) return nullptr;
    const std::size_t start = reached.position;
    const std::size_t end = LevelEnd(name.folded, start);
    TreeEntry entry{id, reached.id, name.folded.substr(start, end - start)};
    if (IsOfThisUnit(entry.parent)) newChildren.insert(HashOfPath(entry.parent, entry.folded));
    auto node = std::make_shared<SqliteNode>(*this, std::move(entry),
                                             std::u16string_view(name.spelled).substr(start, end - start));
    nodes[id] = node;
    paths.Remember(base, std::u16string_view(name.folded).substr(0, end), {id, reached.id, unit});
    reached = {id, reached.id, std::min(end + 1, name.folded.size())};
    ++generation;
    return node;
}

/// The write lock is ours: nobody else hands out ids.
bool SqliteTree::NextId(std::int64_t& id, VReportMessageParams& report) {
    if (lastId == 0) {
        Query query(*database, Sql::kSelectLastId, report);
        if (!query.Step()) return query.HasFailed() ? false : report.Fail(platform::kStoreCorrupt);
        lastId = query.GetInteger(0);
        firstNewId = lastId + 1;
    }
    if (lastId < kRootId || lastId == INT64_MAX) return report.Fail(platform::kStoreCorrupt);
    id = ++lastId;
    return true;
}

bool SqliteTree::RemoveNode(std::int64_t base, const KeyName& name, VReportMessageParams& report) {
    const NodePtr found = FindNode(base, name, true, report);
    if (found == nullptr || !Flush(report)) return false;
    const TreeEntry& entry = static_cast<const SqliteNode&>(*found).GetEntry();
    const std::string folded = EncodeBigEndian(entry.folded);
    const bool removed = Query(*database, Sql::kDeleteRows, report).Bind(entry.id).Run() &&
                         Query(*database, Sql::kDeleteDescendants, report).Bind(entry.id).Run() &&
                         Query(*database, Sql::kDeleteChild, report).Bind(entry.parent).BindBlob(folded).Run();
    for (const auto& [id, known] : nodes) {
        if (const std::shared_ptr<SqliteNode> node = known.lock()) node->Invalidate();
    }
    ForgetLookups();
    return removed || FailUnit(report);
}

bool SqliteTree::ListChildren(std::int64_t parent, std::size_t limit, ChildPage& page, VReportMessageParams& report) {
    page.isLast = true;
    if (!Connect(report) || !Flush(report)) return false;
    if (database == nullptr) return true;
    const std::string after = EncodeBigEndian(page.lastFolded);
    std::u16string name;
    page.children.reserve(limit);
    Query query(*database, page.skipsSessions ? Sql::kListFolders : Sql::kListChildren, report);
    query.Bind(parent).BindBlob(after).Bind(static_cast<std::int64_t>(limit));
    while (query.Step()) {
        DecodeWtf8(query.GetBytes(1), name);
        const bool isSession = query.GetInteger(2) == static_cast<std::int64_t>(ProfileKind::kSession);
        page.children.push_back({VUnicodeString(name), isSession ? ProfileKind::kSession : ProfileKind::kFolder});
        if (page.children.size() == limit) page.lastFolded = DecodeBigEndian(query.GetBytes(0));
    }
    page.isLast = page.children.size() < limit;
    return !query.HasFailed();
}

}  // namespace connectdialog::stores
