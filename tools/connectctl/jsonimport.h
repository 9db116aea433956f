// Sessions and folders from JSON (see entryjson.h).
#pragma once

#include <cstddef>
#include <iosfwd>

#include "tools/connectctl/command.h"

namespace connectdialog {
class VUnicodeString;
}

namespace connectdialog::connectctl {

struct JsonImportCounts {
    std::size_t folders = 0;
    std::size_t sessions = 0;
};

/// Makes the entries of the text below the folder at `into`, which is there. What the text holds is not trusted; it is
/// read in pieces of one entry. Nothing that stands in the store is replaced.
/// Fails with the place for a text that is not of the form, and for an entry whose name is taken. What was written
/// until then is the caller's to abandon: it runs this within a unit of work.
Failure ImportEntries(std::istream& text, const VUnicodeString& into, JsonImportCounts& counts);

}  // namespace connectdialog::connectctl
