#include "sessiondb/sessiontree.h"

#include <memory>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "config/connectconfigptr.h"
#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "profile/vprofilekey.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/treesteps.h"

namespace connectdialog {

namespace {

bool RootHasKey(const VUnicodeString& keyPath) {
    VProfileStore store(true);
    return store.GetRootKey()->KeyExists(keyPath.GetData());
}

bool IsKnownProtocol(const VUnicodeString& name) {
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable())
        if (row.name.EqualsNoCase(name)) return true;
    return false;
}

bool WriteSession(ISessionConfig& config, bool force) {
    return WriteToKey(BuildSessionKeyPath(config.GetPath()).GetData(),
                      [&](VProfileKey& key) { config.Save(key, force); });
}

/// What the session becomes, written whole the first time and afterwards as what differs from the key before.
bool WriteCopies(ISessionConfig& session, std::size_t count, const SessionFiller& fill,
                 std::vector<VUnicodeString>& written) {
    VProfileStore store(false);
    std::unique_ptr<VProfileKey> previous;
    while (written.size() < count) {
        if (!fill(written.size()) || session.GetPath().IsEmpty()) return false;
        auto key =
            std::make_unique<VProfileKey>(store.GetRootKey(), BuildSessionKeyPath(session.GetPath()).GetData(), 0);
        if (previous != nullptr) key->CopyValues(*previous);
        session.Save(*key, previous == nullptr);
        if (!key->AllWritten()) return false;
        previous = std::move(key);
        written.push_back(GetEntryLeaf(session.GetPath()));
    }
    previous.reset();  // before the store that it came from
    return store.Close();
}

/// A save that the store refused has told the settings that they are stored: the next one writes them all.
bool NoteOutcome(ISessionConfig& config, bool saved) {
    auto* session = dynamic_cast<SessionConfig*>(&config);
    if (!saved && session != nullptr) session->SetMustWriteAll();
    return saved;
}

}  // namespace

bool SessionKeyExists(const VUnicodeString& path) {
    return RootHasKey(BuildSessionKeyPath(path));
}

bool EntryExistsIn(const VUnicodeString& folder, const VUnicodeString& leaf) {
    return RootHasKey(JoinEntryPath(BuildSessionKeyPath(folder), leaf));
}

bool IsFolderPath(const VUnicodeString& path) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    // What cannot be read may be a session: as a folder it would be moved without its values.
    return !HasSessionMark(key) && key.GetImpl()->GetLastReport()->GetCode() == platform::kFileNotFound;
}

bool CanHoldEntries(const VUnicodeString& folder) {
    for (VUnicodeString path = folder; !path.IsEmpty(); path = GetEntryParent(path))
        if (!IsFolderPath(path)) return false;
    return true;
}

bool FolderHasEntries(const VUnicodeString& path) {
    VProfileStore store(true);
    VProfileKey folder(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    return KeyHasEntries(folder);
}

bool KeyHasEntries(VProfileKey& folder) {
    VProfileKeyIterator children(folder, false);
    VUnicodeString name;
    while (children.Next(name))
        if (name != kDefaultSession && !name.EqualsNoCase(kFolderDataKey)) return true;
    return false;
}

void EnumerateChildFolders(const VUnicodeString& path, VStringArray& folders) {
    const ProfileFolderData folder(path, true);
    folders.Append(folder.GetShownFolders());
}

bool ReadIsExpanded(const VUnicodeString& path) {
    VProfileStore store(true);
    VProfileKey data(store.GetRootKey(), BuildFolderDataKeyPath(path).GetData(), 0);
    std::uint32_t isExpanded = 0;
    return data.ReadDword(kIsExpandedValue, isExpanded) && isExpanded != 0;
}

bool WriteIsExpanded(const VUnicodeString& path, bool isExpanded) {
    if (ReadIsExpanded(path) == isExpanded) return true;
    return WriteToKey(BuildFolderDataKeyPath(path).GetData(),
                      [&](VProfileKey& data) { data.WriteDword(kIsExpandedValue, isExpanded ? 1 : 0); });
}

bool SessionHasProtocol(AppKind kind, const VUnicodeString& path) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    VUnicodeString name;
    const ProtocolSide side = kind == AppKind::kNorHalden ? ProtocolSide::kTerminal : ProtocolSide::kTransfer;
    return key.ReadString(GetProtocolNameValue(side).GetData(), name) && IsKnownProtocol(name) && name != kNoProtocol;
}

VRef<ISessionConfig> LoadSessionEntry(const VUnicodeString& path, const VUnicodeString& leaf) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    return LoadSessionFrom(key, path, leaf);
}

VRef<ISessionConfig> OpenSession(const VUnicodeString& path) {
    UpgradeButtonBars();
    VProfileStore store(true);
    const VUnicodeString keyPath = BuildSessionKeyPath(path);
    // Asked before the key is read: what another process makes in between is found then, and never half seen.
    const auto isThere = [&] { return store.GetRootKey()->KeyExists(keyPath.GetData()); };
    if (path == kDefaultSession && !isThere()) {
        auto made = VRef<ISessionConfig>::Adopt(CreateSessionConfig(kDefaultSession, nullptr));
        // What the store has now may be another process's template, of which this one knows nothing.
        if (!isThere()) return made;
    }
    VProfileKey key(store.GetRootKey(), keyPath.GetData(), 0);
    return HasSessionMark(key) ? LoadSessionFrom(key, path, GetEntryLeaf(path)) : VRef<ISessionConfig>();
}

void WalkSessions(VProfileKey& key, const VUnicodeString& prefix, SessionVisitor visit, void* context) {
    VProfileKeyIterator children(key, false);
    VUnicodeString name;
    while (children.Next(name)) {
        if (name.EqualsNoCase(kFolderDataKey)) continue;
        const VUnicodeString path = JoinEntryPath(prefix, name);
        VProfileKey child(&key, name.GetData(), 0);
        if (HasSessionMark(child))
            visit(child, path, name, context);
        else
            WalkSessions(child, path, visit, context);
    }
}

bool SaveSession(ISessionConfig& config) {
    const VUnicodeString path = config.GetPath();
    if (path == kDefaultSession) return true;
    if (path.IsEmpty()) return false;  // the root is a folder
    const bool saved = AsOneUnit([&] {
        if (!SessionKeyExists(path))
            return StoreSessionEntry(GetEntryParent(path), GetEntryLeaf(path), config, VUnicodeString(), true);
        return !IsFolderPath(path) && WriteSession(config, false);
    });
    return NoteOutcome(config, saved);
}

bool AddFolderEntry(const VUnicodeString& parent, const VUnicodeString& name, const VUnicodeString& reference,
                    bool after) {
    if (name.IsEmpty()) return false;
    const VUnicodeString path = JoinEntryPath(parent, name);
    return AsOneUnit([&] {
        if (!CanHoldEntries(path)) return false;
        return ChangeFolder(
            parent,
            [&] {
                VProfileStore store(false);
                return CreateFolderKey(store, path) && store.Close();
            },
            [&](ProfileFolderData& folder) { InsertEntryName(folder.GetOrderedFolders(), name, reference, after); });
    });
}

bool StoreSessionEntry(const VUnicodeString& parent, const VUnicodeString& name, ISessionConfig& config,
                       const VUnicodeString& reference, bool after) {
    if (name.IsEmpty()) return false;
    const VUnicodeString path = JoinEntryPath(parent, name);
    config.SetPath(path);
    const bool saved = AsOneUnit([&] {
        if (!CanHoldEntries(parent) || (SessionKeyExists(path) && IsFolderPath(path))) return false;
        return ChangeFolder(
            parent, [&] { return WriteSession(config, true); },
            [&](ProfileFolderData& folder) { InsertEntryName(folder.GetOrderedSessions(), name, reference, after); });
    });
    return NoteOutcome(config, saved);
}

bool StoreSessionEntries(const VUnicodeString& parent, ISessionConfig& session, std::size_t count,
                         const SessionFiller& fill) {
    std::vector<VUnicodeString> written;
    const auto appendNew = [&](ProfileFolderData& folder) {
        VStringArray& ordered = folder.GetOrderedSessions();
        std::unordered_set<std::u16string_view> listed(ordered.begin(), ordered.end());
        for (const VUnicodeString& name : written)
            if (listed.insert(name).second) ordered.Add(name);
    };
    const bool saved = AsOneUnit([&] {
        if (!CanHoldEntries(parent)) return false;
        return ChangeFolder(
            parent, [&] { return WriteCopies(session, count, fill, written); }, appendNew);
    });
    return NoteOutcome(session, saved);
}

}  // namespace connectdialog
