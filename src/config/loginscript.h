// The login script of a session as text, and its older stored form.
//
// The text is a run of items, each of a character `1` or `0` (the item's flag), the expect string and the send string,
// each of the three followed by the unit separator (code 31). It is sensitive: a script usually sends a password.
#pragma once

#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

struct ConvertedLoginScript {
    VUnicodeString text;
    bool sendInitialCarriageReturn = false;
};

/// Converts the older form: scrambled bytes, and behind them a letter that says how their strings are written (`u`:
/// UTF-16, `m` or `l`: not read, the script is empty; any other: narrow). The first byte holds the flags: bit 2 is the
/// initial carriage return, bits 7, 6, 5, 4, 3, 1, 0 are those of the first seven items. Pairs of strings follow, each
/// ended by a zero; one that is cut off by the end of the bytes counts. Items without flag and strings are left out.
ConvertedLoginScript ConvertLoginScript(std::u16string_view oldForm);

}  // namespace connectdialog
