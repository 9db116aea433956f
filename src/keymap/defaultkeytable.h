// The accelerators that the hosts have without any keymap.
#pragma once

#include <cstdint>
#include <iterator>

#include "keymap/keyfunctiontable.h"
#include "keymap/keyvalue.h"

namespace connectdialog {

struct DefaultKeyRow {
    std::uint32_t group;     ///< 0 for the functions of keymaps
    std::uint32_t function;  ///< in group 0 a number of keyfunctiontable.h
    std::uint32_t key;
};

/// The last row is all zero and counts like any other.
inline constexpr DefaultKeyRow kDefaultKeys[] = {
    {0, KeyFunctionNumber(u"MENU_CONNECT"), kKeyAlt | u'C'},
    {0, KeyFunctionNumber(u"MENU_CONNECT"), kKeyAlt | u'N'},
    {0, KeyFunctionNumber(u"MENU_RECONNECT"), 0x0D},
    {0, KeyFunctionNumber(u"MENU_GOTO_CHAT_SESSION_WINDOW"), kKeyAlt | u'G'},
    {0, KeyFunctionNumber(u"MENU_GOTO_CONNECT_BAR"), kKeyAlt | u'R'},
    {0, KeyFunctionNumber(u"MENU_QUICK_CONNECT"), kKeyAlt | u'Q'},
    {0, KeyFunctionNumber(u"MENU_TOGGLE_MENU_BAR"), kKeyAlt | u'M'},
    {0, KeyFunctionNumber(u"MENU_TAB_NEW_SFTP"), kKeyAlt | u'P'},
    {0, KeyFunctionNumber(u"MENU_TAB_NEXT"), kKeyControl | 0x09},
    {0, KeyFunctionNumber(u"MENU_TAB_PREV"), kKeyControl | kKeyShift | 0x09},
    {0, KeyFunctionNumber(u"MENU_TAB_CLOSE"), kKeyControl | 0x73},
    {0, KeyFunctionNumber(u"MENU_TAB_1"), kKeyAlt | u'1'},
    {0, KeyFunctionNumber(u"MENU_TAB_2"), kKeyAlt | u'2'},
    {0, KeyFunctionNumber(u"MENU_TAB_3"), kKeyAlt | u'3'},
    {0, KeyFunctionNumber(u"MENU_TAB_4"), kKeyAlt | u'4'},
    {0, KeyFunctionNumber(u"MENU_TAB_5"), kKeyAlt | u'5'},
    {0, KeyFunctionNumber(u"MENU_TAB_6"), kKeyAlt | u'6'},
    {0, KeyFunctionNumber(u"MENU_TAB_7"), kKeyAlt | u'7'},
    {0, KeyFunctionNumber(u"MENU_TAB_8"), kKeyAlt | u'8'},
    {0, KeyFunctionNumber(u"MENU_TAB_9"), kKeyAlt | u'9'},
    {0, KeyFunctionNumber(u"MENU_TAB_10"), kKeyAlt | u'0'},
    {0, KeyFunctionNumber(u"MENU_TOGGLE_FULL_SCREEN"), kKeyAlt | 0x0D},
    {0, KeyFunctionNumber(u"MENU_TAB_NEW"), kKeyAlt | u'B'},
    // Another numbering, which is the hosts' own.
    {1, 1, kKeyAlt | u'Q'},
    {1, 2, kKeyAlt | u'N'},
    {1, 3, kKeyAlt | 0x0D},
    {1, 4, kKeyAlt | u'F'},
    {1, 5, kKeyAlt | u'E'},
    {1, 6, kKeyAlt | u'B'},
    {1, 7, kKeyControl | u'F'},
    {1, 8, 0x72},
    {1, 9, kKeyAlt | u'M'},
    {1, 10, kKeyAlt | u'A'},
    {1, 11, kKeyAlt | u'T'},
    {1, 12, kKeyAlt | u'X'},
    {0, KeyFunctionNumber(u"NONE"), 0},
};
static_assert(std::size(kDefaultKeys) == 36);

}  // namespace connectdialog
