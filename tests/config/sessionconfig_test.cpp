// A session as a whole, and the scripts of older versions in it.
#include "config/sessionconfig.h"

#include <algorithm>
#include <cstdlib>

#include "config/loginscript.h"
#include "config/settingwalk.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofilecapistring.h"
#include "sessiondb/sessiontree.h"
#include "sessiongolden.h"
#include "support/fakesuite.h"
#include "support/freewatch.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

class SessionConfigTest : public LibraryTest {
  protected:
    static VRef<ISessionConfig> Make(const char16_t* name) {
        return VRef<ISessionConfig>::Adopt(CreateSessionConfig(name, nullptr));
    }
    /// A session "s" whose key holds what `fill` writes.
    static VRef<ISessionConfig> Load(const std::function<void(VProfileKey&)>& fill) {
        WithKey(u"Sessions\\s", fill);
        return LoadSessionEntry(u"s", u"s");
    }
    static VUnicodeString TextOf(ISessionConfig& session, std::u16string_view name) {
        const VProfileData* setting = session.FindValue(name);
        return setting != nullptr ? TextOf(*setting) : u"?"_v;
    }
    static VUnicodeString TextOf(const VProfileData& setting) {
        VVariant value;
        VReportMessageParams report;
        if (!setting.GetVariant(value, report)) return u"?";
        if (const VVariant::Array* array = value.GetArray()) return array->IsEmpty() ? u"" : u"[...]";
        if (value.GetType() == VVariantType::kEmpty) return u"2";
        if (value.GetType() == VVariantType::kBool) return value.GetNumber() != 0 ? u"1" : u"0";
        VVariant text;
        VVariant::Convert(value, VVariantType::kText, text);
        return text.GetText();
    }
    static VUnicodeString HostOf(ISessionConfig& session) {
        VUnicodeString host;
        session.GetConnectConfig()->GetHostName(host);
        return host;
    }
    template <class T>
    static VProfile<T>& Number(ISessionConfig& session, std::u16string_view name) {
        return dynamic_cast<VProfile<T>&>(*session.FindValue(name));
    }
};

TEST_F(SessionConfigTest, NamesTypesAndDefaultsAreTheFrozenOnes) {
    const auto session = Make(u"");
    std::size_t row = 0;
    VisitSettings(*session, [&](VProfileData& setting) {
        if (setting.GetName().EqualsNoCase(u"Protocol Name") ||
            setting.GetName().EqualsNoCase(u"Transfer Protocol Name") ||
            setting.GetName().Find(u" Host") != VUnicodeString::kNotFound)
            return;
        ASSERT_LT(row, std::size(kGoldenSession));
        const GoldenSetting& golden = kGoldenSession[row++];
        EXPECT_EQ(setting.GetName(), golden.name);
        EXPECT_TRUE(setting.IsMissing());
        VVariant value;
        VReportMessageParams report;
        ASSERT_EQ(setting.GetVariant(value, report), golden.type != kRecord);
        if (golden.type == kRecord) return;
        EXPECT_EQ(value.GetType(), golden.type) << VNarrowString(setting.GetName()).GetData();
        if (golden.defaultText != nullptr) {
            EXPECT_EQ(TextOf(setting), golden.defaultText) << VNarrowString(setting.GetName()).GetData();
        }
    });
    EXPECT_EQ(row, std::size(kGoldenSession));
    auto& config = dynamic_cast<SessionConfig&>(*session);
    EXPECT_EQ(config.GetMember(3), &config.terminal);
    EXPECT_EQ(config.GetMember(56), &config.printer);
    EXPECT_EQ(config.GetMember(83), &config.useControlAddressForData);
    EXPECT_EQ(config.GetMember(84), nullptr);
    EXPECT_EQ(session->FindValue(u"Emulation"), nullptr) << "only direct members are found";
    EXPECT_FALSE(session->IsDefaultSession());
}

TEST_F(SessionConfigTest, AnOldKeyWithATimeoutMeansThatIdleChecksAreOn) {
    const auto with = [&](std::uint32_t timeout) {
        return Load([&](VProfileKey& key) { key.WriteDword(u"Idle Timeout", timeout); });
    };
    EXPECT_TRUE(Number<bool>(*with(5), u"Idle Check").Get());
    EXPECT_FALSE(Number<bool>(*with(0), u"Idle Check").Get());
    const auto explicitlyOff = Load([](VProfileKey& key) {
        key.WriteDword(u"Idle Timeout", 5);
        key.WriteDword(u"Idle Check", 0);
    });
    EXPECT_FALSE(Number<bool>(*explicitlyOff, u"Idle Check").Get());
}

TEST_F(SessionConfigTest, DelaysThatAKeyLacksComeFromTheGlobalSettings) {
    EXPECT_EQ(TextOf(*Make(u""), u"Line Send Delay"), u"5");
    const auto session = Load([](VProfileKey& key) { key.WriteDword(u"Character Send Delay", 9); });
    EXPECT_EQ(TextOf(*session, u"Line Send Delay"), u"7");
    EXPECT_EQ(TextOf(*session, u"Character Send Delay"), u"9");
}

TEST_F(SessionConfigTest, AnEmptyProtocolNameIsNoProtocolAndAnAbsentOneIsTheFirst) {
    const auto session = Load([](VProfileKey& key) { key.WriteString(u"Protocol Name", u""); });
    VUnicodeString name;
    session->GetProtocolName(name);
    EXPECT_EQ(name, u"None");
    EXPECT_FALSE(session->HasProtocol());
    session->GetTransferProtocolName(name);
    EXPECT_EQ(name, u"SFTP");
    EXPECT_TRUE(session->HasTransferProtocol());
    EXPECT_TRUE(session->IsTransferConnectable()) << "only the host name is missing";
    Load([](VProfileKey& key) { key.WriteString(u"Protocol Name", u"telnet"); })->GetProtocolName(name);
    EXPECT_EQ(name, u"telnet") << "in whatever case";
}

TEST_F(SessionConfigTest, TheTipShowsHostAndDescription) {
    const auto session = Make(u"a");
    session->GetConnectConfig()->SetHostName(u"h");
    dynamic_cast<VProfileMultiLineString&>(*session->FindValue(u"Description")).SetText(u"one\r\ntwo");
    VUnicodeString text;
    session->GetDisplayText(text);
    EXPECT_EQ(text, u"主机名: h\none\r\ntwo");
    session->SetProtocolName(u"Serial"_v);
    session->GetDisplayText(text);
    EXPECT_EQ(text, u"Port: h\none\r\ntwo");
    session->SetProtocolName(u"TAPI"_v);
    session->GetDisplayText(text);
    EXPECT_TRUE(text.View().starts_with(u"Phone number: "));
    panels.table.Clear();
    Make(u"b")->GetDisplayText(text);
    EXPECT_EQ(text, u"");
}

TEST_F(SessionConfigTest, TheDefaultSessionIsMadeOnDemandAndNeverSavedByPath) {
    EXPECT_FALSE(SessionKeyExists(u"Default"));
    const auto session = OpenSession(u"Default");
    ASSERT_TRUE(session);
    EXPECT_TRUE(session->IsDefaultSession());
    EXPECT_TRUE(SessionKeyExists(u"Default"));
    EXPECT_EQ(session->GetConnectConfig()->notToBeSaved, 1U);
    Number<bool>(*session, u"Raw Log").Set(true);
    EXPECT_TRUE(SaveSession(*session));
    EXPECT_EQ(TextOf(*OpenSession(u"Default"), u"Raw Log"), u"0");
    EXPECT_FALSE(Make(u"default")->IsDefaultSession());
    EXPECT_FALSE(SessionKeyExists(u"other"));
}

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
    // The bytes with / for a zero, the letter behind them, the present form with | for its separator, and whether the
    // carriage return goes first.
    const std::tuple<std::string, const char16_t*, VUnicodeString, bool> rows[] = {
        {"\x84login:/root/word:/s3cret/", u"", u"1|login:|root|0|word:|s3cret|", true},
        {"\x80l/o/g///r///", u"u", u"1|log|r|", false},
        // Seven flags, with the bit of the carriage return passed over; the eighth item has none.
        {"\xFB////////////////a/b/", u"", u"1|||1|||1|||1|||1|||1|||1|||0|a|b|", false},
        {"\x80"
         "caf\xC3\xA9/cut off",
         u"", u"1|caf\u00E9|cut off|", false},
        {"\x84"
         "a/b/",
         u"m", u"", true},
        {"\x04", u"", u"", true},
    };
    for (auto [bytes, letter, expected, sendsFirst] : rows) {
        std::ranges::replace(bytes, '/', '\0');
        expected.Replace(u"|", u"\x1F");
        const VUnicodeString old = OldForm(bytes, letter);
        const VUnicodeString stored = VProfileEncodedString::EncodeScrambled(VNarrowString(old));
        const auto session = Load([&](VProfileKey& key) { key.WriteString(u"Login Script", stored.GetData()); });
        EXPECT_EQ(session->loginScript.Get(), expected) << ::testing::PrintToString(bytes);
        EXPECT_EQ(session->sendInitialCarriageReturn.Get(), sendsFirst);
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
