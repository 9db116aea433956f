// The operations on the tree step by step, each step with a look at the folder of its own: slow and plain, as the model
// that the real ones are compared with.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog::test::stepwise {

bool DeleteEntry(const VUnicodeString& path);
VUnicodeString CopyEntry(const VUnicodeString& source, const VUnicodeString& targetFolder, bool makeUnique,
                         const VUnicodeString& reference, bool after);
VUnicodeString ArrangeEntry(const VUnicodeString& path, const VUnicodeString& reference, bool after);
bool RenameEntry(const VUnicodeString& path, const VUnicodeString& newLeaf, const VUnicodeString& reference);

}  // namespace connectdialog::test::stepwise
