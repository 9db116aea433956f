#include "foundation/formatargument.h"

#include "foundation/vnarrowstring.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

FormatArgument::FormatArgument(const VUnicodeString& text) : FormatArgument(text.View()) {}
FormatArgument::FormatArgument(const VNarrowString& text) : FormatArgument(text.View()) {}

}  // namespace connectdialog
