#include "sessiondb/profilefolderdata.h"

#include <array>
#include <vector>

#include "foundation/casefold.h"
#include "foundation/vsort.h"
#include "imports/configpanels.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "sessiondb/listmerge.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/treesteps.h"

namespace connectdialog {

namespace {

constexpr char16_t kFolderList[] = u"Folder List";

SessionArrangement CurrentArrangement() {
    VRef<GlobalConfig> global;
    if (!GetGlobalConfig(global, -1)) return SessionArrangement::kAlphabetical;
    return static_cast<SessionArrangement>(global->sessionArrangementMode.Get());
}

bool HidesDotEntries() {
    VRef<GlobalConfig> global;
    return GetGlobalConfig(global, -1) && global->hideDotEntries.Get();
}

bool IsHidden(const VUnicodeString& name, bool hidesDotEntries) {
    return hidesDotEntries && name.View().starts_with(u'.');
}

bool IsSessionChild(VProfileKey& folder, const VUnicodeString& name, std::uint32_t kind) {
    switch (static_cast<ProfileKind>(kind)) {
        case ProfileKind::kSession:
        case ProfileKind::kSessionLink:
            return true;
        case ProfileKind::kUnknown: {
            VProfileKey child(&folder, name.GetData(), 0);
            return HasSessionMark(child);
        }
        default:
            return false;
    }
}

/// Names whose first letters and numbers agree tie, and keep the store's order.
void SortLogically(VStringArray& names) {
    std::vector<VUnicodeString> sorted(names.begin(), names.end());
    VMergeSort(sorted, [](const VUnicodeString& a, const VUnicodeString& b) { return a.CompareNumeric(b) < 0; });
    names.Clear();
    for (VUnicodeString& name : sorted) names.Add(std::move(name));
}

}  // namespace

std::span<const MemberAccess<ProfileFolderData>> ProfileFolderData::Members() {
    using P = ProfileFolderData;
    static constexpr std::array<MemberAccess<P>, 3> kMembers = {
        Member<P, &P::folderList>,
        Member<P, &P::sessionList>,
        Member<P, &P::isExpanded>,
    };
    return kMembers;
}

ProfileFolderData::ProfileFolderData(const VUnicodeString& path, bool readOnly)
    : dataKeyPath(BuildFolderDataKeyPath(path)) {
    VProfileStore store(readOnly);
    Enumerate(store, HidesDotEntries());
    if (CurrentArrangement() == SessionArrangement::kLogical) SortLogically(sessions);
    LoadMembers(store);
    MergeList(sessionList.Get(), sessions, orderedSessions);
    MergeList(folderList.Get(), folders, orderedFolders);
}

void ProfileFolderData::Enumerate(VProfileStore& store, bool hideDotEntries) {
    const VUnicodeString folderKeyPath = GetEntryParent(dataKeyPath);
    VProfileKey folder(store.GetRootKey(), folderKeyPath.GetData(), 0);  // one that is not there has no children
    VProfileKeyIterator children(folder, false);
    constexpr std::u16string_view kData = kFolderDataKey;
    VUnicodeString name;
    std::uint32_t kind = 0;
    while (children.NextWithKind(name, kind)) {
        if (EqualsNoCase(name, kData)) continue;
        const bool isHidden = IsHidden(name, hideDotEntries);
        if (IsSessionChild(folder, name, kind))
            (isHidden ? hiddenSessions : sessions).Add(name);
        else
            (isHidden ? hiddenFolders : folders).Add(name);
    }
}

void ProfileFolderData::LoadMembers(VProfileStore& store) {
    VProfileKey* root = store.GetRootKey();
    VProfileKey data(root, dataKeyPath.GetData(), 0);
    sessionList.Load(&data, u"Session List"_v, VUnicodeString());
    folderList.Load(&data, VUnicodeString(kFolderList), VUnicodeString());
    isExpanded.Load(&data, VUnicodeString(kIsExpandedValue), false);
}

const VStringArray& ProfileFolderData::GetShownFolders() const {
    return IsManuallyArranged() ? orderedFolders : folders;
}
const VStringArray& ProfileFolderData::GetShownSessions() const {
    return IsManuallyArranged() ? orderedSessions : sessions;
}

bool ProfileFolderData::IsEmpty() const {
    return folders.IsEmpty() && sessions.IsEmpty() && hiddenFolders.IsEmpty() && hiddenSessions.IsEmpty();
}

bool ProfileFolderData::SaveToStore() {
    folderList.Set(MakeList(orderedFolders));
    sessionList.Set(MakeList(orderedSessions));
    return WriteToKey(dataKeyPath.GetData(), [this](VProfileKey& data) { Save(data, false); });
}

FolderOutline ReadFolderOutline(const VUnicodeString& path) {
    FolderOutline outline;
    VProfileStore store(true);
    VProfileKey folder(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    VProfileFolderIterator children(folder);
    const bool hidesDotEntries = HidesDotEntries();
    VStringArray present;
    VUnicodeString name;
    std::uint32_t kind = 0;
    while (children.NextWithKind(name, kind)) {
        if (name.EqualsNoCase(kFolderDataKey) || IsSessionChild(folder, name, kind)) continue;
        outline.hasEntries = outline.hasEntries || name != kDefaultSession;
        if (!IsHidden(name, hidesDotEntries)) present.Add(name);
    }
    outline.hasEntries = outline.hasEntries || KeyHasEntries(folder);

    VProfileKey data(&folder, kFolderDataKey, 0);
    std::uint32_t isExpanded = 0;
    outline.isExpanded = data.ReadDword(kIsExpandedValue, isExpanded) && isExpanded != 0;
    if (!IsManuallyArranged()) {
        outline.folders = present;
        return outline;
    }
    VUnicodeString list;
    data.ReadString(kFolderList, list);
    MergeList(list, present, outline.folders);
    return outline;
}

bool IsManuallyArranged() {
    return CurrentArrangement() == SessionArrangement::kManual;
}

void InsertEntryName(VStringArray& ordered, const VUnicodeString& name, const VUnicodeString& reference, bool after) {
    if (ordered.FindExact(name) != VStringArray::kNotFound) return;
    const std::uint32_t place =
        IsManuallyArranged() && !reference.IsEmpty() ? ordered.FindExact(reference) : VStringArray::kNotFound;
    if (place == VStringArray::kNotFound)
        ordered.Add(name);
    else
        ordered.Insert(place + (after ? 1U : 0U), name);
}

}  // namespace connectdialog
