#include "sessiondb/sessionpaths.h"

#include "foundation/vpath.h"

namespace connectdialog {

VUnicodeString BuildSessionKeyPath(const VUnicodeString& path) {
    return path.IsEmpty() ? VUnicodeString(kSessionsKey) : VJoinPath(kSessionsKey, path.GetData());
}

VUnicodeString BuildFolderDataKeyPath(const VUnicodeString& path) {
    return VJoinPath(BuildSessionKeyPath(path).GetData(), kFolderDataKey);
}

VUnicodeString GetEntryLeaf(const VUnicodeString& path) {
    const std::size_t separator = path.ReverseFind(u'\\');
    return separator == VUnicodeString::kNotFound ? path : path.Mid(separator + 1);
}

VUnicodeString GetEntryParent(const VUnicodeString& path) {
    const std::size_t separator = path.ReverseFind(u'\\');
    return separator == VUnicodeString::kNotFound ? VUnicodeString() : path.Left(separator);
}

VUnicodeString JoinEntryPath(const VUnicodeString& parent, const VUnicodeString& leaf) {
    return parent.IsEmpty() ? leaf : VJoinPath(parent.GetData(), leaf.GetData());
}

}  // namespace connectdialog
