#include "sessiondb/storedspelling.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

namespace {

bool FindChild(VProfileKey& folder, std::u16string_view child, VUnicodeString& name) {
    VProfileKeyIterator children(folder, false);
    while (children.Next(name))
        if (name.EqualsNoCase(VUnicodeString(child))) return true;
    return false;
}

}  // namespace

VUnicodeString SpelledAsStored(const VUnicodeString& path) {
    std::u16string spelled(path.View());
    VProfileStore store(true);
    VUnicodeString name;
    for (std::size_t start = 0; start < spelled.size();) {
        const std::size_t end = std::min(spelled.find(u'\\', start), spelled.size());
        const VUnicodeString parent(std::u16string_view(spelled).substr(0, start > 0 ? start - 1 : 0));
        VProfileKey folder(store.GetRootKey(), BuildSessionKeyPath(parent).GetData(), 0);
        if (!FindChild(folder, std::u16string_view(spelled).substr(start, end - start), name)) break;
        spelled.replace(start, end - start, name.View());
        start += name.GetLength() + 1;
    }
    return VUnicodeString(spelled);
}

}  // namespace connectdialog
