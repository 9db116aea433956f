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

namespace {

/// Multiplicative hashing (Knuth, The Art of Computer Programming, volume 3, section 6.4): literals are aligned.
constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;

/// Whether a text without zeros is the zero-terminated name, of which nothing behind the first difference is read. Most
/// names that are asked for are the same: four characters are compared at once.
bool IsSame(std::u16string_view text, const char16_t* name) {
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    for (; end - at >= 4; at += 4, name += 4)
        if (at[0] != name[0] || at[1] != name[1] || at[2] != name[2] || at[3] != name[3]) return false;
    for (; at != end; ++at, ++name)
        if (*at != *name) return false;
    return *name == u'\0';
}

}  // namespace

void NameTable::Clear() {
    answers = {};
    idsByFolded.clear();
    spelled.clear();
    ends.clear();
    latest = 0;
    keptCount = kAll;
}

std::uint32_t NameTable::Find(const char16_t* name) {
    const bool isNext = latest < GetCount() && IsSpelled(latest + 1, name);
    const std::uint32_t id = isNext ? latest + 1 : Search(name);
    if (id != 0) latest = id;
    return id;
}

std::uint32_t NameTable::Search(const char16_t* name) {
    Answer& answer = answers[std::hash<const char16_t*>()(name) * kSpread >> (64 - kAnswerBits)];
    if (answer.name.empty() || !IsSame(answer.name, name)) answer = {name, SearchFolded(name)};
    return answer.id;
}

std::uint32_t NameTable::SearchFolded(std::u16string_view name) const {
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
    return IsSame(GetSpelled(id), name);
}

void NameTable::Add(std::u16string_view name, std::u16string_view folded) {
    spelled.append(name);
    ends.push_back(spelled.size());
    idsByFolded.emplace(folded, static_cast<std::uint32_t>(GetCount()));
    answers = {};
}

bool NameTable::LoadNew(SqliteDatabase& database, VReportMessageParams& report) {
    Query query(database, Sql::kSelectNames, report);
    query.Bind(static_cast<std::int64_t>(GetCount()));
    std::u16string name;
    while (query.Step()) {
        if (query.GetInteger(0) != static_cast<std::int64_t>(GetCount()) + 1) {
            return report.Fail(platform::kStoreCorrupt);
        }
        DecodeWtf8(query.GetBytes(2), name);
        name.resize(std::min(name.find(u'\0'), name.size()));
        Add(name, DecodeBigEndian(query.GetBytes(1)));
    }
    return !query.HasFailed();
}

std::uint32_t NameTable::Intern(SqliteDatabase& database, const char16_t* name, VReportMessageParams& report) {
    if (!LoadNew(database, report)) return 0;
    if (const std::uint32_t added = Find(name); added != 0) return added;
    const std::u16string folded = FoldText(name);
    const std::string foldedBytes = EncodeBigEndian(folded);
    const std::string spelledBytes = EncodeWtf8(name);
    const auto id = static_cast<std::uint32_t>(GetCount() + 1);
    Query insert(database, Sql::kInsertName, report);
    if (!insert.Bind(id).BindBlob(foldedBytes).BindText(spelledBytes).Run()) return 0;
    keptCount = std::min(keptCount, GetCount());
    Add(name, folded);
    return id;
}

void NameTable::RolledBack() {
    if (keptCount < GetCount()) {
        ends.resize(keptCount);
        spelled.resize(ends.empty() ? 0 : ends.back());
        std::erase_if(idsByFolded, [this](const auto& entry) { return entry.second > keptCount; });
        answers = {};
    }
    latest = 0;
    keptCount = kAll;
}

}  // namespace connectdialog::stores
