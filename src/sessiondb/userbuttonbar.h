// A button bar of the user's as it is edited: in a dialog, or by a command.
#pragma once

#include <cstddef>

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "menutoolbar/profileuserbuttonmap.h"

namespace connectdialog {

/// Keeps the lines of buttons that it does not touch as they are. Nothing is stored before Save.
class UserButtonBar {
  public:
    /// Reads the bar of that name afresh; one that is not there is empty. On failure: false, when it cannot be read.
    bool Load(const VUnicodeString& barName);
    /// Whether it is one of the store's, or the one that every user has.
    bool IsThere() const { return isThere; }

    const VUnicodeString& GetName() const { return name; }
    const VArray<UserButton>& GetButtons() const { return map->GetButtons(); }
    std::size_t GetCount() const { return static_cast<std::size_t>(GetButtons().GetCount()); }
    bool IsChanged() const { return map->IsChanged(); }
    /// Whether the store holds other lines now than were loaded or saved here. Together with Save in a unit of work it
    /// keeps what others wrote meanwhile.
    bool IsOutdated() const;

    // Each is false, and changes nothing, for a place that is not there and for a button with a fault.

    /// `place` may be that behind the last.
    bool Insert(std::size_t place, const UserButton& button);
    bool Set(std::size_t place, const UserButton& button);
    bool Remove(std::size_t place);
    /// The buttons between move up.
    bool Move(std::size_t from, std::size_t to);

    /// On failure: false, and the store holds what it held.
    bool Save();

  private:
    VRef<ProfileUserButtonMap> map = VRef<ProfileUserButtonMap>::Adopt(new ProfileUserButtonMap);
    VUnicodeString name;
    VStringArray stored;  ///< the lines that the store is known to have had
    bool isThere = false;
};

}  // namespace connectdialog
