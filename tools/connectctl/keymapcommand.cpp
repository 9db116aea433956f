// keymap: keymap files, and the keymaps of sessions.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "foundation/texttools.h"
#include "foundation/vfile.h"
#include "foundation/vreportmessageparams.h"
#include "keymap/keymapreader.h"
#include "keymap/keymapwriter.h"
#include "keymap/profilekeymap.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/subcommands.h"
#include "tools/connectctl/toolstore.h"
#include "tools/connectctl/userfile.h"

namespace connectdialog::connectctl {

namespace {

struct KeymapArguments {
    std::string file;
    std::string out;
    const CLI::Option* store = nullptr;
};

/// A keymap file with what is wrong in it.
struct LoadedKeymap {
    Keymap keymap;
    VStringArray errors;
    bool isWhole = false;  ///< it was read up to its end
};

Failure LoadFile(const std::string& argument, LoadedKeymap& loaded) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(argument, name)) return failure;
    if (const std::uint32_t code = ProbeFile(name)) return FileFailure(name, code);
    VReportMessageParams report;
    loaded.isWhole = loaded.keymap.LoadExisting(name, report);
    if (report.GetInsertCount() > 1) VSplitOnChar(report.GetInserts()[1], loaded.errors, u'\n');
    return kDone;
}

Failure ErrorsFailure(const KeymapArguments& arguments, const LoadedKeymap& loaded) {
    const std::uint64_t count = loaded.errors.GetCount();
    return Quoted(platform::ToWide(arguments.file)) + " has " +
           (count == 1 ? "an error" : std::to_string(count) + " errors") +
           (loaded.isWhole ? "" : ", and what follows was not read");
}

Failure Check(const KeymapArguments& arguments) {
    LoadedKeymap loaded;
    if (Failure failure = LoadFile(arguments.file, loaded)) return failure;
    for (const VUnicodeString& error : loaded.errors) PrintLine(Printable(error));
    if (!loaded.errors.IsEmpty()) return ErrorsFailure(arguments, loaded);
    PrintLine(std::to_string(loaded.keymap.GetEntries().GetCount()) + " bindings");
    return kDone;
}

/// The tabs between the three parts of a line stay; those in a text are shown.
std::string PrintableLine(std::u16string_view line) {
    std::string text;
    for (int part = 0; part < 2; ++part) {
        const std::size_t tab = line.find(u'\t');
        text += Printable(line.substr(0, tab)) + '\t';
        line.remove_prefix(tab + 1);
    }
    return text + Printable(line);
}

/// The mark stands where a line of a keymap file may have any text, so what is printed is such a file itself.
void PrintKeymap(const Keymap& keymap) {
    Keymap all;
    if (keymap.GetDefaults() != nullptr) all = *keymap.GetDefaults();
    for (const auto& [key, entry, next] : keymap.GetEntries()) all.SetEntry(key, entry);
    for (const std::uint32_t key : GetSortedKeys(all.GetEntries())) {
        const bool isBuiltIn = keymap.GetEntries().Find(key) == nullptr;
        const VUnicodeString line = FormatBinding(key, *all.GetEntries().Find(key));
        PrintLine(PrintableLine(line) + (isBuiltIn ? "\t; built-in" : ""));
    }
}

Failure ShowFile(const KeymapArguments& arguments) {
    LoadedKeymap loaded;
    if (Failure failure = LoadFile(arguments.file, loaded)) return failure;
    for (const VUnicodeString& error : loaded.errors) PrintNotice(platform::ToNarrow(error));
    if (!loaded.isWhole) return ErrorsFailure(arguments, loaded);
    PrintKeymap(loaded.keymap);
    return kDone;
}

Failure ShowSession(const Entry& entry) {
    if (!entry.isSession) return Quoted(entry.path) + " is a folder, a session or a file is needed";
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(entry.path).GetData(), 0);
    ProfileKeymap keymap;
    keymap.LoadNewest(&key);
    PrintKeymap(keymap);
    return kDone;
}

/// The store is opened for a session only: a file is shown also where there is no store.
Failure Show(const KeymapArguments& arguments) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.file, name)) return failure;
    const std::uint32_t code = ProbeFile(name);
    if (code == platform::kSuccess) return ShowFile(arguments);
    if (Failure failure = OpenToolStore(arguments.store->as<std::string>())) return failure;
    Entry entry;
    const Failure failure = FindEntry(arguments.file, entry);
    if (!failure) return ShowSession(entry);
    const bool isAbsent = code == platform::kFileNotFound || code == platform::kPathNotFound;
    return isAbsent ? failure : FileFailure(name, code);
}

/// A key whose name is not found by name, or has a blank in it, makes a line that nobody can read.
Failure CheckReadsBack(const Keymap& keymap) {
    Keymap again;
    KeymapReader reader(again);
    for (const std::uint32_t key : GetSortedKeys(keymap.GetEntries())) {
        const Keymap::KeyMapEntry& entry = *keymap.GetEntries().Find(key);
        const VUnicodeString line = FormatBinding(key, entry);
        reader.ReadLine(line);
        const Keymap::KeyMapEntry* found = again.GetEntries().Find(key);
        if (found == nullptr || !(*found == entry)) return "this binding has no line that reads back: " + Quoted(line);
    }
    return kDone;
}

Failure Convert(const KeymapArguments& arguments) {
    VUnicodeString out;
    LoadedKeymap loaded;
    if (Failure failure = DecodeArgument(arguments.out, out)) return failure;
    if (Failure failure = LoadFile(arguments.file, loaded)) return failure;
    if (!loaded.errors.IsEmpty()) return ErrorsFailure(arguments, loaded);
    if (Failure failure = CheckReadsBack(loaded.keymap)) return failure;
    if (!loaded.keymap.Save(out)) return FileFailure(out, platform::GetLastErrorCode());
    if (loaded.keymap.HasComments()) PrintNotice("the comments are not kept");
    return kDone;
}

void AddFile(CLI::App& parser, KeymapArguments& arguments) {
    parser.add_option("FILE", arguments.file, "A keymap file")->required();
}
void AddFileOrPath(CLI::App& parser, KeymapArguments& arguments) {
    parser.add_option("PATH", arguments.file, "A keymap file, or else a session: names below the root joined by \\")
        ->required();
}
void AddFiles(CLI::App& parser, KeymapArguments& arguments) {
    AddFile(parser, arguments);
    parser.add_option("OUT", arguments.out, "The file to be written; one that is there is replaced")->required();
}

constexpr Subcommand<KeymapArguments> kKeymapCommands[] = {
    {"check", "Tell what is wrong in a keymap file", AddFile, Check},
    {"show", "Print the bindings of a keymap file or of a session", AddFileOrPath, Show},
    {"convert", "Write a keymap file afresh: UTF-8, sorted, without comments", AddFiles, Convert},
};

}  // namespace

CommandBody DeclareKeymap(CLI::App& parser) {
    auto arguments = std::make_shared<KeymapArguments>();
    arguments->store = parser.get_parent()->get_option("--store");
    return DeclareSubcommands(parser, kKeymapCommands, arguments);
}

}  // namespace connectdialog::connectctl
