// Many new entries of one folder at once.
#pragma once

#include <string_view>
#include <unordered_set>

#include "sessiondb/profilefolderdata.h"

namespace connectdialog {

/// Brings a folder's lists to where they would be if each entry had been added on its own, at the end, with two looks
/// at the folder however many they are. Made before the first entry's key, told of each entry, finished behind the
/// last. Requires: runs within one unit of work.
class FolderAdditions {
  public:
    /// `path` is a session path.
    explicit FolderAdditions(const VUnicodeString& path);

    /// Whether the folder had nothing in it when this was made.
    bool WasEmpty() const { return wasEmpty; }

    /// The caller has made the key of that name, or found it there: an entry that was listed keeps its place.
    void AddFolder(const VUnicodeString& name) { Add(name, folder.GetOrderedFolders(), listedFolders); }
    void AddSession(const VUnicodeString& name) { Add(name, folder.GetOrderedSessions(), listedSessions); }

    /// Writes the lists, unless nothing was added. False when the store refused.
    bool Finish();

  private:
    using Names = std::unordered_set<std::u16string_view>;  // their characters belong to the folder's arrays

    void Add(const VUnicodeString& name, VStringArray& ordered, Names& listed);

    VUnicodeString path;
    ProfileFolderData folder;
    Names listedFolders;
    Names listedSessions;
    bool wasEmpty;
    bool isChanged = false;
};

}  // namespace connectdialog
