// shortcut: sessions and folders on the user's desktop.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "connectdialog/desktopshortcut.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/hostsetup/hostsetup.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

struct ShortcutArguments {
    std::vector<std::string> paths;
    std::optional<std::string> label;
};

Failure MakeShortcut(const ShortcutArguments& arguments) {
    VStringArray sessions;
    VStringArray folders;
    for (const std::string& path : arguments.paths) {
        Entry entry;
        if (Failure failure = FindStoredEntry(path, entry)) return failure;
        (entry.isSession ? sessions : folders).Add(entry.path);
    }
    const VUnicodeString text = BuildShortcutArguments(sessions, folders);
    if (!NamesExactly(text, sessions, folders))
        return "a name with a double quote and a blank has no place in a shortcut";
    const VUnicodeString first = folders.IsEmpty() ? sessions[0] : folders[0];
    VUnicodeString label = OfferShortcutLabel(first, arguments.paths.size() > 1, u"NorHalden");
    if (arguments.label) {
        if (Failure failure = DecodeArgument(*arguments.label, label)) return failure;
        label.TrimLeft();
        label.TrimRight();
    }
    if (label.IsEmpty()) return "Shortcut name must be non-empty.";
    const std::string host = FindSuiteProgram("norhalden");
    if (host.empty()) return "norhalden is not installed";
    if (CreateShortcutTo({VUnicodeString(platform::FromNativePath(host)), true, GetStoreOptions(GetToolStoreUrl())},
                         text, label))
        return kDone;
    VReportMessageParams cause(platform::GetLastErrorCode());
    return platform::ToNarrow(kShortcutFailure) + ", " + Quoted(label) + ": " + ReportText(cause);
}

}  // namespace

CommandBody DeclareShortcut(CLI::App& parser) {
    auto arguments = std::make_shared<ShortcutArguments>();
    parser.add_option("PATH", arguments->paths, kPathHelp)->required();
    parser.add_option("--label", arguments->label, "Its name on the desktop; the session's own when left out");
    parser.footer("The shortcut starts norhalden, which opens the sessions in a terminal.");
    return [arguments] { return MakeShortcut(*arguments); };
}

}  // namespace connectdialog::connectctl
