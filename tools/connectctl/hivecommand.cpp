// hive: the settings of the machine and of the user that stand beside the store.
#include <CLI/CLI.hpp>
#include <memory>

#include "foundation/vfile.h"
#include "foundation/vhivewriter.h"
#include "platform/codepage.h"
#include "platform/files.h"
#include "platform/lasterror.h"
#include "profile/vregistrykey.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/hivevalue.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/subcommands.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::uint32_t kReadWrite = kRegistryRead | kRegistrySetValue | kRegistryCreateSubkey;

struct HiveArguments {
    bool isMachine = false;
    bool isUser = false;
    std::string key;
    std::string name;
    std::string value;
    std::string type = "string";
    std::string file;
    bool hasName = false;

    HiveScope Scope() const { return isMachine ? HiveScope::kMachine : HiveScope::kUser; }
};

Failure FailureOf(VRegistryKey& key, std::u16string_view name) {
    return Quoted(name) + ": " + ReportText(*key.GetLastReport());
}

Failure FailureOf(const VHiveStatus& status, std::u16string_view name) {
    VReportMessageParams report(status.code);
    const std::string detail = status.detail.empty() ? "" : " (" + platform::ToNarrow(status.detail) + ')';
    return Quoted(name) + ": " + ReportText(report) + detail;
}

Failure Get(const HiveArguments& arguments) {
    VUnicodeString path;
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.key, path)) return failure;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    VSettingsHive& hive = VSettingsHive::Of(arguments.Scope());
    if (const VHiveStatus found = hive.FindKey(path); !found) return FailureOf(found, path);
    VHiveValue value;
    if (const VHiveStatus read = hive.ReadValue(path, name, value); !read) return FailureOf(read, name);
    std::string type;
    std::string text;
    DescribeHiveValue(value, type, text);
    PrintLine(text);
    return kDone;
}

Failure Set(const HiveArguments& arguments) {
    VUnicodeString path;
    VUnicodeString name;
    VHiveValue value;
    if (Failure failure = DecodeArgument(arguments.key, path)) return failure;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    if (Failure failure = ParseHiveValue(arguments.type, arguments.value, value)) return failure;
    const VHiveStatus status = VSettingsHive::Of(arguments.Scope()).WriteValueAndKey(path, name, std::move(value));
    if (status) return kDone;
    return Quoted(path) + ", " + *FailureOf(status, name);
}

Failure Delete(const HiveArguments& arguments) {
    VUnicodeString path;
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.key, path)) return failure;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    VRegistryKey key(arguments.Scope(), arguments.hasName ? path.GetData() : u"", kReadWrite);
    if (!key.IsOpen()) return FailureOf(key, path);
    if (arguments.hasName) return key.DeleteValue(name.GetData()) ? kDone : FailureOf(key, name);
    return key.DeleteKey(path.GetData()) ? kDone : FailureOf(key, path);
}

/// The values and then the keys below, each level two blanks further in. Keys end with `\`.
void PrintKey(const VHiveKey& key, const std::string& indent) {
    for (const auto& [name, entry] : key.values) {
        std::string type;
        std::string text;
        DescribeHiveValue(entry.value, type, text);
        std::string line = indent + (name.empty() ? "@" : Printable(name));
        for (const std::string& field : {type, text}) line.append(1, '\t').append(field);
        PrintLine(line);
    }
    for (const auto& [name, child] : key.children) {
        PrintLine(indent + Printable(name) + '\\');
        PrintKey(*child, indent + "  ");
    }
}

Failure Tree(const HiveArguments& arguments) {
    VUnicodeString path;
    if (Failure failure = DecodeArgument(arguments.key, path)) return failure;
    VSettingsHive& hive = VSettingsHive::Of(arguments.Scope());
    const VHiveStatus health = hive.Health();
    const VHiveStatus status = hive.FindKey(path);
    if (!status) return FailureOf(status, path);
    if (const VHiveKey* key = hive.Tree().Find(hive.FullPath(path))) PrintKey(*key, "");
    return health ? kDone : FailureOf(health, path);
}

Failure FileFailure(const VUnicodeString& name) {
    return FailureOf(VHiveStatus{platform::GetLastErrorCode(), {}}, name);
}

Failure Import(const HiveArguments& arguments) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.file, name)) return failure;
    VFile file;
    file.SetShareMode(platform::kShareRead);
    if (!file.Open(name, platform::kGenericRead, platform::kOpenExisting)) return FileFailure(name);
    std::string bytes(VSettingsHive::kMaxBytes + 1, '\0');
    std::size_t done = 0;
    if (!file.Read(bytes.data(), bytes.size(), done)) return FileFailure(name);
    const VHiveStatus status = VSettingsHive::Of(arguments.Scope()).Import(std::string_view(bytes).substr(0, done));
    return status ? kDone : FailureOf(status, name);
}

Failure Export(const HiveArguments& arguments) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.file, name)) return failure;
    VSettingsHive& hive = VSettingsHive::Of(arguments.Scope());
    const std::string bytes = WriteHive(hive.Tree());
    if (const VHiveStatus health = hive.Health(); !health) return FailureOf(health, name);
    if (platform::ReplaceFileWith(name, bytes)) return kDone;
    const bool isInTheWay = platform::GetLastErrorCode() == platform::kFileExists;
    return FileFailure(isInTheWay ? name + u".new" : name);
}

void AddKey(CLI::App& parser, HiveArguments& arguments, bool isRequired = true) {
    parser.add_option("KEY", arguments.key, "Names below the hive's root joined by \\")->required(isRequired);
}
CLI::Option* AddName(CLI::App& parser, HiveArguments& arguments) {
    return parser.add_option("NAME", arguments.name, "The value; an empty name is the nameless one");
}
void AddFile(CLI::App& parser, HiveArguments& arguments) {
    parser.add_option("FILE", arguments.file, "A file in the form of a registry export")->required();
}

void DeclareGetValue(CLI::App& parser, HiveArguments& arguments) {
    AddKey(parser, arguments);
    AddName(parser, arguments);
}
void DeclareSetValue(CLI::App& parser, HiveArguments& arguments) {
    AddKey(parser, arguments);
    AddName(parser, arguments)->required();
    parser.add_option("VALUE", arguments.value, "The new value; one that begins with - goes behind --")->required();
    parser
        .add_option(
            "--type", arguments.type,
            "string, expand (with variables as %NAME%), dword, binary (hex digits) or list (a JSON array of texts)")
        ->check(CLI::IsMember({"string", "expand", "dword", "binary", "list"}));
}
void DeclareDelete(CLI::App& parser, HiveArguments& arguments) {
    AddKey(parser, arguments);
    AddName(parser, arguments)->each([&arguments](const std::string&) { arguments.hasName = true; });
}
void DeclareSubtree(CLI::App& parser, HiveArguments& arguments) {
    AddKey(parser, arguments, false);
}

constexpr Subcommand<HiveArguments> kHiveCommands[] = {
    {"get", "Print one value", DeclareGetValue, Get},
    {"set", "Change one value; its key is made when it is missing", DeclareSetValue, Set},
    {"delete", "Delete a value, or without a name the key with all below it", DeclareDelete, Delete},
    {"tree", "Print keys and values", DeclareSubtree, Tree},
    {"import", "Put what a file holds for this hive on top of it, all or nothing", AddFile, Import},
    {"export", "Write the hive as a file", AddFile, Export},
};

}  // namespace

CommandBody DeclareHive(CLI::App& parser) {
    auto arguments = std::make_shared<HiveArguments>();
    CLI::Option* machine = parser.add_flag("--machine", arguments->isMachine, "The settings of the machine");
    parser.add_flag("--user", arguments->isUser, "The settings of the user; the usual choice")->excludes(machine);
    return DeclareSubcommands(parser, kHiveCommands, arguments);
}

}  // namespace connectdialog::connectctl
