// A named key of a menu and toolbar description.
#pragma once

#include <array>
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
    /// The label as a menu shows it: a tab behind it, the modifiers in the order in which they were written, and the
    /// key ("Copy\tCtrl+Shift+C").
    VUnicodeString ShowBehind(std::u16string_view label) const;

  private:
    void AddModifier(std::u16string_view word);

    char16_t key = 0;
    VUnicodeString modifiers;
    std::uint8_t flags = VMenuAccelerator::kNoInvert;
    /// The names of those that show, then empty ones. Read once: the line may be long, and many items may have the key.
    std::array<std::u16string_view, 3> shown{};
};

}  // namespace connectdialog
