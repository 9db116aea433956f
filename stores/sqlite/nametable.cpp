#include "stores/sqlite/nametable.h"

#include <algorithm>
#include <array>

#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "stores/common/keyname.h"
#include "stores/sqlite/sqlitedatabase.h"
#include "stores/sqlite/wtf8.h"

namespace connectdialog::stores {

void NameTable::Clear() {
    idsByFolded.clear();
    names.clear();
    latest = 0;
    keptCount = kAll;
}

std::uint32_t NameTable::Find(const char16_t* name) {
    const bool isNext = latest < names.size() && IsSpelled(latest + 1, name);
    const std::uint32_t id = isNext ? latest + 1 : Search(name);
    if (id != 0) latest = id;
    return id;
}

std::uint32_t NameTable::Search(std::u16string_view name) const {
    std::array<char16_t, 64> shortName;
    std::u16string longName;
    std::u16string_view folded;
    if (name.size() <= shortName.size()) {
        std::transform(name.begin(), name.end(), shortName.begin(), FoldCase);
        folded = {shortName.data(), name.size()};
    } else {
        longName = FoldText(name);
        folded = longName;
    }
    const auto found = idsByFolded.find(folded);
    return found == idsByFolded.end() ? 0 : found->second;
}

bool NameTable::IsSpelled(std::uint32_t id, const char16_t* name) const {
    const std::u16string& spelled = names[id - 1].spelled;
    for (const char16_t unit : spelled) {
        if (*name++ != unit) return false;  // ends at the terminator too: no name holds a zero
    }
    return *name == u'\0';
}

void NameTable::Add(std::u16string_view spelled, std::u16string_view folded) {
    names.push_back({std::u16string(spelled), std::u16string(folded)});
    idsByFolded.emplace(names.back().folded, static_cast<std::uint32_t>(names.size()));
}

bool NameTable::LoadNew(SqliteDatabase& database, VReportMessageParams& report) {
    Query query(database, Sql::kSelectNames, report);
    query.Bind(static_cast<std::int64_t>(names.size()));
    std::u16string spelled;
    while (query.Step()) {
        if (query.GetInteger(0) != static_cast<std::int64_t>(names.size()) + 1) {
            return report.Fail(platform::kStoreCorrupt);
        }
        DecodeWtf8(query.GetBytes(2), spelled);
        spelled.resize(std::min(spelled.find(u'\0'), spelled.size()));
        Add(spelled, DecodeBigEndian(query.GetBytes(1)));
    }
    return !query.HasFailed();
}

std::uint32_t NameTable::Intern(SqliteDatabase& database, const char16_t* name, VReportMessageParams& report) {
    if (!LoadNew(database, report)) return 0;
    if (const std::uint32_t added = Find(name); added != 0) return added;
    const std::u16string folded = FoldText(name);
    const std::string foldedBytes = EncodeBigEndian(folded);
    const std::string spelledBytes = EncodeWtf8(name);
    const auto id = static_cast<std::uint32_t>(names.size() + 1);
    Query insert(database, Sql::kInsertName, report);
    if (!insert.Bind(id).BindBlob(foldedBytes).BindText(spelledBytes).Run()) return 0;
    keptCount = std::min(keptCount, names.size());
    Add(name, folded);
    return id;
}

void NameTable::RolledBack() {
    for (; names.size() > keptCount; names.pop_back()) idsByFolded.erase(names.back().folded);
    latest = 0;
    keptCount = kAll;
}

}  // namespace connectdialog::stores
