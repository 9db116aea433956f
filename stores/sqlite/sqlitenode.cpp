#include "stores/sqlite/sqlitenode.h"

#include <algorithm>
#include <utility>

#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "stores/common/keyname.h"
#include "stores/sqlite/sqlitedatabase.h"
#include "stores/sqlite/sqlitetree.h"
#include "stores/sqlite/wtf8.h"

namespace connectdialog::stores {

namespace {
constexpr std::size_t kMaxSpareSize = 65536;
}  // namespace

SqliteNode::SqliteNode(SqliteTree& tree, TreeEntry entry, std::u16string_view spelled)
    : tree(tree),
      entry(std::move(entry)),
      spelled(spelled),
      values(std::exchange(tree.spareValues, {})),
      loadedUnit(tree.GetUnit()),
      loaded(true),
      hasRow(false) {
    MarkChanged();
}

SqliteNode::~SqliteNode() {
    tree.Release(*this, changed);
    values.Clear();
    const std::size_t room = values.GetCapacity();
    if (room > tree.spareValues.GetCapacity() && room <= kMaxSpareSize) std::swap(values, tree.spareValues);
}

void SqliteNode::MarkChanged() {
    if (!changed) tree.NoteChanged(*this);
    changed = true;
}

bool SqliteNode::Load(VReportMessageParams& report) {
    if (!tree.Connect(report)) return false;
    values.Clear();
    if (tree.spareValues.GetCapacity() > values.GetCapacity()) std::swap(values, tree.spareValues);
    expected = 0;
    isDamaged = false;
    if (!tree.HasDatabase()) return true;  // only the root is there, and empty
    Query query(tree.GetDatabase(), Sql::kSelectRow, report);
    if (!query.Bind(entry.id).Step()) {
        if (query.HasFailed()) return false;
        isDeleted = true;
        return report.Fail(platform::kKeyDeleted);
    }
    isDeleted = false;
    isDamaged = !values.Decode(query.GetBytes(0));
    if (!tree.LoadNames(values.GetLastId(), report)) return false;
    isDamaged = isDamaged || values.GetLastId() > tree.GetNames().GetCount();
    loaded = true;
    loadedUnit = tree.GetUnit();
    wasSession = IsSession();
    return true;
}

bool SqliteNode::IsCurrent() const {
    return loaded && tree.InUnit() && loadedUnit == tree.GetUnit();
}

bool SqliteNode::EnsureLoaded(VReportMessageParams& report) {
    if (isDeleted) return report.Fail(platform::kKeyDeleted);
    return loaded || Load(report);
}

bool SqliteNode::EnsureCurrent(VReportMessageParams& report) {
    if (isDeleted) return report.Fail(platform::kKeyDeleted);
    return IsCurrent() || Load(report);
}

/// The root always is, so its own values need not be read for what lies below it.
bool SqliteNode::IsThere(VReportMessageParams& report) {
    return entry.parent == 0 ? tree.Connect(report) : EnsureLoaded(report);
}

void SqliteNode::Invalidate() {
    loaded = false;
}

bool SqliteNode::RollBack() {
    undone = tree.IsOfThisUnit(entry.id);
    changed = false;
    isDeleted = false;
    Invalidate();
    return !undone;
}

bool SqliteNode::CheckReadable(VReportMessageParams& report) const {
    if (!isDamaged) return true;
    report.Fail(platform::kStoreCorrupt);
    report.AddInsert(entry.folded.c_str());
    return false;
}

/// Values are mostly read in the order in which they are stored; then no name is folded and nothing is searched.
std::size_t SqliteNode::FindValue(const char16_t* name) {
    NameTable& names = tree.GetNames();
    if (expected < values.GetCount() && names.IsSpelled(values.GetId(expected), name)) return expected++;
    const std::uint32_t id = names.Find(name);
    const std::size_t index = id != 0 ? values.Find(id) : PackedValues::kNone;
    if (index != PackedValues::kNone) expected = index + 1;
    return index;
}

bool SqliteNode::Read(const char16_t* name, ValueView& value, VReportMessageParams& report) {
    if (!EnsureLoaded(report) || !CheckReadable(report)) return false;
    const std::size_t index = FindValue(name);
    if (index == PackedValues::kNone) return report.Fail(platform::kFileNotFound);
    value = values.GetValue(index);
    return true;
}

bool SqliteNode::Write(const char16_t* name, const ValueView& value, VReportMessageParams& report) {
    if (!EnsureCurrent(report) || !CheckReadable(report)) return false;
    std::uint32_t id = tree.GetNames().Find(name);
    if (!values.HasRoomFor(value.bytes.size()) || (id == 0 && !IsValueName(name))) {
        return report.Fail(platform::kInvalidParameter);
    }
    if (id == 0) id = tree.InternName(name, report);
    if (id == 0) return false;
    if (values.Set(id, value)) MarkChanged();
    return true;
}

bool SqliteNode::CopyValues(StoreNode& source, VReportMessageParams& report) {
    auto& other = static_cast<SqliteNode&>(source);
    if (!other.EnsureCurrent(report) || !other.CheckReadable(report)) return false;
    if (!EnsureCurrent(report) || !CheckReadable(report)) return false;
    if (this == &other) return true;
    values = other.values;
    expected = 0;
    MarkChanged();
    return true;
}

bool SqliteNode::Erase(const char16_t* name, VReportMessageParams& report) {
    if (!EnsureCurrent(report) || !CheckReadable(report)) return false;
    const std::size_t index = FindValue(name);
    if (index == PackedValues::kNone) return report.Fail(platform::kFileNotFound);
    values.Remove(index);
    MarkChanged();
    return true;
}

NodePtr SqliteNode::Find(const KeyName& name, bool forCheck, VReportMessageParams& report) {
    if (!IsThere(report)) return nullptr;
    return tree.FindNode(entry.id, name, forCheck, report);
}

NodePtr SqliteNode::Create(const KeyName& name, VReportMessageParams& report) {
    if (entry.parent != 0 && !EnsureCurrent(report)) return nullptr;
    return tree.CreateNode(entry.id, name, report);
}

bool SqliteNode::Remove(const KeyName& name, VReportMessageParams& report) {
    return IsThere(report) && tree.RemoveNode(entry.id, name, report);
}

bool SqliteNode::ListLists(std::vector<StoreChild>& lists, VReportMessageParams& report) {
    if (!EnsureLoaded(report) || !CheckReadable(report)) return false;
    const auto first = static_cast<std::ptrdiff_t>(lists.size());
    for (std::size_t i = 0; i < values.GetCount(); ++i) {
        if (values.GetValue(i).tag != ValueTag::kStrings) continue;
        lists.push_back({VUnicodeString(tree.GetNames().GetSpelled(values.GetId(i))), ProfileKind::kListEntry});
    }
    const auto comesBefore = [](const StoreChild& a, const StoreChild& b) { return CompareNoCase(a.name, b.name) < 0; };
    std::sort(lists.begin() + first, lists.end(), comesBefore);
    return true;
}

bool SqliteNode::List(std::size_t limit, ChildPage& page, VReportMessageParams& report) {
    page.children.clear();
    return IsThere(report) && tree.ListChildren(entry.id, limit, page, report);
}

bool SqliteNode::IsSession() {
    const std::uint32_t id = tree.GetNames().Find(kIsSessionValue);
    return id != 0 && values.Find(id) != PackedValues::kNone;
}

bool SqliteNode::Flush(VReportMessageParams& report) {
    SqliteDatabase& database = tree.GetDatabase();
    std::string& row = tree.rowBuffer;
    values.Encode(row);
    const bool isSession = IsSession();
    const auto kind = static_cast<std::int64_t>(isSession ? ProfileKind::kSession : ProfileKind::kFolder);
    const std::string folded = EncodeBigEndian(entry.folded);
    bool written =
        Query(database, hasRow ? Sql::kUpdateRow : Sql::kInsertRow, report).Bind(entry.id).BindBlob(row).Run();
    if (!hasRow) {
        const std::string name = EncodeWtf8(spelled);
        Query insert(database, Sql::kInsertChild, report);
        insert.Bind(entry.parent).BindBlob(folded).BindText(name).Bind(kind).Bind(entry.id);
        written = written && insert.Run();
    } else if (isSession != wasSession && entry.parent != 0) {
        Query update(database, Sql::kUpdateKind, report);
        written = written && update.Bind(entry.parent).BindBlob(folded).Bind(kind).Run();
    }
    changed = false;
    hasRow = true;
    wasSession = isSession;
    return written;
}

}  // namespace connectdialog::stores
