#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/vhivereader.h"
#include "foundation/vhivewriter.h"
#include "platform/codepage.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

using platform::ToNarrow;
using platform::ToWide;
using test::ReadFile;

using Bytes = std::vector<std::uint8_t>;
constexpr char kFirst[] = "Windows Registry Editor Version 5.00\r\n";
constexpr char kKey[] = "[HKEY_LOCAL_MACHINE\\A]\r\n";

std::string Utf16(std::string_view narrow) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : ToWide(narrow)) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

/// The faults as "line text", one after the other.
std::string Told(const std::vector<VHiveFault>& faults) {
    std::string told;
    for (const VHiveFault& fault : faults) told += std::to_string(fault.line) + ' ' + ToNarrow(fault.text) + '\n';
    return told;
}

const VHiveValue* FindValue(const VHiveTree& tree, std::u16string_view path, std::u16string_view name) {
    const VHiveKey* key = tree.Find(path);
    const auto entry = key != nullptr ? key->values.find(name) : decltype(key->values.end())();
    return key != nullptr && entry != key->values.end() ? &entry->second.value : nullptr;
}

/// A file without faults, read from what was written after it was read, in the encoding it came in.
VHiveTree ReadTwice(const std::string& bytes) {
    VHiveTree tree;
    EXPECT_EQ(Told(ReadHive(bytes, tree)), "");
    const std::string written = WriteHive(tree);
    EXPECT_EQ(written.starts_with("\xFF\xFE"), bytes.starts_with("\xFF\xFE"));
    VHiveTree again;
    EXPECT_EQ(Told(ReadHive(written, again)), "") << written;
    EXPECT_EQ(WriteHive(again), written);
    return again;
}

TEST(HiveReader, EachFormOfAValueGivesItsTypeAndBytes) {
    const std::tuple<const char*, std::uint32_t, Bytes> kRows[] = {
        {R"("v"="a\\\"b")", 1, {'a', 0, '\\', 0, '"', 0, 'b', 0, 0, 0}},
        {" \t\"v\" = \"\xC3\xA9\" ; why", 1, {0xE9, 0, 0, 0}},
        {"\"v\"=\"a\r\nb\"", 1, {'a', 0, '\r', 0, '\n', 0, 'b', 0, 0, 0}},
        {"\"v\"=dword:FfFfFf0a", 4, {10, 0xFF, 0xFF, 0xFF}},
        {"\"v\"=hex:00,fF, 7,", 3, {0, 0xFF, 7}},
        {"\"v\"=hex:01,\\\r\n  02,\\ ; split\n  03", 3, {1, 2, 3}},
        {"\"w\"=\"1\"\n\"W\"=-\n\"v\"=dword:1", 4, {1, 0, 0, 0}},
        {"\"v\"=hex(2):25,00,00,00", 2, {0x25, 0, 0, 0}},
        {"\"v\"=hex(ffff0012):7f", 0xFFFF0012, {0x7F}},
        {"\"v\"=\"old\"\n\"v\"=dword:2", 4, {2, 0, 0, 0}},
    };
    for (const auto& [line, type, data] : kRows) {
        const std::string narrow = std::string(kFirst) + "\n; about\n" + kKey + line + "\r\n";
        for (const std::string& bytes : {narrow, "\xEF\xBB\xBF" + narrow, Utf16(narrow)}) {
            const VHiveTree tree = ReadTwice(bytes);
            const VHiveValue* value = FindValue(tree, u"hkey_local_machine\\a", u"v");
            ASSERT_NE(value, nullptr) << line;
            EXPECT_EQ(*value, (VHiveValue{type, data})) << line;
            EXPECT_EQ(FindValue(tree, u"hkey_local_machine\\a", u"w"), nullptr) << "removed";
        }
    }
}

TEST(HiveReader, TextInBytesIsNarrowInTheOlderForm) {
    VHiveTree tree;
    EXPECT_EQ(Told(ReadHive("REGEDIT4\n[HKEY_USERS\\A]\n\"e\"=hex(2):c3,a9,00\n", tree)), "");
    EXPECT_EQ(FindValue(tree, u"HKEY_USERS\\A", u"e")->data, (Bytes{0xE9, 0, 0, 0}));
}

TEST(HiveReader, AFaultIsToldWithItsLineAndTheOtherLinesCount) {
    // What stands behind the first line, a key and "a"="1".
    constexpr const char* kRows[][2] = {
        {"\"x\"=\"C:\\Temp\"\n", "4 a text has no closing quote, or a \\ before another character than \\ and \"\n"},
        {"\"x\"=dword:123456789\n", "4 dword: is not followed by 1 to 8 hex digits\n"},
        {"\"x\"=hex(:00\n", "4 hex( is not followed by the number of a type and )\n"},
        {"\"x\"=hex:100\n", "4 the bytes are not two-digit hex numbers between commas\n"},
        {"\"x\"=yes\n", "4 a value is not a text, dword: or hex:\n"},
        {"[HKEY_LOCAL_MACHINE\\B\n\"y\"=\"goes with the key\"\n[HKEY_LOCAL_MACHINE\\A]\n",
         "4 a key does not end with ]\n"},
        {"[HKLM\\B]\n[HKEY_LOCAL_MACHINE\\A]\n",
         "4 a key does not begin with the name of a root, such as HKEY_LOCAL_MACHINE\n"},
        {"[HKEY_LOCAL_MACHINE\\\\B]\n[HKEY_LOCAL_MACHINE\\A]\n",
         "4 a key cannot be taken: a name is empty, too long or unfit, or there are too many keys\n"},
        {"[-HKEY_LOCAL_MACHINE]\n[HKEY_LOCAL_MACHINE\\A]\n", "4 a root cannot be removed\n"},
        {"\"\xFF\"=\"1\"\n", "4 the characters are neither UTF-8 nor UTF-16\n"},
    };
    for (const auto& [lines, told] : kRows) {
        VHiveTree tree;
        const std::string bytes = std::string(kFirst) + kKey + "\"a\"=\"1\"\n" + lines + "\"b\"=\"2\"\n";
        EXPECT_EQ(Told(ReadHive(bytes, tree)), told);
        EXPECT_NE(FindValue(tree, u"HKEY_LOCAL_MACHINE\\A", u"a"), nullptr) << lines;
        EXPECT_NE(FindValue(tree, u"HKEY_LOCAL_MACHINE\\A", u"b"), nullptr) << lines;
        EXPECT_EQ(FindValue(tree, u"HKEY_LOCAL_MACHINE\\A", u"y"), nullptr) << lines;
    }
    VHiveTree tree;
    EXPECT_EQ(Told(ReadHive("; no first line\n", tree)), "1 the file does not begin like a registry export\n");
    EXPECT_EQ(Told(ReadHive(Utf16(std::string(kFirst) + kKey) + "\n", tree)),
              "3 the characters are neither UTF-8 nor UTF-16\n");
    EXPECT_EQ(Told(ReadHive("", tree)), "");
}

TEST(HiveWriter, WritesInOrderWithCommentsAndKeepsWhatItDoesNotKnow) {
    VHiveTree tree;
    const std::string bytes =
        std::string(kFirst) +
        "; by the administrator\n[HKEY_LOCAL_MACHINE\\B]\n\"n\"=hex(8):00,\\ ; here\n01\n; two\n; lines\n"
        "@=\"x\"\n[HKEY_LOCAL_MACHINE\\a\\c] ; behind\n; the end";
    ASSERT_EQ(Told(ReadHive(bytes, tree)), "");
    for (const char* more : {"; more\n[HKEY_LOCAL_MACHINE\\B]\n", "; more\n[HKEY_LOCAL_MACHINE\\B]\n; end\n"}) {
        ASSERT_EQ(Told(ReadHive(kFirst + std::string(more), tree)), "");
    }
    tree.Find(u"HKEY_LOCAL_MACHINE\\B")->values[u"long"].value = {3, Bytes(30, 0xAB)};
    EXPECT_EQ(WriteHive(tree),
              std::string(kFirst) +
                  "\r\n; behind\r\n[HKEY_LOCAL_MACHINE\\a\\c]\r\n"
                  "\r\n; by the administrator\r\n; more\r\n[HKEY_LOCAL_MACHINE\\B]\r\n; two\r\n; lines\r\n"
                  "@=\"x\"\r\n"
                  "\"long\"=hex:ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,\\\r\n"
                  "  ab,ab,ab,ab,ab,ab,ab,ab,ab\r\n"
                  "; here\r\n\"n\"=hex(8):00,01\r\n\r\n; the end\r\n; end\r\n");
}

}  // namespace
}  // namespace connectdialog
