#include "suite/importers/openssh/sshconfigfile.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <utility>

namespace connectdialog {

SshBlock& SshConfigFile::AddBlock(SshCondition condition) {
    blocks.push_back({std::move(condition), {}});
    return blocks.back();
}

void SshConfigFile::Seal() {
    for (std::uint32_t number = 0; number < blocks.size(); ++number) {
        const SshBlock& block = blocks[number];
        if (block.steps.empty() || block.condition.IsNever()) continue;
        const auto* const names = block.condition.OnlyHosts();
        if (names == nullptr) {
            forAny.push_back(number);
        } else {
            for (const std::string& name : *names) byName.emplace_back(name, number);
        }
    }
    std::ranges::sort(byName);
}

std::vector<std::uint32_t> SshConfigFile::BlocksFor(std::string_view host) const {
    using Named = std::pair<std::string_view, std::uint32_t>;
    const auto named = std::ranges::equal_range(byName, host, {}, &Named::first);
    std::vector<std::uint32_t> numbers;
    numbers.reserve(forAny.size() + named.size());
    std::ranges::merge(forAny, named | std::views::values, std::back_inserter(numbers));
    return numbers;
}

}  // namespace connectdialog
