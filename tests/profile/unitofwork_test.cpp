// Writes that belong together: all of them stay, or none.
#include "profile/unitofwork.h"

#include <stdexcept>

#include "support/fakesuite.h"
#include "support/storetools.h"

namespace connectdialog::test {
namespace {

class UnitOfWork : public LibraryTest {
  protected:
    std::uint32_t Stored(const char16_t* name) { return ReadDwordOr(*GetProfileFactory(), u"Key", name, 0); }
};

TEST_F(UnitOfWork, OneRefusedWriteTakesTheOthersToTheKeyBack) {
    ASSERT_TRUE(WriteToKey(u"Key", [](VProfileKey& key) { key.WriteDword(u"Kept", 1); }));
    EXPECT_FALSE(WriteToKey(u"Key", [](VProfileKey& key) {
        key.WriteDword(u"Kept", 2);
        key.WriteDword(std::u16string(70000, u'x').c_str(), 2);
        key.WriteDword(u"Later", 2);
    }));
    EXPECT_EQ(Stored(u"Kept"), 1U);
    EXPECT_EQ(Stored(u"Later"), 0U);
}

TEST_F(UnitOfWork, StepsThatThrowOrGiveUpLeaveNothing) {
    const auto write = [] { return WriteToKey(u"Key", [](VProfileKey& key) { key.WriteDword(u"V", 1); }); };
    EXPECT_FALSE(AsOneUnit([&] { return write() && false; }));
    EXPECT_EQ(Stored(u"V"), 0U);
    EXPECT_THROW(AsOneUnit([&]() -> bool { throw std::runtime_error(write() ? "written" : ""); }), std::runtime_error);
    EXPECT_EQ(Stored(u"V"), 0U);
    EXPECT_TRUE(AsOneUnit(write));
    EXPECT_EQ(Stored(u"V"), 1U);
}

}  // namespace
}  // namespace connectdialog::test
