#include "config/loginscript.h"

#include <cstdlib>

#include "config/sessionconfig.h"
#include "foundation/vnarrowstring.h"
#include "profile/vprofilecapistring.h"
#include "support/fakesuite.h"
#include "support/freewatch.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

using namespace std::string_view_literals;

/// The older form of a script: its bytes scrambled, and a letter.
VUnicodeString OldForm(std::string_view bytes, const char16_t* letter) {
    VNarrowString plain(bytes);
    plain.MarkSensitive();
    VUnicodeString text = VProfileEncodedString::EncodeScrambled(plain);
    text += letter;
    return text;
}

class LoginScriptTest : public LibraryTest {
  protected:
    static VRef<SessionConfig> Load(const std::function<void(VProfileKey&)>& fill) {
        VRef<SessionConfig> session;
        WithKey(u"Sessions\\s", [&](VProfileKey& key) {
            key.GetImpl()->DeleteValue(u"Login Script");
            key.GetImpl()->DeleteValue(u"Login Script V2");
            key.WriteDword(u"Send Initial Carriage Return", 1);
            fill(key);
            session = VRef<SessionConfig>::Adopt(new SessionConfig(u"s"_v, &key));
        });
        return session;
    }
};

TEST_F(LoginScriptTest, TheOlderFormIsConverted) {
    struct Row {
        std::string_view bytes;
        const char16_t* letter;
        const char16_t* expected;
        bool sendsFirst;
    };
    constexpr Row kRows[] = {
        {"\x84"
         "login:\0root\0word:\0s3cret\0"sv,
         u"",
         u"1\x1Flogin:\x1Froot\x1F"
         u"0\x1Fword:\x1Fs3cret\x1F",
         true},
        {"\x80l\0o\0g\0\0\0r\0\0\0"sv, u"u", u"1\x1Flog\x1Fr\x1F", false},
        // Seven flags, with the bit of the carriage return passed over; the eighth item has none.
        {"\xFB\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0a\0b\0"sv, u"",
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"1\x1F\x1F\x1F"
         u"0\x1F"
         u"a\x1F"
         u"b\x1F",
         false},
        {"\x40\0\0\0y\0"sv, u"", u"1\x1F\x1Fy\x1F", false},
        {"\x80"
         "caf\xC3\xA9\0cut off"sv,
         u"",
         u"1\x1F"
         u"caf\u00E9\x1F"
         u"cut off\x1F",
         false},
        {"\x80l\0o\0g\0r"sv, u"u", u"1\x1Flog\x1F\x1F", false},
        {"\x84"
         "a\0b\0"sv,
         u"m", u"", true},
        {"\x80"
         "a\0b\0"sv,
         u"l", u"", false},
        {"\x04"sv, u"", u"", true},
    };
    for (const Row& row : kRows) {
        const VUnicodeString old = OldForm(row.bytes, row.letter);
        const VUnicodeString stored = VProfileEncodedString::EncodeScrambled(VNarrowString(old));
        const auto session = Load([&](VProfileKey& key) { key.WriteString(u"Login Script", stored.GetData()); });
        EXPECT_EQ(session->loginScript.Get(), row.expected) << ::testing::PrintToString(row.bytes);
        EXPECT_EQ(session->sendInitialCarriageReturn.Get(), row.sendsFirst);
        EXPECT_TRUE(session->loginScript.Get().IsSensitive());
    }
    for (const char16_t* text : {u"", u"u", u"zz", u"01020304", u"0102030"})
        EXPECT_EQ(ConvertLoginScript(text).text, u"");
}

TEST_F(LoginScriptTest, ASessionTakesTheOlderFormOnlyWhereThePresentOneIsMissing) {
    const VUnicodeString old = OldForm(
        "\x80"
        "login:\0root\0"sv,
        u"");
    const VUnicodeString stored = VProfileEncodedString::EncodeScrambled(VNarrowString(old));
    const auto converted = Load([&](VProfileKey& key) { key.WriteString(u"Login Script", stored.GetData()); });
    EXPECT_EQ(converted->loginScript.Get(), u"1\x1Flogin:\x1Froot\x1F");
    EXPECT_TRUE(converted->loginScript.Get().IsSensitive());
    EXPECT_FALSE(converted->sendInitialCarriageReturn.Get());
    EXPECT_TRUE(converted->loginScript.IsMissing()) << "the next save writes the present form";

    const auto present = Load([&](VProfileKey& key) {
        key.WriteString(u"Login Script", stored.GetData());
        VProfileEncodedString script;
        script.SetName(u"Login Script V2"_v);
        script.Set(u"0\x1Fx\x1Fy\x1F");
        script.Save(key, true);
    });
    EXPECT_EQ(present->loginScript.Get(), u"0\x1Fx\x1Fy\x1F");
    EXPECT_TRUE(present->sendInitialCarriageReturn.Get());
    EXPECT_TRUE(Load([](VProfileKey& key) { key.WriteString(u"Login Script", u""); })->loginScript.Get().IsEmpty());
}

TEST_F(LoginScriptTest, AnOlderFormOfManyItemsIsReadInOnePass) {
    std::string items(1, '\0');
    for (int i = 0; i < 100'000; ++i) items += "expect\0send\0"sv;
    EXPECT_EQ(ConvertLoginScript(OldForm(items, u"")).text.GetLength(), 100'000U * 14);
}

TEST_F(LoginScriptTest, AProtectedOlderFormIsReadAndLeavesNothingInMemory) {
    const TemporaryFolder folder;
    setenv("XDG_DATA_HOME", folder.GetPath().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    const VUnicodeString old = OldForm("\x80login:\0xk7!vQ29#mZp0wLs4Tb8\0"sv, u"");
    VProfileCapiString protector;
    const VUnicodeString stored = protector.Protect(old);
    ASSERT_TRUE(stored.View().starts_with(u"CAPI:"));
    FreeWatch watch(u"xk7!vQ29#mZp0wLs4Tb8");
    {
        const auto session = Load([&](VProfileKey& key) { key.WriteString(u"Login Script", stored.GetData()); });
        EXPECT_EQ(session->loginScript.Get(),
                  u"1\x1Flogin:\x1F"
                  u"xk7!vQ29#mZp0wLs4Tb8\x1F");
        const auto clone = VRef<ISessionConfig>::Adopt(session->Clone());
        WithKey(u"Sessions\\s", [&](VProfileKey& key) { session->Save(key, true); });
    }
    EXPECT_EQ(watch.GetResidues(), 0);
    const auto unread = Load([](VProfileKey& key) { key.WriteString(u"Login Script", u"CAPI:00"); });
    WithKey(u"Sessions\\s", [&](VProfileKey& key) {
        key.GetImpl()->DeleteValue(u"Login Script V2");
        unread->Save(key, false);
        VUnicodeString text;
        EXPECT_FALSE(key.ReadString(u"Login Script V2", text)) << "or the older form would never be looked at again";
    });
    WithKey(u"Sessions\\copy", [&](VProfileKey& key) {
        unread->Save(key, true);
        VUnicodeString text;
        EXPECT_FALSE(key.ReadString(u"Login Script V2", text));
        EXPECT_TRUE(key.ReadString(u"Login Script", text));
        EXPECT_EQ(text, u"CAPI:00") << "a copy has it too: the first one may go";
        unread->loginScript.Set(u"0\x1Fx\x1Fy\x1F");
        unread->Save(key, false);
        EXPECT_TRUE(key.ReadString(u"Login Script V2", text)) << "a script of the user's takes its place";
    });
    unsetenv("XDG_DATA_HOME");
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

}  // namespace
}  // namespace connectdialog::test
