#include <QMetaEnum>
#include <gtest/gtest.h>
#include <map>
#include <string>

#include "keymap/extendedkeytable.h"
#include "platform/codepage.h"

namespace connectdialog::test {
namespace {

/// "VK_DEAD_ACUTE" and "Key_Dead_Acute" are one name.
std::string PlainName(const std::string& name, std::size_t prefix) {
    std::string plain;
    for (const char c : name.substr(prefix))
        if (c != '_' && c != ' ') plain += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return plain;
}

TEST(ExtendedKeys, HaveTheNumbersOfTheToolkitsKeysOfTheirNames) {
    const QMetaEnum keys = QMetaEnum::fromType<Qt::Key>();
    std::map<std::string, std::uint32_t> numbers;
    for (int i = 0; i < keys.keyCount(); ++i)
        numbers[PlainName(keys.key(i), 4)] = static_cast<std::uint32_t>(keys.value(i));
    constexpr std::uint32_t kCharacterBit = 0x80000000;
    constexpr std::uint32_t kFirstBehindVirtualKeys = 0x100;
    std::string faults;
    std::string virtualKeys;
    for (const KeyRow& row : kExtendedKeys) {
        const std::string name = platform::ToNarrow(row.name);
        const auto found = numbers.find(PlainName(name, 3));
        if (row.code < kFirstBehindVirtualKeys)
            virtualKeys += name + " ";
        else if (found == numbers.end() || (row.code & ~kCharacterBit) != found->second)
            faults += name + " ";
    }
    EXPECT_EQ(faults, "");
    EXPECT_EQ(virtualKeys, "VK_BACK VK_NUMLOCK VK_YDIAERESIS ") << "they have virtual keys' numbers";
}

}  // namespace
}  // namespace connectdialog::test
