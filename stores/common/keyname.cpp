#include "stores/common/keyname.h"

#include <algorithm>

#include "foundation/casefold.h"

namespace connectdialog::stores {

bool IsValueName(const char16_t* name) {
    return std::u16string_view(name).size() <= kMaxNameLength;
}

std::u16string_view TakeLevel(std::u16string_view& rest) {
    const std::size_t end = std::min(rest.find(u'\\'), rest.size());
    const std::u16string_view level = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return level;
}

bool KeyName::Parse(std::u16string_view name, std::size_t depth) {
    if (name.empty() || name.back() == u'\\') return false;
    std::size_t count = 0;
    for (std::u16string_view rest = name; !rest.empty(); ++count) {
        const std::u16string_view level = TakeLevel(rest);
        if (level.empty() || level.size() > kMaxNameLength || depth + count >= kMaxKeyDepth) return false;
    }
    spelled = name;
    folded = FoldText(name);
    levels = count;
    return true;
}

}  // namespace connectdialog::stores
