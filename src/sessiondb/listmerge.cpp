#include "sessiondb/listmerge.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace connectdialog {

namespace {
constexpr char16_t kListMark = u':';
}  // namespace

bool MergeList(std::u16string_view list, const VStringArray& present, VStringArray& ordered) {
    std::unordered_map<std::u16string_view, const VUnicodeString*> left;
    left.reserve(present.GetCount());
    for (const VUnicodeString& name : present) left.emplace(name.View(), &name);

    ordered.Clear();
    bool differs = false;
    for (std::size_t mark = list.find(kListMark); mark != list.npos; mark = list.find(kListMark)) {
        const auto found = left.find(list.substr(0, mark));
        list.remove_prefix(mark + 1);
        if (found == left.end()) {
            differs = true;
            continue;
        }
        ordered.Add(*found->second);
        left.erase(found);
    }
    if (left.empty()) return differs;

    std::vector<const VUnicodeString*> rest;
    rest.reserve(left.size());
    for (const VUnicodeString& name : present)
        if (left.contains(name.View())) rest.push_back(&name);
    const auto ordinal = [](const VUnicodeString* a, const VUnicodeString* b) { return *a < *b; };
    if (!std::is_sorted(rest.begin(), rest.end(), ordinal)) std::sort(rest.begin(), rest.end(), ordinal);
    for (const VUnicodeString* name : rest) ordered.Add(*name);
    return true;
}

VUnicodeString MakeList(const VStringArray& names) {
    std::u16string list;
    for (const VUnicodeString& name : names) (list += name.View()) += kListMark;
    return VUnicodeString(list);
}

}  // namespace connectdialog
