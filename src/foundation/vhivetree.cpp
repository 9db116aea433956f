#include "foundation/vhivetree.h"

#include <algorithm>

#include "foundation/textchecks.h"
#include "foundation/vhivelines.h"

namespace connectdialog {

namespace {

std::size_t CountKeys(const VHiveKey& key) {
    std::size_t count = 1;
    for (const auto& [name, child] : key.children) count += CountKeys(*child);
    return count;
}

/// How many names of the path lead to keys that exist already; `path` keeps the others.
std::size_t SkipExisting(const VHiveKey*& key, std::u16string_view& path) {
    std::size_t depth = 0;
    while (!path.empty()) {
        std::u16string_view rest = path;
        const auto child = key->children.find(TakeFirstName(rest));
        if (child == key->children.end()) break;
        key = child->second.get();
        path = rest;
        ++depth;
    }
    return depth;
}

/// The number of names in the path, or 0 when one of them cannot be a key's.
std::size_t CountFitNames(std::u16string_view path) {
    const bool endsWhereItShould = FindKeyEnd(std::u16string(path) + u']') == path.size();
    if (path.ends_with(u'\\') || !endsWhereItShould) return 0;
    std::size_t count = 0;
    while (!path.empty()) {
        const std::u16string_view name = TakeFirstName(path);
        if (name.empty() || name.size() > VHiveTree::kMaxKeyName || !IsFitForHive(name)) return 0;
        ++count;
    }
    return count;
}

}  // namespace

const VHiveKey* VHiveTree::Find(std::u16string_view path) const {
    const VHiveKey* key = &top;
    const bool isFit = !path.ends_with(u'\\');
    SkipExisting(key, path);
    return path.empty() && isFit ? key : nullptr;
}

VHiveKey* VHiveTree::Create(std::u16string_view path) {
    const VHiveKey* existing = &top;
    const bool isFit = !path.ends_with(u'\\');
    const std::size_t depth = SkipExisting(existing, path);
    auto* key = const_cast<VHiveKey*>(existing);
    if (path.empty()) return isFit ? key : nullptr;
    const std::size_t missing = CountFitNames(path);
    if (missing == 0 || depth + missing > kMaxDepth || keyCount + missing > kMaxKeys) return nullptr;
    while (!path.empty()) {
        std::unique_ptr<VHiveKey>& child = key->children[std::u16string(TakeFirstName(path))];
        child = std::make_unique<VHiveKey>();
        key = child.get();
    }
    keyCount += missing;
    return key;
}

bool VHiveTree::Remove(std::u16string_view path) {
    const std::size_t separator = path.rfind(u'\\');
    const bool hasParent = separator != path.npos;
    VHiveKey* parent = Find(hasParent ? path.substr(0, separator) : std::u16string_view());
    if (parent == nullptr) return false;
    const auto child = parent->children.find(hasParent ? path.substr(separator + 1) : path);
    if (child == parent->children.end()) return false;
    keyCount -= CountKeys(*child->second);
    parent->children.erase(child);
    return true;
}

bool IsFitForHive(std::u16string_view text) {
    return !HasHalfCharacter(text) && std::ranges::none_of(text, [](char16_t character) { return character < 0x20; });
}

std::u16string_view TakeFirstName(std::u16string_view& path) {
    const std::size_t separator = path.find(u'\\');
    const std::u16string_view name = path.substr(0, separator);
    path.remove_prefix(std::min(path.size(), separator == path.npos ? separator : separator + 1));
    return name;
}

}  // namespace connectdialog
