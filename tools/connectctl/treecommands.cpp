// new, mkdir, cp, mv, rename, rm and arrange: the shape of the session tree.
#include <CLI/CLI.hpp>
#include <memory>
#include <unordered_set>

#include "config/isessionconfig.h"
#include "foundation/casefold.h"
#include "foundation/vstringarray.h"
#include "platform/codepage.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "suite/configpanels/sessionname.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

struct TreeArguments {
    std::string path;
    std::vector<std::string> paths;
    std::string folder;
    std::string name;
    std::string before;
    std::string after;
};

Failure CheckName(const VUnicodeString& parent, const VUnicodeString& oldName, const VUnicodeString& newName) {
    const SessionNameFault fault = CheckSessionName(parent, oldName, newName);
    if (fault == SessionNameFault::kNone) return kDone;
    std::string text = platform::ToNarrow(DescribeSessionNameFault(fault, newName));
    if (text.ends_with('.')) text.pop_back();
    return text;
}

/// The place of an entry that is to be made: a folder that is there, and a name in it that is free.
struct NewEntry {
    VUnicodeString parent;
    VUnicodeString name;
};

Failure FindPlace(const std::string& argument, NewEntry& place) {
    VUnicodeString path;
    if (Failure failure = DecodePath(argument, path)) return failure;
    const VUnicodeString parentPath = GetEntryParent(path);
    Entry parent;
    if (Failure failure = FindStoredEntry(platform::ToNarrow(parentPath), parent)) return failure;
    if (parent.isSession) return Quoted(parentPath) + " is a session, a folder is needed";
    place = {parent.path, GetEntryLeaf(path)};
    return CheckName(place.parent, VUnicodeString(), place.name);
}

Failure New(const TreeArguments& arguments) {
    NewEntry place;
    const auto make = [&]() -> Failure {
        const VRef<ISessionConfig> session = OpenSession(VUnicodeString(kDefaultSession));
        if (!session) return "there is no session \"Default\" to make others from";
        session->SetPath(place.parent);
        session->SetName(place.name);
        if (StoreSessionEntry(place.parent, place.name, *session, VUnicodeString(), true)) return kDone;
        return "the session cannot be stored";
    };
    return CheckAndChange([&] { return FindPlace(arguments.path, place); }, make);
}

Failure MakeFolder(const TreeArguments& arguments) {
    NewEntry place;
    const auto make = [&]() -> Failure {
        if (AddFolderEntry(place.parent, place.name, VUnicodeString(), true)) return kDone;
        return "the folder cannot be stored";
    };
    return CheckAndChange([&] { return FindPlace(arguments.path, place); }, make);
}

Failure FindCopy(const TreeArguments& arguments, Entry& source, Entry& target) {
    if (Failure failure = FindStoredEntry(arguments.path, source)) return failure;
    if (Failure failure = FindStoredEntry(arguments.folder, target)) return failure;
    if (target.isSession) return Quoted(target.path) + " is a session, a folder is needed";
    const EntryRefusal refusal = CheckCopy(source.path, target.path);
    if (refusal == EntryRefusal::kNone) return kDone;
    return platform::ToNarrow(DescribeEntryRefusal(refusal, source.path));
}

Failure FindMove(const TreeArguments& arguments, Entry& source, Entry& target) {
    if (Failure failure = FindCopy(arguments, source, target)) return failure;
    if (GetEntryParent(source.path) == target.path) return Quoted(source.path) + " is in that folder already";
    return kDone;
}

/// Prints where the entry went: its name may have been taken.
template <class Find, class Operation>
Failure Transfer(const TreeArguments& arguments, Find find, Operation operation) {
    Entry source;
    Entry target;
    VUnicodeString path;
    const auto transfer = [&]() -> Failure {
        path = operation(source.path, target.path, true, VUnicodeString(), true);
        return path.IsEmpty() ? Failure(Quoted(source.path) + " cannot be stored there") : kDone;
    };
    Failure failure = CheckAndChange([&] { return find(arguments, source, target); }, transfer);
    if (!failure) PrintLine(Printable(path) + (source.isSession ? "" : "\\"));
    return failure;
}

Failure Copy(const TreeArguments& arguments) {
    return Transfer(arguments, FindCopy, CopyEntry);
}

Failure Move(const TreeArguments& arguments) {
    return Transfer(arguments, FindMove, MoveEntry);
}

/// The siblings of the entry's own kind, in the user's order.
VStringArray SiblingsOf(const Entry& entry) {
    ProfileFolderData folder(GetEntryParent(entry.path), true);
    return entry.isSession ? folder.GetOrderedSessions() : folder.GetOrderedFolders();
}

Failure Rename(const TreeArguments& arguments) {
    Entry entry;
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    const auto find = [&]() -> Failure {
        if (Failure failure = FindStoredEntry(arguments.path, entry)) return failure;
        if (entry.path.IsEmpty()) return "the root cannot be renamed";
        return CheckName(GetEntryParent(entry.path), GetEntryLeaf(entry.path), name);
    };
    if (Failure failure = FindStoredEntry(arguments.path, entry)) return failure;
    if (!entry.path.IsEmpty() && name == GetEntryLeaf(entry.path)) return kDone;
    const auto rename = [&]() -> Failure {
        if (RenameInPlace(entry.path, name)) return kDone;
        return Quoted(entry.path) + " cannot be stored under that name";
    };
    return CheckAndChange(find, rename);
}

/// Entries in the order in which they were typed, without those that go with a folder anyway.
Failure FindDoomed(const std::vector<std::string>& arguments, std::vector<VUnicodeString>& paths) {
    paths.clear();
    std::vector<VUnicodeString> found;
    std::unordered_set<std::u16string> folded;
    for (const std::string& argument : arguments) {
        Entry entry;
        if (Failure failure = FindStoredEntry(argument, entry)) return failure;
        if (entry.path.IsEmpty()) return "the root cannot be deleted";
        if (folded.insert(FoldText(entry.path)).second) found.push_back(entry.path);
    }
    for (const VUnicodeString& path : found) {
        VUnicodeString above = GetEntryParent(path);
        while (!above.IsEmpty() && !folded.contains(FoldText(above))) above = GetEntryParent(above);
        if (above.IsEmpty()) paths.push_back(path);
    }
    return kDone;
}

/// A message of the library, which may have line breaks.
std::string OneLine(const VUnicodeString& message) {
    std::string line;
    for (const char character : platform::ToNarrow(message)) {
        if (character == '\n') line += ' ';
        if (character != '\n' && character != '\r') line += character;
    }
    return line;
}

/// Fails when a running application has one of the entries open.
Failure CheckInUse(const std::vector<VUnicodeString>& paths) {
    const RunningSessions running = GetRunningSessionPaths();
    if (running.isBusy) return platform::ToNarrow(kRunningSessionsBusy);
    if (const VUnicodeString unheard = DescribeUnheardHosts(running); !unheard.IsEmpty()) PrintNotice(OneLine(unheard));
    const VUnicodeString entries = ListEntriesInUse(paths, running.paths);
    return entries.IsEmpty() ? kDone : Failure(OneLine(DescribeEntriesInUse(entries)));
}

Failure Remove(const TreeArguments& arguments) {
    std::vector<VUnicodeString> paths;
    if (Failure failure = FindDoomed(arguments.paths, paths)) return failure;
    // Not under the lock: the applications that are asked may wait for it themselves.
    if (Failure failure = CheckInUse(paths)) return failure;
    const auto remove = [&]() -> Failure {
        if (DeleteEntries(paths) == paths.size()) return kDone;
        return platform::ToNarrow(kDeletionFailed);
    };
    return CheckAndChange([&] { return FindDoomed(arguments.paths, paths); }, remove);
}

Failure FindReference(const Entry& entry, const VUnicodeString& name, VUnicodeString& reference) {
    if (entry.path.IsEmpty()) return "the root has no place in an order";
    reference.Empty();
    for (const VUnicodeString& sibling : SiblingsOf(entry))
        if (sibling.EqualsNoCase(name)) reference = sibling;
    const char* kind = entry.isSession ? "session " : "folder ";
    if (reference.IsEmpty()) return "there is no " + (kind + Quoted(name)) + " beside " + Quoted(entry.path);
    if (reference == GetEntryLeaf(entry.path)) return "an entry has no place beside itself";
    return kDone;
}

Failure ArrangeBeside(const TreeArguments& arguments) {
    Entry entry;
    VUnicodeString name;
    VUnicodeString reference;
    const bool isBehind = arguments.before.empty();
    if (Failure failure = DecodeArgument(isBehind ? arguments.after : arguments.before, name)) return failure;
    const auto find = [&] {
        Failure failure = FindStoredEntry(arguments.path, entry);
        return failure ? failure : FindReference(entry, name, reference);
    };
    const auto arrange = [&]() -> Failure {
        if (!ArrangeEntry(entry.path, reference, isBehind).IsEmpty()) return kDone;
        return "the order cannot be stored";
    };
    Failure failure = CheckAndChange(find, arrange);
    if (!failure && !IsManuallyArranged()) PrintNotice("the order shows when sessions are arranged manually");
    return failure;
}

std::shared_ptr<TreeArguments> DeclareWithPath(CLI::App& parser, const char* name, const char* help) {
    auto arguments = std::make_shared<TreeArguments>();
    parser.add_option(name, arguments->path, help)->required();
    return arguments;
}

CommandBody DeclareTransfer(CLI::App& parser, Failure (*transfer)(const TreeArguments&)) {
    auto arguments = DeclareWithPath(parser, "SOURCE", "The session or folder; names below the root joined by \\");
    parser.add_option("FOLDER", arguments->folder, "Where it goes; empty: the root")->required();
    parser.footer(
        "Prints the new path. A session whose name is taken there gets another, as \"name (1)\"; a folder is refused,\n"
        "but for a copy beside itself.");
    return [arguments, transfer] { return transfer(*arguments); };
}

}  // namespace

CommandBody DeclareNew(CLI::App& parser) {
    auto arguments = DeclareWithPath(parser, "PATH", "The path of the new session; its folder must be there");
    return [arguments] { return New(*arguments); };
}

CommandBody DeclareMkdir(CLI::App& parser) {
    auto arguments = DeclareWithPath(parser, "PATH", "The path of the new folder; the one above it must be there");
    return [arguments] { return MakeFolder(*arguments); };
}

CommandBody DeclareCp(CLI::App& parser) {
    return DeclareTransfer(parser, Copy);
}

CommandBody DeclareMv(CLI::App& parser) {
    return DeclareTransfer(parser, Move);
}

CommandBody DeclareRename(CLI::App& parser) {
    auto arguments = DeclareWithPath(parser, "PATH", kPathHelp);
    parser.add_option("NAME", arguments->name, "The new name, without a path")->required();
    return [arguments] { return Rename(*arguments); };
}

CommandBody DeclareRm(CLI::App& parser) {
    auto arguments = std::make_shared<TreeArguments>();
    parser.add_option("PATH", arguments->paths, kPathHelp)->required();
    parser.footer(
        "Folders go with everything in them. All are deleted or none. What a running application has open is not "
        "deleted.");
    return [arguments] { return Remove(*arguments); };
}

CommandBody DeclareArrange(CLI::App& parser) {
    auto arguments = DeclareWithPath(parser, "PATH", kPathHelp);
    auto* before =
        parser.add_option("--before", arguments->before, "The sibling of the same kind that is to come next");
    parser.add_option("--after", arguments->after, "The sibling of the same kind that is to come before")
        ->excludes(before);
    parser.final_callback([arguments] {
        if (arguments->before.empty() && arguments->after.empty()) throw CLI::RequiredError("--before or --after");
    });
    return [arguments] { return ArrangeBeside(*arguments); };
}

}  // namespace connectdialog::connectctl
