#include "foundation/vpath.h"

#include <cstring>

#include "foundation/vnarrowstring.h"
#include "platform/knownfolders.h"
#include "platform/modules.h"

namespace connectdialog {

namespace {
constexpr std::u16string_view kSeparators = u"\\/";
}  // namespace

VUnicodeString VJoinPath(const char16_t* first, const char16_t* second) {
    std::u16string_view head = first != nullptr ? first : u"";
    const std::u16string_view tail = second != nullptr ? second : u"";
    if (head.ends_with(u'\\') && tail.starts_with(u'\\')) head.remove_suffix(1);
    VUnicodeString joined(head);
    if (!head.ends_with(u'\\') && !tail.starts_with(u'\\')) joined += u'\\';
    joined += tail;
    return joined;
}

VUnicodeString VSplitPath(const VUnicodeString& path, VUnicodeString& leaf) {
    std::u16string_view rest = path.View();
    char letter = 0;
    if (VIsDriveRoot(VNarrowString(path).GetData(), letter) ||
        (rest.size() == 1 && kSeparators.find(rest[0]) != std::u16string_view::npos)) {
        leaf.Empty();
        return {};
    }
    while (rest.size() > 1 && kSeparators.find(rest.back()) != std::u16string_view::npos) rest.remove_suffix(1);
    const std::size_t separator = rest.find_last_of(kSeparators);
    if (separator == std::u16string_view::npos) {
        leaf = VUnicodeString(rest);
        return {};
    }
    const VUnicodeString folder(rest.substr(0, separator == 0 ? 1 : separator));
    leaf = VUnicodeString(rest.substr(separator + 1));
    return folder;
}

bool VIsDriveRoot(const char* path, char& letter) {
    letter = 0;
    if (path == nullptr) return false;
    const std::size_t length = std::strlen(path);
    const char* colon = std::strchr(path, ':');
    if (colon != path + 1 || (length != 2 && (length != 3 || path[2] != '\\'))) return false;
    letter = path[0];
    return true;
}

VUnicodeString VGetModulePath() { return VUnicodeString(platform::GetExecutablePath()); }

VUnicodeString VGetModuleFolder() {
    VUnicodeString leaf;
    return VSplitPath(VGetModulePath(), leaf);
}

bool VGetDocumentsFolder(VUnicodeString& path) {
    const VUnicodeString folder(platform::GetKnownFolder(platform::KnownFolder::kDocuments));
    if (folder.IsEmpty()) return false;
    path = folder;
    return true;
}

}  // namespace connectdialog
