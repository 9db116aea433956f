// Texts that only their user can read back.
#include <cstdlib>

#include "platform/lasterror.h"
#include "platform/usersecrets.h"
#include "profile/vprofilecapistring.h"
#include "support/fakesuite.h"
#include "support/freewatch.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

/// A user of his own, with a key file and without a Secret Service.
class CapiStringTest : public LibraryTest {
  protected:
    CapiStringTest() {
        setenv("XDG_DATA_HOME", folder.GetPath().c_str(), 1);
        setenv("TEMP", folder.GetPath().c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    }
    ~CapiStringTest() override {
        for (const char* name : {"XDG_DATA_HOME", "TEMP", "DBUS_SESSION_BUS_ADDRESS"}) unsetenv(name);
    }
    TemporaryFolder folder;
};

TEST_F(CapiStringTest, AValueIsStoredProtectedAndReadBack) {
    WithKey(u"k", [](VProfileKey& key) {
        VProfileCapiString value;
        EXPECT_TRUE(value.Load(&key, u"V"_v, u"initial"_v));
        EXPECT_TRUE(value.IsMissing());
        value.Save(key, false);
        const VUnicodeString first = StoredText(key);
        EXPECT_TRUE(first.View().starts_with(u"CAPI:"));
        VProfileCapiString other;
        other.Load(&key, u"V"_v, VUnicodeString());
        EXPECT_EQ(other.Get(), u"initial");
        EXPECT_FALSE(other.IsMissing() || other.IsChanged() || other.Get().IsSensitive());
        EXPECT_EQ(other.Unprotect(first.Mid(5)), u"initial") << "without its prefix";
        VUnicodeString lower = first.Mid(5);
        lower.MakeLower();
        EXPECT_EQ(other.Unprotect(lower), u"initial");
        value.Set(u"");
        value.Save(key, false);
        EXPECT_EQ(StoredText(key), u"");
        EXPECT_EQ(value.Protect(u""), u"");
        EXPECT_EQ(value.Unprotect(u""), u"");
    });
}

TEST_F(CapiStringTest, WhatCannotBeReadIsReportedAndStaysInTheStore) {
    struct Row {
        const char16_t* text;
        std::uint32_t code;
        std::uint32_t cause;
    };
    constexpr Row kRows[] = {
        {u"CAPI:0", kReportOddDigits, 0},
        {u"CAPI:", kReportNotUnprotected, platform::kInvalidData},
        {u"CAPI:zz", kReportNotUnprotected, platform::kInvalidData},
        {u"01000000D08C9DDF0115D1118C7A00C04FC297EB", kReportNotUnprotected, platform::kInvalidData},
        {u"CAPI:43445531000102030405060708090A0B0C0D0E0F000102030405060708090A0B0C0D0E0F101112131415161700010203040506"
         u"0708090A0B0C0D0E0F",
         kReportNotUnprotected, platform::kKeyNotThere},
    };
    for (const Row& row : kRows) {
        WithKey(u"k", [&](VProfileKey& key) {
            key.WriteString(u"V", row.text);
            VProfileCapiString value;
            value.Load(&key, u"V"_v, u"default"_v);
            EXPECT_EQ(value.Get(), u"");
            EXPECT_FALSE(value.IsMissing() || value.IsChanged());
            const VReportMessageParams& report = *value.GetLastReport();
            EXPECT_EQ(report.GetCode(), row.code);
            ASSERT_EQ(report.GetInsertCount(), row.cause != 0 ? 2U : 1U);
            EXPECT_EQ(VUnicodeString(report.GetInserts()[0]), u"V");
            if (row.cause != 0) {
                EXPECT_EQ(VUnicodeString(report.GetInserts()[1]), VReportMessageParams(row.cause).GetTextOneLine());
            }
            value.Save(key, true);
            EXPECT_EQ(StoredText(key), row.text);
            value.Set(u"new");
            value.Save(key, false);
            value.Save(key, true);  // what could not be read must not come back
            EXPECT_EQ(value.Unprotect(StoredText(key)), u"new");
            EXPECT_EQ(value.GetLastReport()->GetCode(), 0U);
        });
    }
}

TEST_F(CapiStringTest, WithoutAKeyNothingIsStoredInPlace) {
    setenv("XDG_DATA_HOME", "/proc/none", 1);
    WithKey(u"k", [](VProfileKey& key) {
        VProfileCapiString value;
        value.Load(&key, u"V"_v, u"hunter2"_v);
        value.Save(key, false);
        EXPECT_EQ(StoredText(key), u"") << "never the plain text";
        EXPECT_EQ(value.GetLastReport()->GetCode(), kReportNotProtected);
    });
}

TEST_F(CapiStringTest, NothingOfASensitiveTextIsLeftInFreedMemory) {
    constexpr char16_t kSecret[] = u"correct horse battery staple";
    VUnicodeString secret(kSecret);
    secret.MarkSensitive();
    FreeWatch watch(kSecret);
    WithKey(u"k", [&](VProfileKey& key) {
        VProfileCapiString value;
        value.Edit().MarkSensitive();
        value.Load(&key, u"V"_v, secret);
        value.Save(key, true);
        value.Load(&key, u"V"_v, VUnicodeString());
        EXPECT_EQ(value.Get(), kSecret);
        VUnicodeString plain = value.Unprotect(StoredText(key));
        plain.MarkSensitive();
    });
    EXPECT_EQ(watch.GetResidues(), 0);
}

}  // namespace
}  // namespace connectdialog::test
