#include "foundation/vpath.h"

#include <cstring>

#include "foundation/vnarrowstring.h"
#include "platform/knownfolders.h"
#include "platform/modules.h"

namespace connectdialog {

namespace {
constexpr std::u16string_view kSeparators = u"\\/";

/// A function's static, so that it is there before and after the other statics of the process.
VUnicodeString& DotPathBase() {
    static VUnicodeString base;
    return base;
}

/// Whether the path is these dots, or they and a separator begin it.
bool BeginsWithDots(std::u16string_view path, std::u16string_view dots) {
    if (!path.starts_with(dots)) return false;
    path.remove_prefix(dots.size());
    return path.empty() || kSeparators.find(path[0]) != std::u16string_view::npos;
}
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
    VUnicodeString folder(rest.substr(0, separator == 0 ? 1 : separator));
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

void VSetDotPathBase(const VUnicodeString& folder) {
    DotPathBase() = folder;
}

VUnicodeString VResolveDotPath(const VUnicodeString& path) {
    const std::u16string_view base = DotPathBase().View();
    const std::u16string_view text = path.View();
    if (base.empty()) return path;
    if (BeginsWithDots(text, u".")) return VUnicodeString(base) + VUnicodeString(text.substr(1));
    if (!BeginsWithDots(text, u"..")) return path;
    std::size_t separator = base.rfind(u'/');
    if (separator == base.npos) separator = base.rfind(u'\\');
    if (separator == base.npos) return path;
    return VUnicodeString(base.substr(0, separator)) + VUnicodeString(text.substr(2));
}

VUnicodeString VGetModulePath() {
    return VUnicodeString(platform::GetExecutablePath());
}

VUnicodeString VGetModuleFolder() {
    VUnicodeString leaf;
    return VSplitPath(VGetModulePath(), leaf);
}

VUnicodeString VGetConfigurationPath(const char16_t* name) {
    const std::u16string folder = platform::GetKnownFolder(platform::KnownFolder::kConfiguration);
    return folder.empty() ? VUnicodeString() : VJoinPath(folder.c_str(), name);
}

bool VGetDocumentsFolder(VUnicodeString& path) {
    const VUnicodeString folder(platform::GetKnownFolder(platform::KnownFolder::kDocuments));
    if (folder.IsEmpty()) return false;
    path = folder;
    return true;
}

}  // namespace connectdialog
