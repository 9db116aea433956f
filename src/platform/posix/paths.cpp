#include "platform/paths.h"

#include <algorithm>

#include "platform/codepage.h"

namespace connectdialog::platform {

std::string ToNativePath(std::u16string_view path) {
    if (path.find(u'\0') != path.npos) return {};
    std::string nativePath = ToNarrow(path);
    std::replace(nativePath.begin(), nativePath.end(), '\\', '/');
    return nativePath;
}

std::u16string FromNativePath(std::string_view nativePath) {
    std::u16string path = ToWide(nativePath);
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

}  // namespace connectdialog::platform
