#include "profile/vprofile2.h"

#include "foundation/vreportmessageparams.h"

namespace connectdialog {

template class VProfile2<VUnicodeString, VProfileSz>;
template class VProfile2<VStringArray, VProfileMultiSz>;

}  // namespace connectdialog
