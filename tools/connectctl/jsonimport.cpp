#include "tools/connectctl/jsonimport.h"

#include <istream>
#include <map>
#include <memory>

#include "foundation/casefold.h"
#include "platform/codepage.h"
#include "profile/vprofilekey.h"
#include "sessiondb/entryrefusals.h"
#include "sessiondb/folderadditions.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treesteps.h"
#include "tools/connectctl/entryjson.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

using Json = nlohmann::json;

/// The file's object is 0, its entries are 2, their values 3 and what a value is made of up to 6.
constexpr int kEntryDepth = 2;
constexpr int kDeepestValue = 6;

/// The place and the fault without the parser's name for it and without what it read last, which may be a secret.
std::string DescribeFault(std::string_view text) {
    if (const std::size_t end = text.find("] "); text.starts_with('[') && end != text.npos) text.remove_prefix(end + 2);
    return std::string(text.substr(0, text.find("; last read")));
}

/// Ends the parse: nothing behind the fault is looked at.
struct ParseStop {};

class Importer {
  public:
    Importer(const VUnicodeString& into, JsonImportCounts& counts) : into(into), counts(counts) { Expect(into); }

    /// Told of each piece of the text; false drops the piece.
    bool Take(int depth, Json::parse_event_t event, Json& parsed) {
        if (depth > kDeepestValue) Stop("the text is nested too deep");
        if (depth == 1 && event == Json::parse_event_t::key) BeginMember(parsed.get_ref<const std::string&>());
        if (depth == 1 && event == Json::parse_event_t::value) TakeHeader(parsed);
        if (depth == 1 && event == Json::parse_event_t::object_start && member == "entries")
            Stop("the entries are no array");
        if (depth != kEntryDepth || member != "entries") return true;
        place = "entry " + std::to_string(number + 1);
        if (event == Json::parse_event_t::value || event == Json::parse_event_t::array_end) Stop("it is no object");
        if (event != Json::parse_event_t::object_end) return true;
        ++number;
        TakeEntry(parsed);
        return false;
    }
    Failure Finish() {
        if (failure) return failure;
        if (!hasEntries) return "the text is no export: it has no entries";
        for (const auto& [path, folder] : additions)
            if (!folder->Finish()) return "the store refused the lists of a folder";
        return kDone;
    }

  private:
    /// Entries of the folder may follow. What the folder itself has is written before.
    void Expect(const VUnicodeString& path) {
        additions.insert_or_assign(FoldText(path), std::make_unique<FolderAdditions>(path));
    }
    [[noreturn]] void Stop(const std::string& text) {
        if (!failure) failure = place.empty() ? text : place + ": " + text;
        throw ParseStop();
    }
    void BeginMember(const std::string& name) {
        member = name;
        if (member != "entries") return;
        if (!isOfFormat || !isOfVersion) Stop("the text is no export that this program reads");
        hasEntries = true;
    }
    void TakeHeader(const Json& value) {
        if (member == "format") isOfFormat = value == kEntriesFormat;
        if (member == "version") isOfVersion = value == kEntriesVersion;
        if (member == "entries") Stop("the entries are no array");
    }
    void TakeEntry(const Json& entry) {
        VUnicodeString relative;
        if (!entry.contains("path") || !ExactTextFromJson(entry["path"], relative)) Stop("it has no path");
        place += " (" + Quoted(relative) + ")";
        const Json type = entry.value("type", Json());
        if (type != "folder" && type != "session") Stop("its type is neither folder nor session");
        if (relative.IsEmpty() && (type == "session" || number != 1)) Stop("the root is a folder and stands first");
        const VUnicodeString path = relative.IsEmpty() ? into : JoinEntryPath(into, relative);
        if (!relative.IsEmpty()) CheckPlace(relative, path);
        if (type == "folder")
            MakeFolder(entry, path, relative.IsEmpty());
        else
            MakeSession(entry, path);
        place.clear();
    }
    void CheckPlace(const VUnicodeString& relative, const VUnicodeString& path) {
        const std::u16string_view names = relative;
        const bool hasEmptyName =
            names.front() == u'\\' || names.back() == u'\\' || names.find(u"\\\\") != std::u16string_view::npos;
        if (hasEmptyName) Stop("the path has an empty name");
        const VUnicodeString leaf = GetEntryLeaf(path);
        if (leaf.EqualsNoCase(kFolderDataKey)) Stop("no entry can have that name");
        if (!additions.contains(FoldText(GetEntryParent(path)))) Stop("its folder does not stand before it");
        if (SessionKeyExists(path)) Stop(platform::ToNarrow(DescribeEntryRefusal(EntryRefusal::kTaken, path)));
    }
    void MakeFolder(const Json& entry, const VUnicodeString& path, bool isRoot) {
        const Json expanded = entry.value("expanded", Json(false));
        if (!expanded.is_boolean()) Stop("expanded is neither true nor false");
        if (!isRoot) {
            if (!CreateFolderKey(store, path)) Stop("the store refused it");
            additions[FoldText(GetEntryParent(path))]->AddFolder(GetEntryLeaf(path));
            ++counts.folders;
        }
        if (expanded.get<bool>() && !WriteIsExpanded(path, true)) Stop("the store refused it");
        Expect(path);
    }
    void MakeSession(const Json& entry, const VUnicodeString& path) {
        VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
        if (const Failure fault = ValuesFromJson(entry.value("values", Json()), key, path)) Stop(*fault);
        additions[FoldText(GetEntryParent(path))]->AddSession(GetEntryLeaf(path));
        ++counts.sessions;
    }

    VUnicodeString into;
    JsonImportCounts& counts;
    VProfileStore store{false};
    std::map<std::u16string, std::unique_ptr<FolderAdditions>> additions;  ///< by the folded path of the folder
    Failure failure;
    std::string place;
    std::string member;  ///< of the file's object
    std::size_t number = 0;
    bool isOfFormat = false;
    bool isOfVersion = false;
    bool hasEntries = false;
};

}  // namespace

Failure ImportEntries(std::istream& text, const VUnicodeString& into, JsonImportCounts& counts) {
    Importer importer(into, counts);
    try {
        const Json rest = Json::parse(text, [&](int depth, Json::parse_event_t event, Json& parsed) {
            return importer.Take(depth, event, parsed);
        });
        if (!rest.is_object()) return "the text is no export";
    } catch (const ParseStop&) {
        return importer.Finish();
    } catch (const Json::exception& error) {
        return DescribeFault(error.what());
    }
    return importer.Finish();
}

}  // namespace connectdialog::connectctl
