// A user's button bar in the profile store.
#pragma once

#include "foundation/varray.h"
#include "foundation/vunknown.h"
#include "menutoolbar/buttonline.h"
#include "profile/vprofilemultilinestring.h"

namespace connectdialog {

/// One line a button (buttonline.h). It is stored and compared as its lines.
class ProfileUserButtonMap : public VUnknown<IUnknownBase>, private VProfileMultiLineString {
  public:
    ProfileUserButtonMap() = default;

    /// Reads the bar that `key` has under `valueName`. Lines without a function are left out, of the lines too, so that
    /// the next save drops them; a line with an unknown function stays.
    virtual void LoadButtons(VProfileKey* key, const VUnicodeString& valueName);

    using VProfileMultiLineString::GetName;
    using VProfileMultiLineString::IsChanged;
    using VProfileMultiLineString::Save;

    /// In the order of the lines.
    const VArray<UserButton>& GetButtons() const { return buttons; }
    const VStringArray& GetLines() const { return Get(); }
    /// Requires: each line is one of EncodeButtonLine, or was here.
    void SetLines(const VStringArray& lines);

  private:
    ~ProfileUserButtonMap() override = default;

    void DecodeLines();

    static constexpr std::uint64_t kFirstSize = 3;
    VArray<UserButton> buttons{kFirstSize};
};

}  // namespace connectdialog
