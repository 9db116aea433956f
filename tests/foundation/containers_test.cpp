#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "foundation/byteorder.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vmap.h"
#include "foundation/vstringarray.h"
#include "support/freewatch.h"
#include "support/strings.h"

namespace connectdialog {
namespace {

using test::Strings;

TEST(Array, InsertsRemovesAndChecks) {
    VArray<std::string> array;
    array.Add("d");
    array.Insert(0, "a");
    const std::string run[] = {"b", "c"};
    array.InsertRun(1, run, 2);
    for (int i = 0; i < 9; ++i) array.Add(array[0]);
    array.RemoveAt(3);
    EXPECT_EQ(array[0] + array[1] + array[2] + array[3], "abca");
    using OutOfRange = VArray<std::string>::OutOfRange;
    EXPECT_THROW(array[12], OutOfRange);
    EXPECT_THROW(array.RemoveAt(12), OutOfRange);
    EXPECT_THROW(array.Insert(13, ""), OutOfRange);
}

TEST(StringArray, HasABinaryForm) {
    const VStringArray array = Strings({u"\u4E2Da", u""});
    VBasicBuffer buffer(0);
    ASSERT_TRUE(array.WriteTo(&buffer));
    const std::uint8_t expected[] = {0, 0, 0, 12, 0, 0, 0, 4, 0x2D, 0x4E, 'a', 0, 0, 0, 0, 0};
    EXPECT_EQ(std::string(buffer.GetData(), buffer.GetData() + buffer.GetDataLength()),
              std::string(std::begin(expected), std::end(expected)));
    VStringArray read = Strings({u"old"});
    ASSERT_TRUE(read.ReadFrom(&buffer));
    EXPECT_TRUE(read == array);
    VBasicBuffer empty(4);
    ASSERT_TRUE(VStringArray().WriteTo(&empty));
    EXPECT_TRUE(read.ReadFrom(&empty) && read.IsEmpty());
    EXPECT_FALSE(array.WriteTo(nullptr));
    EXPECT_FALSE(read.ReadFrom(nullptr));
}

TEST(StringArray, ADamagedBinaryFormIsRefusedAsAWhole) {
    VBasicBuffer buffer(0);
    ASSERT_TRUE(Strings({u"one", u"two"}).WriteTo(&buffer));
    VStringArray read;
    for (std::uint64_t length = 0; length < buffer.GetDataLength(); ++length) {
        VBasicBuffer cut(0);
        cut.Append(buffer.GetData(), length, 0);
        EXPECT_FALSE(read.ReadFrom(&cut)) << length;
        EXPECT_TRUE(read.IsEmpty());
    }
    for (const std::uint32_t badLength : {7u, 0xFFFFFFFFu, 0x7FFFFFFFu}) {
        StoreBigEndian(badLength, buffer.GetData() + 14);
        EXPECT_FALSE(read.ReadFrom(&buffer));
        EXPECT_TRUE(read.IsEmpty());
    }
    StoreBigEndian(5u, buffer.GetData() + 14);
    StoreBigEndian(19u, buffer.GetData());
    ASSERT_TRUE(read.ReadFrom(&buffer));
    EXPECT_TRUE(read == Strings({u"one", u"tw"}));
}

TEST(BasicBuffer, GrowsToExactlyWhatIsNeededOrStaysAsItIs) {
    VBasicBuffer buffer(4);
    ASSERT_NE(buffer.Append("abcd", 4, 100), nullptr);
    EXPECT_EQ(buffer.GetCapacity(), 4u);
    ASSERT_NE(buffer.Append("e", 1, 2), nullptr);
    ASSERT_NE(buffer.Append("", 0, 100), nullptr);
    EXPECT_EQ(buffer.GetCapacity(), 105u);
    ASSERT_NE(buffer.Append(buffer.GetData(), 5, 500), nullptr) << "bytes of its own";
    buffer.AppendString("xy");
    buffer.AppendString(nullptr);
    buffer.AppendWide(u"z", 1);
    EXPECT_THROW(buffer.SetDataLength(buffer.GetCapacity() + 1), std::overflow_error);
    EXPECT_EQ(buffer.Append("a", UINT64_MAX, 0), nullptr);
    EXPECT_EQ(buffer.Append("a", 0, UINT64_MAX), nullptr);
    EXPECT_EQ(std::string(buffer.GetData(), buffer.GetData() + buffer.GetDataLength()),
              std::string("abcdeabcdexyz\0", 14));
}

TEST(BasicBuffer, ASensitiveOneLeavesNothingBehind) {
    constexpr char16_t kSecret[] = u"correct horse battery staple";
    FreeWatch watch(kSecret);
    for (const bool sensitive : {true, false}) {
        auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(8));
        buffer->SetSensitive(sensitive);
        buffer->AppendWide(kSecret, std::size(kSecret));
        buffer->AppendString("more");
        buffer = nullptr;
        EXPECT_EQ(watch.GetResidues(), sensitive ? 0 : 2);
    }
}

TEST(Map, KeepsTheOrderOfItsBuckets) {
    VMap<std::uint32_t, int> map;
    EXPECT_FALSE(map.Remove(1));
    for (std::uint32_t key = 0; key < 26; ++key) map[key] = static_cast<int>(key) * 10;
    std::string order;
    for (const auto& entry : map) order += entry.key < 3 || entry.key == 25 ? std::to_string(entry.value) + ' ' : "";
    EXPECT_EQ(order, "250 0 10 20 ");
    EXPECT_TRUE(map.Remove(0));
    EXPECT_EQ(*map.Find(25), 250);
    map.RemoveAll();
    EXPECT_TRUE(map.GetCount() == 0 && map.begin() == map.end());
    VMap<VUnicodeString, int> texts;
    texts[u"ab"] = 1;
    texts[u"ba"] = 2;
    EXPECT_TRUE(*texts.Find(u"ab") == 1 && *texts.Find(u"ba") == 2 && texts.Find(u"AB") == nullptr);
    EXPECT_EQ(VStringHash(std::u16string(70000, u'\uFFFF')), 70000u * 65535u);
}

}  // namespace
}  // namespace connectdialog
