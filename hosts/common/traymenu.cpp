#include "hosts/common/traymenu.h"

#include <algorithm>

#include "foundation/textchecks.h"
#include "imports/dialogkit/textmetrics.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog::hosts {

namespace {

using Kind = TrayEntry::Kind;

constexpr std::size_t kMostLabelCharacters = 60;
/// Of each of the two names that tell where a part begins and ends.
constexpr std::size_t kMostRangeCharacters = 20;

struct CommandRow {
    TrayCommand command;
    const char16_t* label;
};
constexpr CommandRow kCommands[] = {
    {TrayCommand::kQuickConnect, u"快速连接(&Q)..."},
    {TrayCommand::kConnect, u"连接(&C)..."},
    {TrayCommand::kAbout, u"关于(&A)"},
    {TrayCommand::kExit, u"退出(&X)"},
};

/// A name may hold anything; a menu shows one line of it, and takes a tab for a column.
VUnicodeString LabelOf(const VUnicodeString& name, std::size_t most) {
    std::u16string label = Shorten(name, most);
    std::replace_if(label.begin(), label.end(), IsControl, u' ');
    return EscapeAmpersand(VUnicodeString(label));
}

/// The children of a folder as the tree shows them.
class Children {
  public:
    explicit Children(const VUnicodeString& folder)
        : folder(folder), data(folder, true), folders(data.GetShownFolders()) {
        for (const VUnicodeString& name : data.GetShownSessions())
            if (!IsTemplateEntry(folder, name)) sessions.Add(name);
    }

    std::size_t GetCount() const { return folders.GetCount() + sessions.GetCount(); }
    const VUnicodeString& GetName(std::size_t i) const {
        return i < folders.GetCount() ? folders[i] : sessions[i - folders.GetCount()];
    }
    TrayEntry MakeEntry(std::size_t i) const {
        TrayEntry entry;
        entry.label = LabelOf(GetName(i), kMostLabelCharacters);
        const VUnicodeString path = JoinEntryPath(folder, GetName(i));
        const bool isFolder = i < folders.GetCount();
        entry.kind = isFolder ? Kind::kMenu : Kind::kSession;
        (isFolder ? entry.range.folder : entry.path) = path;
        return entry;
    }
    TrayEntry MakePart(std::size_t first, std::size_t count) const {
        TrayEntry entry;
        entry.kind = Kind::kMenu;
        entry.label.Format(u"%1 — %2", LabelOf(GetName(first), kMostRangeCharacters),
                           LabelOf(GetName(first + count - 1), kMostRangeCharacters));
        entry.range = {folder, first, count};
        return entry;
    }

  private:
    const VUnicodeString& folder;
    ProfileFolderData data;
    const VStringArray& folders;
    VStringArray sessions;
};

TrayEntry MakeNote() {
    TrayEntry note;
    note.kind = Kind::kNote;
    note.label = u"（空）"_v;
    return note;
}

}  // namespace

std::vector<TrayEntry> ListTrayMenu(const TrayRange& range) {
    const Children children(range.folder);
    const std::size_t first = std::min(range.first, children.GetCount());
    const std::size_t count = std::min(range.count, children.GetCount() - first);
    if (count == 0) return {MakeNote()};
    // As large as they must be for one menu, and so that theirs are full.
    std::size_t part = 1;
    while ((count - 1) / part >= kMostTrayEntries) part *= kMostTrayEntries;
    std::vector<TrayEntry> entries;
    for (std::size_t at = first; at < first + count; at += part) {
        const std::size_t size = std::min(part, first + count - at);
        entries.push_back(size == 1 ? children.MakeEntry(at) : children.MakePart(at, size));
    }
    return entries;
}

std::vector<TrayEntry> ListTrayRootMenu() {
    std::vector<TrayEntry> entries = ListTrayMenu(TrayRange());
    entries.emplace_back();
    for (const CommandRow& row : kCommands) {
        TrayEntry& entry = entries.emplace_back();
        entry.kind = Kind::kCommand;
        entry.label = row.label;
        entry.command = row.command;
    }
    return entries;
}

}  // namespace connectdialog::hosts
