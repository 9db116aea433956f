// Copies of sessions and of whole folders, key by key.
#pragma once

#include "foundation/vunicodestring.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

/// One copy: sessions and folders on their way to another place of the tree, within a unit of work of the caller's.
///
/// The copy of a session has all values of its key, those too that no setting knows or that belong to a protocol which
/// is not selected, and is corrected as loading corrects it. A session that stands at the destination is replaced, and
/// a folder there is filled up; a session never takes the place of a folder, nor a folder that of a session. A folder's
/// children arrive in the order in which they are shown, each at the end of the destination's lists.
class TreeCopy {
  public:
    TreeCopy() = default;

    /// Copies the session's key alone and leaves the lists as they are. False when the store refused or a folder stands
    /// at the destination.
    bool CopySession(const VUnicodeString& source, const VUnicodeString& destination);

    /// Copies a folder's expansion and its content, entries that the global settings hide among it, into the folder
    /// `destination`, which is made when it is missing. Leaves out the child folder named exactly `skippedName`, and
    /// `destination` itself where it lies in the source: so a folder that is copied into itself comes to an end.
    /// Linear in what is copied; recursion goes as deep as the tree. False as above.
    bool CopyFolder(const VUnicodeString& source, const VUnicodeString& destination, const VUnicodeString& skippedName);

    /// To be asked at the end: ends the copy's part in the unit. False when the store refused.
    [[nodiscard]] bool Close() { return store.Close(); }

  private:
    bool CopyKey(VProfileKey& from, const VUnicodeString& source, VProfileKey& to, const VUnicodeString& destination);
    bool CopyBelow(const VUnicodeString& source, const VUnicodeString& destination, const VUnicodeString& skippedName);

    VProfileStore store{false};
    VUnicodeString top;  ///< where the copy of a whole folder begins
};

}  // namespace connectdialog
