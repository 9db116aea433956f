#include "suite/importers/openssh/sshconfigfile.h"

#include <algorithm>
#include <cstddef>
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
    std::vector<std::uint32_t> numbers = forAny;
    const auto isBelow = [](const auto& block, std::string_view name) { return block.first < name; };
    auto block = std::lower_bound(byName.begin(), byName.end(), host, isBelow);
    for (; block != byName.end() && block->first == host; ++block) numbers.push_back(block->second);
    std::inplace_merge(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(forAny.size()), numbers.end());
    return numbers;
}

}  // namespace connectdialog
