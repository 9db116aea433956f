#include "sessiondb/sessionpaths.h"

#include "foundation/casefold.h"
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

bool IsSameOrInside(const VUnicodeString& path, const VUnicodeString& folder) {
    const std::size_t length = folder.GetLength();
    const bool isWhole = length == 0 || path.GetLength() <= length || path[length] == u'\\';
    return isWhole && path.Left(length).EqualsNoCase(folder);
}

VUnicodeString JoinEntryPath(const VUnicodeString& parent, const VUnicodeString& leaf) {
    return parent.IsEmpty() ? leaf : VJoinPath(parent.GetData(), leaf.GetData());
}

bool IsTemplateEntry(std::u16string_view folder, std::u16string_view name) {
    return folder.empty() && EqualsNoCase(name, kDefaultSession);
}

}  // namespace connectdialog
