#include "foundation/vcapirandomsource.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "platform/lasterror.h"

namespace connectdialog {
namespace {

bool Refuse(void* /*buffer*/, std::size_t /*count*/) {
    return platform::FailWith(platform::kAccessDenied);
}

TEST(RandomSource, FillsEveryByte) {
    VCapiRandomSource source;
    std::array<std::uint8_t, 4096> all{};
    // One fill leaves a given byte zero once in 256 times, sixteen of them do once in 2^128 times.
    for (int i = 0; i < 16; ++i) {
        std::array<std::uint8_t, 4096> block{};
        ASSERT_TRUE(source.Fill(block.data(), block.size()));
        for (std::size_t at = 0; at < all.size(); ++at) all[at] |= block[at];
    }
    EXPECT_EQ(std::count(all.begin(), all.end(), 0), 0);
}

TEST(RandomSource, FailsAndLeavesTheBufferWhenItCouldNotBeAcquired) {
    VCapiRandomSource source(Refuse);
    EXPECT_EQ(source.GetStatus(), platform::kAccessDenied);
    std::array<std::uint8_t, 4> buffer{1, 2, 3, 4};
    EXPECT_FALSE(source.Fill(buffer.data(), buffer.size()));
    EXPECT_EQ(buffer, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));
}

}  // namespace
}  // namespace connectdialog
