#include "suite/importers/openssh/sshconfigfile.h"

#include <algorithm>
#include <iterator>
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
            for (const std::string& name : *names) byName[name].push_back(number);
        }
    }
}

std::vector<std::uint32_t> SshConfigFile::BlocksFor(std::string_view host) const {
    const auto named = byName.find(host);
    if (named == byName.end()) return forAny;
    std::vector<std::uint32_t> numbers;
    numbers.reserve(forAny.size() + named->second.size());
    std::ranges::merge(forAny, named->second, std::back_inserter(numbers));
    return numbers;
}

}  // namespace connectdialog
