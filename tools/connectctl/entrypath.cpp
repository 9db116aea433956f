#include "tools/connectctl/entrypath.h"

#include <algorithm>

#include "config/isessionconfig.h"
#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/storedspelling.h"
#include "sessiondb/treesteps.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

enum class EntryKind { kNone, kFolder, kSession };

/// A key of the tree that is no entry of it.
bool NamesFolderData(std::u16string_view path) {
    while (true) {
        const std::size_t end = path.find(u'\\');
        if (EqualsNoCase(path.substr(0, end), kFolderDataKey)) return true;
        if (end == std::u16string_view::npos) return false;
        path.remove_prefix(end + 1);
    }
}

/// Tells an entry that is not there from one that cannot be read.
Failure FindKind(const VUnicodeString& path, EntryKind& kind) {
    kind = EntryKind::kNone;
    if (NamesFolderData(path)) return kDone;
    if (path.IsEmpty() || SessionKeyExists(path)) {
        VProfileStore store(true);
        VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
        kind = HasSessionMark(key) ? EntryKind::kSession : EntryKind::kFolder;
        VReportMessageParams& report = *key.GetImpl()->GetLastReport();
        const bool isReadable = report.GetCode() == platform::kSuccess || report.GetCode() == platform::kFileNotFound;
        if (kind == EntryKind::kFolder && !isReadable) return Quoted(path) + ": " + ReportText(report);
    } else if (path == kDefaultSession) {
        kind = EntryKind::kSession;  // made on demand
    }
    return kDone;
}

/// The Default session is known by its exact name, the store's names by any case.
VUnicodeString WithDefaultSpelled(const VUnicodeString& path) {
    return path.EqualsNoCase(kDefaultSession) ? VUnicodeString(kDefaultSession) : path;
}

bool Exists(std::u16string_view path) {
    EntryKind kind = EntryKind::kNone;
    return !FindKind(VUnicodeString(path), kind) && kind != EntryKind::kNone;
}

std::string NotFoundText(std::u16string_view path) {
    std::string text = "there is no session or folder " + Quoted(path);
    std::u16string withBackslashes(path);
    std::ranges::replace(withBackslashes, u'/', u'\\');
    if (withBackslashes != path) {
        text += ", names are joined by \\";
        if (Exists(withBackslashes)) text += ": did you mean " + Quoted(withBackslashes) + "?";
    }
    return text;
}

}  // namespace

Failure DecodeArgument(const std::string& argument, VUnicodeString& text) {
    const std::u16string wide = platform::ToWide(argument);
    if (platform::ToNarrow(wide) != argument) return Quoted(wide) + " is not well-formed UTF-8";
    text = VUnicodeString(wide);
    return kDone;
}

Failure DecodePath(const std::string& argument, VUnicodeString& path) {
    if (Failure failure = DecodeArgument(argument, path)) return failure;
    if (path.View().ends_with(u'\\')) path = path.Left(path.GetLength() - 1);
    const std::u16string_view names = path;
    if (names.starts_with(u'\\') || names.ends_with(u'\\') || names.find(u"\\\\") != names.npos)
        return "the path " + Quoted(names) + " has an empty name";
    return kDone;
}

Failure FindEntry(const std::string& argument, Entry& entry) {
    VUnicodeString path;
    if (Failure failure = DecodePath(argument, path)) return failure;
    EntryKind kind = EntryKind::kNone;
    for (const VUnicodeString& spelling : {path, VUnicodeString(FromPrintable(path))}) {
        entry.path = WithDefaultSpelled(spelling);
        if (Failure failure = FindKind(entry.path, kind)) return failure;
        if (kind != EntryKind::kNone) break;
    }
    if (kind == EntryKind::kNone) return NotFoundText(path);
    entry.isSession = kind == EntryKind::kSession;
    return kDone;
}

Failure FindStoredEntry(const std::string& argument, Entry& entry) {
    if (Failure failure = FindEntry(argument, entry)) return failure;
    if (entry.path == kDefaultSession) OpenSession(entry.path);
    entry.path = SpelledAsStored(entry.path);
    return kDone;
}

Failure OpenSessionAt(const std::string& argument, VRef<ISessionConfig>& session) {
    Entry entry;
    if (Failure failure = FindEntry(argument, entry)) return failure;
    if (!entry.isSession)
        return entry.path.IsEmpty() ? "the path is empty, a session is needed"
                                    : Quoted(entry.path) + " is a folder, a session is needed";
    session = OpenSession(entry.path);
    if (!session) return "there is no session " + Quoted(entry.path) + " any more";
    return kDone;
}

}  // namespace connectdialog::connectctl
