// What a terminal may emulate.
#pragma once

#include <string_view>

namespace connectdialog {

/// Names are compared exactly; the first is what takes the place of one that is not known.
struct Emulation {
    std::u16string_view name;
    bool hasAnsiColor;  ///< the default of "ANSI Color"
    bool needsKelda;    ///< known only where the installation has it
};
inline constexpr Emulation kEmulations[] = {
    {u"VT100", false, false}, {u"VT102", false, false},  {u"VT220", false, false},  {u"ANSI", true, false},
    {u"Linux", true, false},  {u"SCOANSI", true, false}, {u"WYSE50", false, false}, {u"WYSE60", false, false},
    {u"Xterm", false, false}, {u"Dumb", false, false},   {u"Kelda", true, true},
};

}  // namespace connectdialog
