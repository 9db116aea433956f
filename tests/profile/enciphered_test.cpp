// Passwords and scripts in the store: the cipher, the text forms, texts that only their user can read back, and what is
// left of them in memory.
#include <cstdlib>

#include "foundation/vcapirandomsource.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofileencodedstring.h"
#include "support/fakesuite.h"
#include "support/freewatch.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

TEST(BlowfishString, StoredTextsOfEachFormStayReadable) {
    // Made with another implementation of the cipher under the same keys: they freeze keys, vector and layout.
    constexpr const char16_t* kRows[][2] = {
        {u"u6df6f02b0441c942d1d83c465c0f3c8da1ba7a7beb844376bcd2f93e32d09c97bc456b0c22f73bc5", u"pässwörd 密码"},
        {u"u6DF6F02B0441C942D1D83C465C0F3C8DA1BA7A7BEB844376BCD2F93E32D09C97BC456B0C22F73BC5", u"pässwörd 密码"},
        {u"l464a9b43ec0c14326793f1db27b1e2ca06aca7b862363afbaaf025e87cbcfbcb6b001a99e85f3109dbf12ed032a5b86b49f9ff78494"
         u"e"
         u"05d3f16b36c7ddc6dd33",
         u"pässwörd 密码"},
        {u"ce7196c3ab87cfd6354479f035072b161ade85d37459c9d31b165625330d340c", u"pässwörd 密码"},
        {u"ua357971b04c144d5dc89f9907a5773b01df59d3912af326e", u"abc"},
    };
    VBlowfishString string;
    for (const auto& [text, plain] : kRows) {
        EXPECT_EQ(string.DecipherBlowfish(text), plain);
        EXPECT_EQ(string.GetCipherText(), text);
    }
    EXPECT_TRUE(string.DecipherBlowfish(kRows[0][0]).IsSensitive());
    EXPECT_EQ(string.GetText(), u"");
}

TEST(BlowfishString, EnciphersEachLengthInEachModeAndEachTimeAnew) {
    for (const std::uint32_t mode : {0U, 1U, 2U, 3U}) {
        VUnicodeString plain;
        for (std::size_t length = 0; length < 20; ++length, plain += u'密') {
            VBlowfishString string;
            string.SetMode(mode);
            string.Set(plain);
            const VUnicodeString text = string.EncipherBlowfish();
            const std::size_t inner = (2 * length + 2) / 8 * 8 + 8;
            EXPECT_EQ(text.GetLength(), 1 + 2 * (inner + 8)) << length;
            EXPECT_TRUE(text.IsSensitive());
            EXPECT_EQ(string.GetCipherText(), u"") << "only what was deciphered is kept";
            EXPECT_EQ(string.DecipherBlowfish(text), plain) << mode << ' ' << length;
            EXPECT_NE(string.EncipherBlowfish(), text);
        }
    }
}

/// A user of his own, with a key file and without a Secret Service.
class HiddenValueTest : public LibraryTest {
  protected:
    HiddenValueTest() {
        setenv("XDG_DATA_HOME", folder.GetPath().c_str(), 1);
        setenv("TEMP", folder.GetPath().c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    }
    ~HiddenValueTest() override {
        for (const char* name : {"XDG_DATA_HOME", "TEMP", "DBUS_SESSION_BUS_ADDRESS"}) unsetenv(name);
    }
    TemporaryFolder folder;
};

const VUnicodeString& TextOf(const VProfileText& value) {
    return value.Get();
}
const VUnicodeString& TextOf(const VProfileBlowfishString& value) {
    return value.GetText();
}

/// A value is stored with the prefix and what hides it, differently each time, and reads back.
template <class Value>
void ExpectHidden(VProfileKey& key, const char16_t* prefix) {
    key.GetImpl()->DeleteValue(u"V");
    Value value;
    value.Load(&key, u"V"_v, u"initial s\u00E9nd"_v);
    EXPECT_TRUE(value.IsMissing() && !value.IsChanged());
    value.Save(key, false);
    const VUnicodeString first = StoredText(key);
    EXPECT_TRUE(first.View().starts_with(prefix) && first.Find(u"initial") == VUnicodeString::kNotFound);
    value.Save(key, true);
    EXPECT_NE(StoredText(key), first) << "equal texts differ in the store";
    Value other;
    other.Load(&key, u"V"_v, VUnicodeString());
    EXPECT_EQ(TextOf(other), u"initial s\u00E9nd");
    EXPECT_FALSE(other.IsMissing() || other.IsChanged());
    other.Edit() = Value().Get();
    EXPECT_TRUE(other.IsChanged());
    other.Save(key, false);
    EXPECT_EQ(StoredText(key), u"") << "an empty text stays empty";
    value.Read(&key);
    EXPECT_TRUE(TextOf(value).IsEmpty());
}

TEST_F(HiddenValueTest, EachKindIsStoredHiddenAndReadBack) {
    WithKey(u"k", [](VProfileKey& key) {
        ExpectHidden<VProfileBlowfishString>(key, u"u");
        ExpectHidden<VProfileEncodedString>(key, u"");
        ExpectHidden<VProfileCapiString>(key, u"CAPI:");
    });
}

TEST_F(HiddenValueTest, AScriptMovesAPasswordWithoutLearningIt) {
    WithKey(u"k", [](VProfileKey& key) {
        VProfileBlowfishString from;
        from.SetName(u"V"_v);
        from.SetText(u"hunter2");
        from.Save(key, true);
        from.Read(&key);
        VReportMessageParams report;
        VVariant variant;
        VProfileBlowfishString to;
        ASSERT_TRUE(from.GetVariant(variant, report) && to.SetVariant(variant, report));
        EXPECT_TRUE(variant.GetText() == StoredText(key) && to.GetText() == u"hunter2");
    });
}

TEST_F(HiddenValueTest, WhatCannotBeReadIsReportedAndStaysInTheStore) {
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

TEST_F(HiddenValueTest, WithoutAKeyNothingIsStoredInPlace) {
    setenv("XDG_DATA_HOME", "/proc/none", 1);
    WithKey(u"k", [](VProfileKey& key) {
        VProfileCapiString value;
        value.Load(&key, u"V"_v, u"hunter2"_v);
        value.Save(key, false);
        EXPECT_EQ(StoredText(key), u"") << "never the plain text";
        EXPECT_EQ(value.GetLastReport()->GetCode(), kReportNotProtected);
    });
}

TEST_F(HiddenValueTest, NothingOfASecretIsLeftInFreedMemory) {
    constexpr char16_t kSecret[] = u"correct horse battery staple";
    VUnicodeString secret(kSecret);
    secret.MarkSensitive();
    FreeWatch watch(kSecret);
    WithKey(u"k", [&](VProfileKey& key) {
        VProfileBlowfishString password;
        VProfileEncodedString script;
        VProfileCapiString ours;
        ours.Edit().MarkSensitive();
        password.Load(&key, u"V"_v, secret);
        ours.Load(&key, u"C"_v, secret);
        script.Load(&key, u"S"_v);
        script.Edit() = secret;
        for (VProfileData* value : {static_cast<VProfileData*>(&password), static_cast<VProfileData*>(&script),
                                    static_cast<VProfileData*>(&ours)}) {
            value->Save(key, true);
        }
        password.Read(&key);
        script.Load(&key, u"S"_v);
        ours.Load(&key, u"C"_v, VUnicodeString());
        EXPECT_TRUE(password.GetText() == kSecret && script.Get() == kSecret && ours.Get() == kSecret);
        const VProfileBlowfishString copy = password;
        password.SetText(secret + u"!");
        password.Commit();
        password.Revert();
        script.Set(VUnicodeString());
        script.Revert();
    });
    EXPECT_EQ(watch.GetResidues(), 0);
    { const VNarrowString plain(secret.GetData()); }
    EXPECT_EQ(watch.GetResidues(), 1) << "the watch sees narrow text too";
}

}  // namespace
}  // namespace connectdialog::test
