#include "profile/vregistrykey.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "foundation/vstringarray.h"
#include "support/childprocess.h"
#include "support/temporaryhives.h"
#include "support/valuechecks.h"

namespace connectdialog {
namespace {

constexpr std::uint32_t kReadWrite = kRegistryRead | kRegistrySetValue | kRegistryCreateSubkey;

class RegistryKey : public testing::Test {
  protected:
    RegistryKey() { hives.WriteUser("[HKEY_CURRENT_USER\\A]\n"); }

    test::TemporaryHives hives;
};

TEST_F(RegistryKey, ValuesOfEachTypeComeBack) {
    VRegistryKey key(HiveScope::kUser, u"a", kReadWrite);
    test::ExpectValuesComeBack(key);
    test::ExpectSecurityComesBack(key);
}

TEST_F(RegistryKey, OnlyTextWithVariablesIsExpandedAndTextEndsAtItsZero) {
    setenv("HIVES_A", "one", 1);
    hives.WriteUser(
        "[HKEY_CURRENT_USER\\A]\n\"plain\"=\"%HIVES_A%\"\n"
        "\"expand\"=hex(2):25,00,48,00,49,00,56,00,45,00,53,00,5f,00,41,00,25,00,21,00,00,00\n"
        "\"cut\"=hex(1):61,00,00,00,62,00\n\"open\"=hex(1):61,00,62,00,63\n\"short\"=hex(4):01\n");
    VRegistryKey key(HiveScope::kUser, u"A", kRegistryRead);
    const char16_t* const kRows[][2] = {
        {u"plain", u"%HIVES_A%"}, {u"expand", u"one!"}, {u"cut", u"a"}, {u"open", u"ab"}};
    for (const auto& [name, expected] : kRows) {
        VUnicodeString text;
        EXPECT_TRUE(key.ReadString(name, text));
        EXPECT_EQ(text, expected);
    }
    std::uint32_t value = 0;
    EXPECT_FALSE(key.ReadDword(u"short", value));
    EXPECT_EQ(key.GetLastReport()->GetCode(), 13U);
}

TEST_F(RegistryKey, ATreeIsDeletedAndWhatWasOpenInItFails) {
    hives.WriteUser(
        "[HKEY_CURRENT_USER\\A\\1\\2\\3]\n\"v\"=dword:1\n[HKEY_CURRENT_USER\\A\\1\\b]\n[HKEY_CURRENT_USER\\A\\n]\n");
    VRegistryKey key(HiveScope::kUser, u"A", kRegistryRead);
    VRegistryKey deep(key, u"1\\2\\3", kReadWrite);
    VRegistryKeyEnumerator enumerator(key);
    VUnicodeString name;
    EXPECT_TRUE(enumerator.Next(name));
    EXPECT_EQ(name, u"n");
    EXPECT_TRUE(key.KeyExists(u"1\\b"));
    EXPECT_TRUE(key.DeleteKey(u"1"));
    EXPECT_FALSE(key.KeyExists(u"1"));
    EXPECT_EQ(key.GetLastReport()->GetCode(), 0U) << "asking leaves the report";
    std::uint32_t value = 0;
    EXPECT_FALSE(deep.ReadDword(u"v", value));
    EXPECT_EQ(deep.GetLastReport()->GetCode(), 1018U);
}

TEST_F(RegistryKey, AccessDecidesWhatAKeyMayDo) {
    VRegistryKey reader(HiveScope::kUser, u"A", kRegistryRead);
    EXPECT_FALSE(reader.IsWritable());
    EXPECT_FALSE(reader.WriteDword(u"v", 1) || reader.DeleteValue(u"v"));
    EXPECT_EQ(reader.GetLastReport()->GetCode(), 5U);
    VRegistryKey writer(HiveScope::kUser, u"A", kRegistrySetValue | kRegistryCreateSubkey);
    EXPECT_TRUE(writer.IsWritable() && writer.WriteDword(nullptr, 1));
    std::uint32_t value = 0;
    EXPECT_FALSE(writer.ReadDword(nullptr, value));
    EXPECT_EQ(writer.GetLastReport()->GetCode(), 5U);
    EXPECT_TRUE(reader.ReadDword(u"", value) && writer.DeleteValue(u""));
    EXPECT_FALSE(writer.DeleteValue(u""));
    EXPECT_EQ(writer.GetLastReport()->GetCode(), 2U);
    EXPECT_TRUE(writer.SetKeySecurity(nullptr));
}

TEST_F(RegistryKey, AKeyThatDidNotOpenFailsAndTellsWhy) {
    VRegistryKey absent(HiveScope::kMachine, u"A", kReadWrite);
    VRegistryKey below(absent, u"B", kReadWrite);
    EXPECT_FALSE(absent.IsOpen() || below.IsOpen());
    EXPECT_FALSE(absent.WriteDword(u"v", 1) || absent.WriteSecurity(u"v", VSecurityDescriptor()) ||
                 absent.KeyExists(u"") || absent.DeleteKey(u"B"));
    EXPECT_EQ(absent.GetLastReport()->GetCode(), 2U);
    EXPECT_EQ(below.GetLastReport()->GetCode(), 6U);
    EXPECT_EQ(VRegistryKeyEnumerator(absent).GetCount(), 0U);
    hives.WriteMachine("[HKEY_LOCAL_MACHINE\\A\n");
    VRegistryKey damaged(HiveScope::kMachine, u"A", kReadWrite);
    EXPECT_EQ(damaged.GetLastReport()->GetCode(), 1015U);
    ASSERT_EQ(damaged.GetLastReport()->GetInsertCount(), 1U);
    EXPECT_TRUE(VUnicodeString(damaged.GetLastReport()->GetInserts()[0])
                    .View()
                    .ends_with(u"line 2: a key does not end with ]"));
}

}  // namespace
}  // namespace connectdialog
