// What a key owes for its values, whatever they are stored in.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "foundation/vsecuritydescriptor.h"
#include "support/strings.h"

namespace connectdialog::test {

/// Values of each type are read as they were written, in any case of their name, and as no other type. What fails
/// leaves the outputs and tells why. `Key` has the operations on values of IProfileKeyImpl.
template <class Key>
void ExpectValuesComeBack(Key& key) {
    const auto code = [&] { return key.GetLastReport()->GetCode(); };
    std::uint32_t number = 77;
    for (const std::uint32_t written : {0U, 1U, 255U, 256U, 65536U, 0x7FFFFFFFU, 0xFFFFFFFEU}) {
        EXPECT_TRUE(key.WriteDword(u"dword", written) && key.ReadDword(u"DWORD", number));
        EXPECT_EQ(number, written);
    }
    const std::string bytes("\0\x01\xFF\0", 4);
    const VStringArray list = Strings({u"first", u"", u"line\r\nbreak \xD800 \""});
    ASSERT_TRUE(key.WriteString(u"string", u"before") && key.WriteString(u"string", u"tab\t\\\"") &&
                key.WriteBinary(u"empty", nullptr, 0) && key.WriteBinary(u"binary", bytes.data(), 4) &&
                key.WriteMultiString(u"list", list));
    VUnicodeString text;
    EXPECT_TRUE(key.ReadString(u"String", text));
    EXPECT_EQ(text, u"tab\t\\\"");
    VStringArray read = list;
    read.Add(u"goes");
    EXPECT_TRUE(key.ReadMultiString(u"List", read));
    EXPECT_TRUE(read == list);
    std::uint32_t size = 7;
    EXPECT_TRUE(key.ReadBinary(u"empty", nullptr, size));
    EXPECT_EQ(size, 0U);
    char buffer[8] = "zzzzzzz";
    size = 3;
    EXPECT_FALSE(key.ReadBinary(u"binary", buffer, size));
    EXPECT_EQ(code(), 234U);
    EXPECT_TRUE(size == 4 && buffer[0] == 'z');
    EXPECT_TRUE(key.ReadBinary(u"Binary", buffer, size));
    EXPECT_EQ(std::string(buffer, 5), bytes + "z");
    EXPECT_FALSE(key.WriteBinary(u"dword", nullptr, 1));
    EXPECT_EQ(code(), 87U);

    const char16_t* const names[] = {u"dword", u"string", u"binary", u"list", u"absent"};
    for (const char16_t* name : names) {
        const auto check = [&](bool isRead, const char16_t* type) {
            EXPECT_EQ(isRead, name == type);
            EXPECT_EQ(code(), name == type ? 0U : name == names[4] ? 2U : 1629U);
        };
        check(key.ReadDword(name, number), names[0]);
        check(key.ReadString(name, text), names[1]);
        check(key.ReadBinary(name, nullptr, size), names[2]);
        check(key.ReadMultiString(name, read), names[3]);
    }
    EXPECT_TRUE(number == 0xFFFFFFFE && size == 4 && text == u"tab\t\\\"" && read == list);
}

/// A security descriptor is kept in binary and read from rules too.
template <class Key>
void ExpectSecurityComesBack(Key& key) {
    VSecurityDescriptor descriptor;
    ASSERT_TRUE(key.WriteMultiString(u"rules", Strings({u"S-1-1-0,deny,", u"S-1-1-0,nonsense,"})));
    EXPECT_FALSE(key.ReadSecurity(u"rules", descriptor));
    EXPECT_EQ(key.GetLastReport()->GetCode(), 13U);
    EXPECT_EQ(std::u16string_view(key.GetLastReport()->GetInserts()[0]), u"\"S-1-1-0,nonsense,\"");
    const std::vector<std::uint8_t> bytes = descriptor.MakeSelfRelative();
    ASSERT_TRUE(key.WriteSecurity(u"binary", descriptor));
    VSecurityDescriptor read;
    EXPECT_TRUE(key.ReadSecurity(u"BINARY", read) && read.IsSelfRelative());
    EXPECT_EQ(read.GetDacl()->GetCount(), 1U);
    ASSERT_TRUE(key.WriteBinary(u"damaged", bytes.data(), 20) && key.WriteDword(u"dword", 1));
    const std::pair<const char16_t*, std::uint32_t> failures[] = {{u"no", 2}, {u"dword", 1629}, {u"damaged", 1338}};
    for (const auto& [name, code] : failures) {
        EXPECT_FALSE(key.ReadSecurity(name, read));
        EXPECT_EQ(key.GetLastReport()->GetCode(), code);
    }
    EXPECT_EQ(read.MakeSelfRelative(), bytes) << "a failed read leaves the output";
}

}  // namespace connectdialog::test
