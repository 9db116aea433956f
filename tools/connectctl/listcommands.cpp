// tree and ls: what is below a folder, in the order in which it is shown.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

/// Far deeper than any store that was made by hand, and no danger for the stack.
constexpr unsigned kDeepestFolder = 256;

struct ListArguments {
    std::string path;
    bool isRecursive = false;
    bool asJson = false;
};

/// Writes entries as the walk meets them, so that a large tree begins to appear at once.
class IListing {
  public:
    virtual ~IListing() = default;
    virtual void Begin() {}
    /// `depth` counts from 0, for what is directly below the listed folder.
    virtual void BeginFolder(const VUnicodeString& path, const VUnicodeString& name, unsigned depth) = 0;
    virtual void EndFolder() {}
    virtual void AddSession(const VUnicodeString& path, const VUnicodeString& name, unsigned depth) = 0;
    virtual void End() {}
};

std::string Indentation(unsigned depth) {
    return std::string(std::size_t{2} * depth, ' ');
}

class TreeText : public IListing {
  public:
    void BeginFolder(const VUnicodeString&, const VUnicodeString& name, unsigned depth) override {
        PrintLine(Indentation(depth) + Printable(name) + '\\');
    }
    void AddSession(const VUnicodeString&, const VUnicodeString& name, unsigned depth) override {
        PrintLine(Indentation(depth) + Printable(name));
    }
};

/// Whole paths when folders are entered, else names.
class FlatText : public IListing {
  public:
    explicit FlatText(bool wholePaths) : wholePaths(wholePaths) {}
    void BeginFolder(const VUnicodeString& path, const VUnicodeString& name, unsigned) override {
        PrintLine(Printable(wholePaths ? path : name) + '\\');
    }
    void AddSession(const VUnicodeString& path, const VUnicodeString& name, unsigned) override {
        PrintLine(Printable(wholePaths ? path : name));
    }

  private:
    bool wholePaths;
};

/// An array with one object a line; folders hold their children when `nested` is set.
class JsonListing : public IListing {
  public:
    explicit JsonListing(bool nested) : nested(nested) {}
    void Begin() override { Print("["); }
    void BeginFolder(const VUnicodeString& path, const VUnicodeString& name, unsigned) override {
        const std::string object = StartObject(path, name, "folder");
        Print(object.substr(0, object.size() - 1));
        Print(nested ? ",\"children\":[" : "}");
        isFirst = nested;
    }
    void EndFolder() override {
        if (nested) Print("]}");
        isFirst = false;
    }
    void AddSession(const VUnicodeString& path, const VUnicodeString& name, unsigned) override {
        Print(StartObject(path, name, "session"));
    }
    void End() override { PrintLine("\n]"); }

  private:
    std::string StartObject(const VUnicodeString& path, const VUnicodeString& name, const char* type) {
        Print(isFirst ? "\n" : ",\n");
        isFirst = false;
        return PrintableJson({{"name", JsonText(name)}, {"path", JsonText(path)}, {"type", type}});
    }

    bool nested;
    bool isFirst = true;
};

/// Folders first, then sessions.
Failure ListFolder(const VUnicodeString& path, unsigned depth, bool isRecursive, IListing& listing) {
    if (depth == kDeepestFolder) return "folders are nested too deep below " + Quoted(path);
    const ProfileFolderData folder(path, true);
    for (const VUnicodeString& name : folder.GetShownFolders()) {
        const VUnicodeString child = JoinEntryPath(path, name);
        listing.BeginFolder(child, name, depth);
        if (isRecursive)
            if (Failure failure = ListFolder(child, depth + 1, true, listing)) return failure;
        listing.EndFolder();
    }
    for (const VUnicodeString& name : folder.GetShownSessions())
        listing.AddSession(JoinEntryPath(path, name), name, depth);
    return kDone;
}

Failure List(const std::string& argument, bool isRecursive, IListing& listing) {
    Entry entry;
    if (Failure failure = FindEntry(argument, entry)) return failure;
    listing.Begin();
    Failure failure = kDone;
    if (entry.isSession)
        listing.AddSession(entry.path, GetEntryLeaf(entry.path), 0);
    else
        failure = ListFolder(entry.path, 0, isRecursive, listing);
    listing.End();
    return failure;
}

std::shared_ptr<ListArguments> DeclareList(CLI::App& parser) {
    auto arguments = std::make_shared<ListArguments>();
    parser.add_option("PATH", arguments->path, std::string(kPathHelp) + "; the root when left out");
    parser.add_flag("--json", arguments->asJson, "Print JSON");
    return arguments;
}

}  // namespace

CommandBody DeclareTree(CLI::App& parser) {
    auto arguments = DeclareList(parser);
    return [arguments] {
        TreeText text;
        JsonListing json(true);
        return List(arguments->path, true, arguments->asJson ? static_cast<IListing&>(json) : text);
    };
}

CommandBody DeclareLs(CLI::App& parser) {
    auto arguments = DeclareList(parser);
    parser.add_flag("-R,--recursive", arguments->isRecursive, "List what is in folders too, with whole paths");
    return [arguments] {
        FlatText text(arguments->isRecursive);
        JsonListing json(false);
        return List(arguments->path, arguments->isRecursive, arguments->asJson ? static_cast<IListing&>(json) : text);
    };
}

}  // namespace connectdialog::connectctl
