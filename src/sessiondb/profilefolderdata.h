// One folder of the session tree: its children and the user's arrangement of them.
#pragma once

#include <span>

#include "foundation/vstringarray.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

class VProfileStore;

/// A snapshot, built and used within one operation: the constructor reads everything, only SaveToStore writes.
///
/// The ordered arrays hold exactly the names found in the store: what the user arranged keeps its place, new names
/// follow at the end in ordinal order, names that are gone vanish.
class ProfileFolderData : public VProfileComposite<ProfileFolderData> {
  public:
    /// `path` is a session path. `readOnly` opens the store for reading only; who goes on to change the folder passes
    /// false. A folder that does not exist has no children.
    ProfileFolderData(const VUnicodeString& path, bool readOnly);

    static std::span<const MemberAccess<ProfileFolderData>> Members();

    /// Subfolder names in the store's order.
    const VStringArray& GetFolders() const { return folders; }
    /// Session names in the store's order, or sorted where sessions are arranged logically.
    const VStringArray& GetSessions() const { return sessions; }
    /// Names that the global settings hide, in the store's order. They are in no other array and in no list.
    const VStringArray& GetHiddenFolders() const { return hiddenFolders; }
    const VStringArray& GetHiddenSessions() const { return hiddenSessions; }
    /// The names in the user's order; editing them is how an arrangement changes.
    VStringArray& GetOrderedFolders() { return orderedFolders; }
    VStringArray& GetOrderedSessions() { return orderedSessions; }
    /// The names as they are shown: the user's order where that arrangement holds, else the other.
    const VStringArray& GetShownFolders() const;
    const VStringArray& GetShownSessions() const;

    /// No children at all, hidden ones neither.
    bool IsEmpty() const;

    bool GetIsExpanded() const { return isExpanded.Get(); }

    /// Rebuilds the two lists from the ordered arrays and writes the members that need it. False when the store
    /// refused.
    bool SaveToStore();

  private:
    void Enumerate(VProfileStore& store, bool hideDotEntries);
    void LoadMembers(VProfileStore& store);

    VProfileText folderList;
    VProfileText sessionList;
    VStringArray folders;
    VStringArray sessions;
    VStringArray hiddenFolders;
    VStringArray hiddenSessions;
    VStringArray orderedFolders;
    VStringArray orderedSessions;
    VUnicodeString dataKeyPath;
    VProfile<bool> isExpanded;
};

/// What a tree shows of a folder that is closed.
struct FolderOutline {
    VStringArray folders;     ///< subfolder names as they are shown
    bool hasEntries = false;  ///< anything at all that a user made in it, hidden entries too
    bool isExpanded = false;  ///< as stored
};

/// The outline of the folder at a session path, in the time that its subfolders take: sessions are not read.
FolderOutline ReadFolderOutline(const VUnicodeString& path);

/// Whether the global settings say that the user's own arrangement holds.
bool IsManuallyArranged();

/// Inserts `name` into an ordered array unless it is there: next to `reference` (behind it when `after` is set) where
/// the user's arrangement holds and the reference is in the array, else at the end.
void InsertEntryName(VStringArray& ordered, const VUnicodeString& name, const VUnicodeString& reference, bool after);

}  // namespace connectdialog
