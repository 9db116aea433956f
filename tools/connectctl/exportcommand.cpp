// export: a session, a folder or the whole tree as JSON.
#include <CLI/CLI.hpp>
#include <memory>

#include "platform/files.h"
#include "platform/lasterror.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "tools/connectctl/entryjson.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/userfile.h"

namespace connectdialog::connectctl {

namespace {

struct ExportArguments {
    std::string path;
    std::string file;
    bool withSecrets = false;
};

/// Writes entries as the walk meets them. Recursion goes as deep as a store's keys.
class Exporter {
  public:
    /// `base` is the folder that the paths in the file begin below.
    Exporter(VUnicodeString base, bool withSecrets, std::string* text)
        : base(std::move(base)), withSecrets(withSecrets), text(text) {}

    void Begin() {
        Write("{\"format\":" + Json(kEntriesFormat).dump() + ",\"version\":" + std::to_string(kEntriesVersion) +
              ",\"entries\":[");
    }
    Failure AddFolder(const VUnicodeString& path) {
        ProfileFolderData folder(path, true);
        WriteEntry({{"path", Relative(path)}, {"type", "folder"}, {"expanded", folder.GetIsExpanded()}});
        for (const VStringArray& names : {folder.GetOrderedFolders(), folder.GetHiddenFolders()})
            for (const VUnicodeString& name : names)
                if (Failure failure = AddFolder(JoinEntryPath(path, name))) return failure;
        for (const VStringArray& names : {folder.GetOrderedSessions(), folder.GetHiddenSessions()})
            for (const VUnicodeString& name : names)
                if (Failure failure = AddSession(JoinEntryPath(path, name))) return failure;
        return kDone;
    }
    Failure AddSession(const VUnicodeString& path) {
        Json values;
        if (Failure failure = ValuesToJson(path, withSecrets, values)) return failure;
        WriteEntry({{"path", Relative(path)}, {"type", "session"}, {"values", std::move(values)}});
        return kDone;
    }
    void End() { Write("\n]}\n"); }

  private:
    using Json = nlohmann::json;

    Json Relative(const VUnicodeString& path) const {
        return ExactTextToJson(base.IsEmpty() ? path : path.Mid(base.GetLength() + 1));
    }
    void WriteEntry(const Json& entry) {
        Write(isFirst ? "\n" : ",\n");
        Write(PrintableJson(entry));
        isFirst = false;
    }
    void Write(const std::string& piece) {
        if (text != nullptr)
            *text += piece;
        else
            Print(piece);
    }

    VUnicodeString base;
    bool withSecrets;
    std::string* text;  ///< null: standard output
    bool isFirst = true;
};

Failure Export(const ExportArguments& arguments) {
    Entry entry;
    VUnicodeString file;
    if (Failure failure = DecodeArgument(arguments.file, file)) return failure;
    if (Failure failure = FindStoredEntry(arguments.path, entry)) return failure;
    std::string text;
    Exporter exporter(GetEntryParent(entry.path), arguments.withSecrets, file.IsEmpty() ? nullptr : &text);
    exporter.Begin();
    if (Failure failure = entry.isSession ? exporter.AddSession(entry.path) : exporter.AddFolder(entry.path))
        return failure;
    exporter.End();
    if (file.IsEmpty() || platform::ReplaceFileWith(file, text)) return kDone;
    return FileFailure(file, platform::GetLastErrorCode());
}

}  // namespace

CommandBody DeclareExport(CLI::App& parser) {
    auto arguments = std::make_shared<ExportArguments>();
    parser.add_option("PATH", arguments->path, std::string(kPathHelp) + "; the root when left out");
    parser.add_option("-o,--output", arguments->file,
                      "Write this file, for this user alone, in place of standard output");
    parser.add_flag("--with-secrets", arguments->withSecrets,
                    "Passwords and login scripts too, enciphered as in the store: that keeps nobody from reading them\n"
                    "who has this program");
    parser.footer("The JSON is what \"import json\" takes.");
    return [arguments] { return Export(*arguments); };
}

}  // namespace connectdialog::connectctl
