// Settings of several fields as one line: the fields in the order of the record, with commas between them.
#pragma once

#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VProfileData;

/// A font (its face as the last, whatever it holds), a window's place, the margins of a page. False for any other
/// setting, and `text` stays.
bool ReadRecordText(const VProfileData& setting, VUnicodeString& text);
/// On failure: false for any other setting and for a text that is no such record, and the value stays.
bool WriteRecordText(VProfileData& setting, std::u16string_view text);

}  // namespace connectdialog
