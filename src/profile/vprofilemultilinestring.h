// A block of text kept as a list of lines.
#pragma once

#include "profile/vprofile2.h"

namespace connectdialog {

/// One array element is one line, without its line break.
class VProfileMultiLineString : public VProfileTextList {
  public:
    /// Splits at line feeds; a carriage return that ends a line is dropped. The empty text is no line.
    void SetText(const VUnicodeString& text);
    /// Joins the lines with line feeds, each with a carriage return before it when `carriageReturns` is set. Nothing
    /// follows the last line.
    void GetText(VUnicodeString& text, bool carriageReturns) const;
    /// Empties the lines, sets the name and loads, with no lines as the default.
    virtual bool LoadNamed(VProfileKey* key, const VUnicodeString& name);
};

}  // namespace connectdialog
