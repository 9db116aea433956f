// A user who does anything, against a simple model of the tree: after each action the tree, what the store shows and
// the user's own order are compared.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <random>

#include "foundation/casefold.h"
#include "foundation/numericcompare.h"
#include "foundation/vsort.h"
#include "platform/codepage.h"
#include "sessiondb/entrysearch.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;
using enum SessionArrangement;
using Name = std::u16string;

/// A folder of the model. Both lists are in the user's order.
struct ModelFolder {
    std::vector<Name> folders;
    std::vector<Name> sessions;
    std::map<Name, ModelFolder> children;
    std::map<Name, int> delays;  ///< of the sessions

    std::vector<Name>& ListOf(bool ofFolders) { return ofFolders ? folders : sessions; }
    bool Has(std::u16string_view name) const {
        const auto isSame = [&](const Name& other) { return EqualsNoCase(other, name); };
        return std::ranges::any_of(folders, isSame) || std::ranges::any_of(sessions, isSame);
    }
};

/// Where an entry goes among its siblings.
struct ModelPlace {
    enum class Where { kEnd, kFront, kBefore, kBehind } where = Where::kEnd;
    Name sibling;
};

class Model {
  public:
    SessionArrangement arrangement = kAlphabetical;
    ModelFolder root;

    bool IsManual() const { return arrangement == kManual; }

    ModelFolder& At(std::u16string_view path) {
        ModelFolder* folder = &root;
        while (!path.empty()) {
            const std::u16string_view name = path.substr(0, path.find(u'\\'));
            path.remove_prefix(std::min(path.size(), name.size() + 1));
            folder = &folder->children.at(Name(name));
        }
        return *folder;
    }
    std::vector<Name> Shown(const ModelFolder& folder, bool ofFolders) const {
        std::vector<Name> names = ofFolders ? folder.folders : folder.sessions;
        if (IsManual()) return names;
        // The natural comparison leads round in a circle for some names: then it matters how they are sorted.
        const bool isNatural = arrangement == kLogical && !ofFolders;
        const bool hasTemplate = isNatural && &folder == &root && SessionKeyExists(VUnicodeString(kDefaultSession));
        if (hasTemplate) names.emplace_back(kDefaultSession);
        std::ranges::sort(names, [](const Name& a, const Name& b) { return CompareNoCase(a, b) < 0; });
        if (isNatural) VMergeSort(names, [](const Name& a, const Name& b) { return CompareNumericText(a, b) < 0; });
        if (hasTemplate) std::erase(names, kDefaultSession);
        return names;
    }
    static Name MakeUnique(const ModelFolder& folder, const Name& base) {
        Name name = base;
        for (int i = 1; folder.Has(name); ++i) name = base + u" (" + platform::ToWide(std::to_string(i)) + u")";
        return name;
    }
    void Place(std::vector<Name>& list, const Name& name, const ModelPlace& place) const {
        using enum ModelPlace::Where;
        const auto sibling = std::ranges::find(list, place.sibling);
        if (!IsManual() || place.where == kEnd || (place.where != kFront && sibling == list.end()))
            list.push_back(name);
        else
            list.insert(place.where == kFront ? list.begin() : sibling + (place.where == kBehind ? 1 : 0), name);
    }
    void Remove(ModelFolder& folder, const Name& name, bool isFolder) {
        std::erase(folder.ListOf(isFolder), name);
        if (isFolder)
            folder.children.erase(name);
        else
            folder.delays.erase(name);
    }
    /// A copied folder has its content in the order in which it was shown.
    ModelFolder Copy(const ModelFolder& folder) const {
        ModelFolder copy{Shown(folder, true), Shown(folder, false), {}, folder.delays};
        for (const auto& [name, child] : folder.children) copy.children[name] = Copy(child);
        return copy;
    }
    void Rename(ModelFolder& folder, const Name& from, const Name& to, bool isFolder) {
        std::vector<Name>& list = folder.ListOf(isFolder);
        if (isFolder) {
            ModelFolder content = Copy(folder.children.at(from));
            folder.children.erase(from);
            folder.children[to] = std::move(content);
        } else {
            const int delay = folder.delays.at(from);
            folder.delays.erase(from);
            folder.delays[to] = delay;
        }
        const auto place = std::ranges::find(list, from);
        if (IsManual()) {
            *place = to;
            return;
        }
        list.erase(place);
        list.push_back(to);
    }
    /// False when it is refused.
    bool Transfer(const Name& source, bool isFolder, const Name& target, const ModelPlace& place, bool isMove) {
        const std::size_t cut = source.rfind(u'\\');
        const Name parent = cut == source.npos ? Name() : source.substr(0, cut);
        const Name leaf = source.substr(cut + 1);
        ModelFolder& from = At(parent);
        if (isMove && parent == target) return Reorder(from.ListOf(isFolder), leaf, place);
        if (isFolder && (target == source || target.starts_with(source + u"\\"))) return false;
        ModelFolder& to = At(target);
        if (isFolder && parent != target && to.Has(leaf)) return false;
        const Name name = MakeUnique(to, leaf);
        if (isFolder) {
            ModelFolder content = Copy(from.children.at(leaf));
            // A copy under another name leaves out a subfolder of that name, which might be the copy itself.
            if (name != leaf) Remove(content, name, true);
            to.children[name] = std::move(content);
        } else {
            to.delays[name] = from.delays.at(leaf);
        }
        Place(to.ListOf(isFolder), name, place);
        if (isMove) Remove(At(parent), leaf, isFolder);
        return true;
    }

  private:
    bool Reorder(std::vector<Name>& list, const Name& leaf, const ModelPlace& place) const {
        if (!IsManual() || place.sibling == leaf) return false;
        std::erase(list, leaf);
        Place(list, leaf, place);
        return true;
    }
};

class RandomUser : public ConnectDialogTest {
  public:
    struct Entry {
        Name path;
        bool isFolder;
    };

    std::size_t Below(std::size_t bound) { return random() % bound; }
    static Name LeafOf(const Name& path) { return path.substr(path.rfind(u'\\') + 1); }
    static Name ParentOf(const Name& path) {
        const std::size_t cut = path.rfind(u'\\');
        return cut == path.npos ? Name() : path.substr(0, cut);
    }
    static Name FolderOf(const Entry& entry) { return entry.isFolder ? entry.path : ParentOf(entry.path); }
    static Name Join(const Name& folder, const Name& leaf) { return folder.empty() ? leaf : folder + u"\\" + leaf; }

    void ListEntries(const ModelFolder& folder, const Name& path, std::vector<Entry>& entries) {
        entries.push_back({path, true});
        for (const Name& name : folder.sessions) entries.push_back({Join(path, name), false});
        for (const auto& [name, child] : folder.children) ListEntries(child, Join(path, name), entries);
    }
    std::vector<Entry> ListEntries() {
        std::vector<Entry> entries;
        ListEntries(model.root, Name(), entries);
        return entries;
    }
    Entry Pick() {
        const std::vector<Entry> entries = ListEntries();
        return entries[Below(entries.size())];
    }
    Entry PickNotRoot() {
        Entry entry = Pick();
        while (entry.path.empty()) entry = Pick();
        return entry;
    }
    /// A name that is good as such, but may be taken.
    Name PickName() {
        const char16_t* const names[] = {u"a",     u"B",  u"c10",        u"c9",  u"C1",
                                         u"d & e", u"Éa", u"New Folder", u"x.y", u"z"};
        Name name = names[Below(std::size(names))];
        if (Below(3) == 0) name = Name(1, static_cast<char16_t>(u'A' + Below(26)));
        return name;
    }
    /// What the user's name for an entry becomes: its own name in any case, or one that is free.
    bool IsFree(const Name& folder, const Name& ownName, const Name& name) {
        return EqualsNoCase(name, ownName) || !model.At(folder).Has(name);
    }
    std::string DoNewFolder() {
        const Entry target = Pick();
        const Name folder = FolderOf(target);
        const Name offered = Model::MakeUnique(model.At(folder), u"New Folder");
        Name name = PickName();
        Click(target.path);
        Command(kNewFolder);
        Tree().TypeLabel(VUnicodeString(name));
        if (name != offered && model.At(folder).Has(name)) {
            Tree().CancelLabel();
            name = offered;
        }
        model.At(folder).folders.push_back(name);
        model.At(folder).children[name];
        return "new folder " + Escape(Join(folder, name));
    }
    std::string DoNewSession() {
        const Entry target = Pick();
        const Name folder = FolderOf(target);
        Name name = PickName();
        options.edit = [&](ISessionConfig& config) {
            config.SetName(VUnicodeString(name));
            SetDelay(config, ++lastDelay);
        };
        Click(target.path);
        Command(kNewSession);
        if (model.At(folder).Has(name)) name = Model::MakeUnique(model.At(folder), u"New");
        model.At(folder).sessions.push_back(name);
        model.At(folder).delays[name] = lastDelay;
        return "new session " + Escape(Join(folder, name));
    }
    std::string DoRename() {
        const Entry entry = PickNotRoot();
        const Name name = PickName();
        const Name folder = ParentOf(entry.path);
        Rename(entry.path, VUnicodeString(name));
        if (!IsFree(folder, LeafOf(entry.path), name))
            Tree().CancelLabel();
        else if (name != LeafOf(entry.path))
            model.Rename(model.At(folder), LeafOf(entry.path), name, entry.isFolder);
        return "rename " + Escape(entry.path) + " to " + Escape(name);
    }
    /// Selects one entry or two.
    std::vector<Entry> Choose(std::string& what) {
        std::vector<Entry> chosen{PickNotRoot(), PickNotRoot()};
        if (Below(2) == 0 || chosen[0].path == chosen[1].path) chosen.pop_back();
        for (const Entry& entry : chosen) {
            Click(entry.path, &entry == &chosen[0] ? 0 : Accelerator::kControl);
            what += ' ' + Escape(entry.path);
        }
        return chosen;
    }
    std::string DoProperties() {
        std::string what = "properties of";
        const std::vector<Entry> chosen = Choose(what);
        std::vector<Entry> sessions;
        for (const Entry& entry : ListEntries()) {
            const auto isMeant = [&](const Entry& other) {
                return other.path == entry.path || entry.path.starts_with(other.path + u"\\");
            };
            if (!entry.isFolder && std::ranges::any_of(chosen, isMeant)) sessions.push_back(entry);
        }
        const Name name = PickName();
        const bool isRenamed = sessions.size() == 1 && Below(2) == 0;
        options.edit = [&](ISessionConfig& config) {
            SetDelay(config, ++lastDelay);
            if (isRenamed) config.SetName(VUnicodeString(name));
        };
        Command(kProperties);
        for (const Entry& entry : sessions) {
            ModelFolder& folder = model.At(ParentOf(entry.path));
            const Name leaf = LeafOf(entry.path);
            folder.delays[leaf] = lastDelay;
            if (isRenamed && name != leaf && IsFree(ParentOf(entry.path), leaf, name))
                model.Rename(folder, leaf, name, false);
        }
        return what + (isRenamed ? " renaming to " + Escape(name) : "");
    }
    /// All that shows, in the order of the walk.
    void ListShown(const ModelFolder& folder, const Name& path, std::vector<Name>& paths) {
        paths.push_back(path);
        for (const Name& name : model.Shown(folder, true)) ListShown(folder.children.at(name), Join(path, name), paths);
        for (const Name& name : model.Shown(folder, false)) paths.push_back(Join(path, name));
    }
    std::string DoFind() {
        const Name text(1, u"acCs19 "[Below(7)]);
        std::vector<Name> found;
        ListShown(model.root, Name(), found);
        std::erase_if(found, [&](const Name& path) {
            const FindOptions wanted{VUnicodeString(text)};
            return !TextMatches(path.empty() ? Name(kRootLabel) : LeafOf(path), wanted);
        });
        if (model.arrangement == kLogical) found.clear();  // in whatever order the tree has
        Find(text.c_str(), "sf");
        for (std::size_t i = 0; i <= found.size() && !found.empty(); ++i) {
            EXPECT_EQ(dialog->Items().GetCaret(), At(found[i % found.size()])) << Escape(found[i % found.size()]);
            Command(kFindNext);
        }
        return "find " + Escape(text);
    }
    std::string DoFold() {
        for (const Entry& entry : ListEntries()) {
            const TreeItem item = Tree().Find(entry.path);
            if (entry.isFolder && Below(2) == 0 && dialog->Items().HasState(item, kTreeExpanded))
                Tree().ClickExpander(item);
        }
        return "fold";
    }
    std::string DoDelete() {
        std::string what = "delete";
        const std::vector<Entry> chosen = Choose(what);
        Command(kDelete);
        for (const Entry& entry : chosen) {
            const std::vector<Entry> left = ListEntries();
            if (std::ranges::any_of(left, [&](const Entry& other) { return other.path == entry.path; }))
                model.Remove(model.At(ParentOf(entry.path)), LeafOf(entry.path), entry.isFolder);
        }
        return what;
    }
    std::string DoPaste() {
        const Entry source = PickNotRoot();
        const Entry target = Pick();
        const bool isCut = Below(2) == 0;
        CopyTo(source.path, target.path, isCut);
        ModelPlace place;
        if (!source.isFolder && !target.isFolder) place = {ModelPlace::Where::kBehind, LeafOf(target.path)};
        if (!isCut || source.path != target.path)
            model.Transfer(source.path, source.isFolder, FolderOf(target), place, isCut);
        return (isCut ? "cut " : "copy ") + Escape(source.path) + " to " + Escape(target.path);
    }
    std::string DoDrag() {
        const Entry source = PickNotRoot();
        const Entry target = Pick();
        const int zone = static_cast<int>(Below(3));
        const bool isCopy = Below(3) == 0;
        DragTo(source.path, target.path, zone, isCopy ? Accelerator::kControl : 0);
        const bool isInside = target.path == source.path || target.path.starts_with(source.path + u"\\");
        const bool isBeside = model.IsManual() && zone != 1 && source.isFolder && target.isFolder;
        const bool isRefused = source.isFolder && isInside && !(isBeside && target.path == source.path);
        if (!isRefused && (isCopy || source.path != target.path)) DropInModel(source, target, zone, !isCopy);
        return (isCopy ? "drag a copy of " : "drag ") + Escape(source.path) + " on " + Escape(target.path) + ' ' +
               std::to_string(zone);
    }
    void DropInModel(const Entry& source, const Entry& target, int zone, bool isMove) {
        using enum ModelPlace::Where;
        ModelPlace place;
        Name folder = FolderOf(target);
        if (!source.isFolder && !target.isFolder) {
            place = {zone == 2 ? kBehind : kBefore, LeafOf(target.path)};
        } else if (source.isFolder && target.isFolder && zone != 1 && model.IsManual()) {
            folder = ParentOf(target.path);
            place = {target.path.empty() ? kFront : zone == 2 ? kBehind : kBefore, LeafOf(target.path)};
        }
        model.Transfer(source.path, source.isFolder, folder, place, isMove);
    }
    std::string DoArrange() {
        const int commands[] = {kArrangeAlphabetically, kArrangeLogically, kArrangeManually};
        model.arrangement = static_cast<SessionArrangement>(Below(3));
        Command(commands[static_cast<int>(model.arrangement)]);
        return "arrange " + std::to_string(static_cast<int>(model.arrangement));
    }
    std::string DoReopen() {
        panels.global->rememberFolderExpansion.Set(Below(2) == 0);
        dialog->Destroy();
        Open();
        return "reopen";
    }
    std::string DoFilter() {
        Command(kShowTerminalSessions);
        return "filter";
    }

    void Compare(const ModelFolder& folder, const Name& path) {
        ProfileFolderData stored(VUnicodeString(path), true);
        const auto plain = [](const VStringArray& names) {
            std::vector<Name> list;
            for (const VUnicodeString& name : names)
                if (name != kDefaultSession) list.emplace_back(name.View());
            return list;
        };
        EXPECT_EQ(plain(stored.GetOrderedFolders()), folder.folders) << Escape(path);
        EXPECT_EQ(plain(stored.GetOrderedSessions()), folder.sessions) << Escape(path);
        EXPECT_EQ(plain(stored.GetShownSessions()), model.Shown(folder, false)) << Escape(path);
        for (const auto& [name, delay] : folder.delays)
            EXPECT_EQ(DelayOf(VUnicodeString(Join(path, name))), delay) << Escape(Join(path, name));
        std::vector<Name> expected = model.Shown(folder, true);
        const TreeItem item = At(path);
        if (item == TreeItem::kNone) return;
        if (dialog->DataOf(item).sessionsLoaded)
            std::ranges::copy(model.Shown(folder, false), std::back_inserter(expected));
        std::vector<Name> shown;
        VTreeItems& items = dialog->Items();
        EXPECT_TRUE(items.HasChildrenOrExpander(item) || (folder.folders.empty() && folder.sessions.empty()));
        for (TreeItem child = items.GetFirstChild(item); child != TreeItem::kNone; child = items.GetNextSibling(child))
            shown.emplace_back(items.GetText(child).View());
        if (model.arrangement == kLogical) {
            std::ranges::sort(shown);
            std::ranges::sort(expected);
        }
        EXPECT_EQ(shown, expected) << Escape(path);
        for (const auto& [name, child] : folder.children) Compare(child, Join(path, name));
    }

    std::mt19937 random;
    Model model;
    int lastDelay = 1000;
};

TEST_F(RandomUser, SeesWhatTheStoreHoldsWhateverTheUserDoes) {
    const char* const given = std::getenv("RANDOM_USER_SEED");
    const unsigned seed = given != nullptr ? static_cast<unsigned>(std::atoi(given)) : std::random_device()();
    RecordProperty("seed", static_cast<int>(seed));
    SCOPED_TRACE("RANDOM_USER_SEED=" + std::to_string(seed));
    random.seed(seed);
    kit.AnswerBoxes(
        [](const VUnicodeString&, unsigned flags) { return (flags & 7U) == kBoxYesNo ? kAnswerYes : kAnswerOk; });
    Open();
    using Action = std::string (RandomUser::*)();
    const Action actions[] = {
        &RandomUser::DoNewFolder,  &RandomUser::DoNewSession, &RandomUser::DoNewSession, &RandomUser::DoRename,
        &RandomUser::DoRename,     &RandomUser::DoPaste,      &RandomUser::DoPaste,      &RandomUser::DoDrag,
        &RandomUser::DoDrag,       &RandomUser::DoDrag,       &RandomUser::DoArrange,    &RandomUser::DoReopen,
        &RandomUser::DoFilter,     &RandomUser::DoDelete,     &RandomUser::DoFold,       &RandomUser::DoFold,
        &RandomUser::DoProperties, &RandomUser::DoProperties, &RandomUser::DoFind};
    constexpr int kSteps = 3000;
    constexpr std::size_t kLargeTree = 40;
    for (int step = 0; step < kSteps && !HasFailure(); ++step) {
        const std::size_t size = ListEntries().size();
        Action action = size > kLargeTree ? &RandomUser::DoDelete : actions[Below(std::size(actions))];
        if (size < 4) action = Below(2) == 0 ? &RandomUser::DoNewFolder : &RandomUser::DoNewSession;
        const std::string before = Tree().Read();
        const std::string what = (this->*action)();
        Compare(model.root, Name());
        EXPECT_FALSE(HasFailure()) << "step " << step << ": " << what << "\nbefore:\n"
                                   << before << "after:\n"
                                   << Tree().Read();
    }
}

}  // namespace
}  // namespace connectdialog::test
