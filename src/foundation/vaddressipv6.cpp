#include "foundation/vaddressipv6.h"

#include <algorithm>

#include "foundation/byteorder.h"

namespace connectdialog {

namespace {

constexpr std::size_t kGroups = 8;

/// A run of groups that `::` stands for; of length 0 for none.
struct GroupRun {
    std::size_t start = 0;
    std::size_t length = 0;
    bool Holds(std::size_t group) const { return group - start < length; }
};

/// The longest run of two or more zero groups; of equally long ones the first.
GroupRun LongestZeroRun(std::span<const std::uint16_t, kGroups> groups) {
    GroupRun longest{0, 1};
    GroupRun run;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        run = groups[i] != 0 ? GroupRun{i + 1, 0} : GroupRun{run.start, run.length + 1};
        if (run.length > longest.length) longest = run;
    }
    return longest.length > 1 ? longest : GroupRun{};
}

}  // namespace

bool VAddressIPv6::IsLoopback() const {
    const std::span<const std::uint8_t> bytes = Address();
    return IsValid() && bytes.back() == 1 &&
           std::all_of(bytes.begin(), bytes.end() - 1, [](std::uint8_t byte) { return byte == 0; });
}

VUnicodeString VAddressIPv6::AddressText() const {
    std::uint16_t groups[kGroups];
    for (std::size_t i = 0; i < kGroups; ++i) groups[i] = LoadBigEndian<std::uint16_t>(Address().data() + 2 * i);
    const GroupRun zeros = LongestZeroRun(groups);
    VUnicodeString text;
    for (std::size_t i = 0; i < kGroups; ++i) {
        if (zeros.Holds(i)) {
            if (i == zeros.start) text += u"::";
            continue;
        }
        if (!text.IsEmpty() && text[text.GetLength() - 1] != u':') text += u':';
        VUnicodeString group;
        group.Format(u"%1!x!", groups[i]);
        text += group;
    }
    return text;
}

}  // namespace connectdialog
