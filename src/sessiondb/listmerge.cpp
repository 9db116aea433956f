#include "sessiondb/listmerge.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace connectdialog {

namespace {

constexpr char16_t kListMark = u':';

/// Names that can each be taken once. Names asked for in their own order are found without a look-up; the table for all
/// others is made when it is first needed.
class NamePool {
  public:
    explicit NamePool(const VStringArray& names) : names(names.begin(), names.end()), taken(names.GetCount()) {}

    /// The name, or null when it is not there or not any more.
    const VUnicodeString* Take(std::u16string_view name) {
        const bool isNext = next < names.size() && names[next] == name;
        const std::size_t found = isNext ? next : LookUp(name);
        if (found == names.size() || taken[found]) return nullptr;
        taken[found] = true;
        next = found + 1;
        return &names[found];
    }
    /// What was not taken, in order.
    std::vector<const VUnicodeString*> GetRest() const {
        std::vector<const VUnicodeString*> rest;
        for (std::size_t i = 0; i < names.size(); ++i)
            if (!taken[i]) rest.push_back(&names[i]);
        return rest;
    }

  private:
    /// The index of the name, or the count of names.
    std::size_t LookUp(std::u16string_view name) {
        if (slots.empty()) MakeTable();
        std::size_t slot = SlotOf(name);
        while (slots[slot] != names.size() && names[slots[slot]] != name) slot = (slot + 1) % slots.size();
        return slots[slot];
    }
    void MakeTable() {
        slots.assign(std::bit_ceil(names.size() * 2 + 1), static_cast<std::uint32_t>(names.size()));
        for (std::size_t i = 0; i < names.size(); ++i) {
            std::size_t slot = SlotOf(names[i]);
            while (slots[slot] != names.size()) slot = (slot + 1) % slots.size();
            slots[slot] = static_cast<std::uint32_t>(i);
        }
    }
    std::size_t SlotOf(std::u16string_view name) const { return std::hash<std::u16string_view>()(name) % slots.size(); }

    std::span<const VUnicodeString> names;
    std::vector<bool> taken;
    std::size_t next = 0;              ///< behind the one that was taken last
    std::vector<std::uint32_t> slots;  ///< open addressing; the count of names marks a free slot
};

}  // namespace

bool MergeList(std::u16string_view list, const VStringArray& present, VStringArray& ordered) {
    NamePool left(present);
    ordered.Clear();
    bool differs = false;
    for (std::size_t mark = list.find(kListMark); mark != list.npos; mark = list.find(kListMark)) {
        const VUnicodeString* name = left.Take(list.substr(0, mark));
        list.remove_prefix(mark + 1);
        if (name != nullptr)
            ordered.Add(*name);
        else
            differs = true;
    }
    std::vector<const VUnicodeString*> rest = left.GetRest();
    const auto ordinal = [](const VUnicodeString* a, const VUnicodeString* b) { return *a < *b; };
    if (!std::is_sorted(rest.begin(), rest.end(), ordinal)) std::sort(rest.begin(), rest.end(), ordinal);
    for (const VUnicodeString* name : rest) ordered.Add(*name);
    return differs || !rest.empty();
}

bool CanBeListed(std::u16string_view name) {
    return name.find(kListMark) == std::u16string_view::npos;
}

VUnicodeString MakeList(const VStringArray& names) {
    std::size_t length = 0;
    for (const VUnicodeString& name : names) length += name.GetLength() + 1;
    VUnicodeString list;
    list.Resize(length);
    char16_t* end = &list.MutableAt(0);
    for (const VUnicodeString& name : names) {
        end = std::ranges::copy(name.View(), end).out;
        *end++ = kListMark;
    }
    return list;
}

}  // namespace connectdialog
