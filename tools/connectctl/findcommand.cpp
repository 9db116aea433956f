// find: the entries in which a text occurs.
#include <CLI/CLI.hpp>
#include <memory>

#include "config/isessionconfig.h"
#include "platform/codepage.h"
#include "sessiondb/entrysearch.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

struct FindArguments {
    std::string text;
    bool inSessionNames = false;
    bool inFolderNames = false;
    bool inDescriptions = false;
    bool inHostnames = false;
    bool matchCase = false;
};

/// One search, depth first in the order in which the tree is shown. Recursion goes as deep as a store's keys.
class Search {
  public:
    explicit Search(FindOptions searchOptions) : options(std::move(searchOptions)) {}

    void VisitFolder(const VUnicodeString& path) {
        const VUnicodeString label = path.IsEmpty() ? VUnicodeString(kRootLabel) : GetEntryLeaf(path);
        if (NameMatches(label, false, options)) Tell(Printable(path) + '\\');
        const ProfileFolderData folder(path, true);
        for (const VUnicodeString& name : folder.GetShownFolders()) VisitFolder(JoinEntryPath(path, name));
        for (const VUnicodeString& name : folder.GetShownSessions())
            if (!IsTemplateEntry(path, name)) VisitSession(JoinEntryPath(path, name), name);
    }
    bool HasFound() const { return hasFound; }

  private:
    void VisitSession(const VUnicodeString& path, const VUnicodeString& name) {
        if (NameMatches(name, true, options) || ValuesMatch(path)) Tell(Printable(path));
    }
    bool ValuesMatch(const VUnicodeString& path) const {
        if (!options.inHostnames && !options.inDescriptions) return false;
        const VRef<ISessionConfig> session = OpenSession(path);
        return session && SessionMatches(GetSearchedTexts(*session), options);
    }
    void Tell(const std::string& line) {
        PrintLine(line);
        hasFound = true;
    }

    FindOptions options;
    bool hasFound = false;
};

Failure Find(const FindArguments& arguments) {
    FindOptions options;
    if (Failure failure = DecodeArgument(arguments.text, options.text)) return failure;
    if (options.text.IsEmpty()) return "the text to find is empty";
    const bool isScoped =
        arguments.inSessionNames || arguments.inFolderNames || arguments.inDescriptions || arguments.inHostnames;
    options.inSessionNames = !isScoped || arguments.inSessionNames;
    options.inFolderNames = !isScoped || arguments.inFolderNames;
    options.inDescriptions = !isScoped || arguments.inDescriptions;
    options.inHostnames = !isScoped || arguments.inHostnames;
    options.matchCase = arguments.matchCase;
    Search search(options);
    search.VisitFolder(VUnicodeString());
    if (search.HasFound()) return kDone;
    return platform::ToNarrow(DescribeNotFound(options));
}

}  // namespace

CommandBody DeclareFind(CLI::App& parser) {
    auto arguments = std::make_shared<FindArguments>();
    parser.add_option("TEXT", arguments->text, "What to look for")->required();
    parser.add_flag("--session-names", arguments->inSessionNames, "Look at the names of sessions");
    parser.add_flag("--folder-names", arguments->inFolderNames, "Look at the names of folders");
    parser.add_flag("--descriptions", arguments->inDescriptions, "Look at the descriptions of sessions");
    parser.add_flag("--host-names", arguments->inHostnames, "Look at the host names of sessions");
    parser.add_flag("--match-case", arguments->matchCase, "Tell capital from small letters");
    parser.footer(
        "Without one of the first four options all of them are looked at. Prints the path of each hit, in\n"
        "the order of the tree; the root itself, called \"Sessions\", as a single \\.");
    return [arguments] { return Find(*arguments); };
}

}  // namespace connectdialog::connectctl
