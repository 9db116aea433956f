// A named key of a menu and toolbar description.
#pragma once

#include <string>
#include <string_view>

#include "menutoolbar/vmenutoolbaritem.h"

namespace connectdialog {

class AcceleratorRep {
  public:
    /// The first character of `key` is the key; with none it is 0. `modifiers` is a list of VIRTKEY, CTRL, ALT and
    /// SHIFT with "|" between them, in any case; other words do not count, nor does one that comes again.
    AcceleratorRep(std::u16string_view key, std::u16string_view modifiers);

    char16_t GetKey() const { return key; }
    /// As it was written.
    const VUnicodeString& GetModifiers() const { return modifiers; }
    /// Values of VMenuAccelerator::Flag.
    std::uint8_t GetFlags() const { return flags; }
    /// What a menu shows: the modifiers in the order in which they were written, and the key ("Ctrl+Shift+X").
    const VUnicodeString& GetShownText() const { return shownText; }

  private:
    VUnicodeString ReadModifiers(std::u16string_view rest);

    char16_t key = 0;
    VUnicodeString modifiers;
    std::uint8_t flags = VMenuAccelerator::kNoInvert;
    VUnicodeString shownText;
};

}  // namespace connectdialog
