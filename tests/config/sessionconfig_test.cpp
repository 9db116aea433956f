#include "config/sessionconfig.h"

#include <algorithm>

#include "config/settingwalk.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiongolden.h"
#include "support/fakesuite.h"

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

TEST_F(SessionConfigTest, WrongStoredValuesAreCorrectedInMemoryOnly) {
    struct Row {
        const char16_t* name;
        int stored;
        int loaded;
    };
    constexpr Row kRows[] = {
        {u"Idle Timeout", 0, 300},
        {u"Idle Timeout", 5, 10},
        {u"Idle Timeout", 10000000, 9999999},
        {u"Idle Timeout", -1, 10},
        {u"Idle Timeout", 10, 10},
        {u"Idle NO-OP Timeout", 0, 10},
        {u"Max Transfer Buffers", 0, 4},
        {u"Max Transfer Buffers", 9, 4},
        {u"Max Transfer Buffers", 1, 1},
        {u"Max Transfer Buffers", 8, 8},
        {u"XModem Send Packet Size", 128, 0},
        {u"XModem Send Packet Size", 1024, 1024},
    };
    for (const Row& row : kRows) {
        const auto session =
            Load([&](VProfileKey& key) { key.WriteDword(row.name, static_cast<std::uint32_t>(row.stored)); });
        const VProfile<int>& value = Number<int>(*session, row.name);
        EXPECT_EQ(value.Get(), row.loaded) << row.stored;
        EXPECT_EQ(value.GetStored(), row.stored);
        EXPECT_EQ(value.IsChanged(), row.stored != row.loaded);
    }
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

TEST_F(SessionConfigTest, FramesBeginAsTheGlobalSettingsSayButForTheTemplate) {
    const auto placementOf = [](ISessionConfig& session) {
        return dynamic_cast<VProfileWindowPlacement&>(*session.FindValue(u"RemoteFrame Window Placement")).Get();
    };
    const auto expectUnplaced = [&](ISessionConfig& session) {
        EXPECT_EQ(placementOf(session), VWindowPlacement::Unplaced());
        EXPECT_EQ(TextOf(session, u"Remote ExplorerFrame State"), u"1,-1,-1");
        EXPECT_EQ(TextOf(session, u"Remote ListView State"), u"1,1,1,0,0");
        EXPECT_EQ(TextOf(session, u"Tessaly Remote Tab State"), u"1,-1,-1");
    };
    const auto session = Load([](VProfileKey& key) { key.WriteString(u"Tessaly Remote Tab State", u"1,5,6"); });
    EXPECT_EQ(placementOf(*session).normal, (VRectangle{1, 2, 3, 4}));
    EXPECT_EQ(TextOf(*session, u"Remote ExplorerFrame State"), u"0,10,20");
    EXPECT_EQ(TextOf(*session, u"Remote ListView State"), u"0,2,3,0,1,100,1,0");
    EXPECT_EQ(TextOf(*session, u"Tessaly Remote Tab State"), u"1,5,6");
    expectUnplaced(*Make(u"a"));
    WithKey(u"Sessions\\default", [&](VProfileKey& key) {
        expectUnplaced(*VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"default", &key)));
    });
}

TEST_F(SessionConfigTest, ASessionMarkOfZeroIsRepaired) {
    const auto session = Load([](VProfileKey& key) { key.WriteDword(kIsSessionValue, 0); });
    EXPECT_EQ(TextOf(*session, u"Is Session"), u"1");
    EXPECT_TRUE(session->FindValue(u"Is Session")->IsChanged());
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
}

TEST_F(SessionConfigTest, LoadingWhatWasSavedChangesNothing) {
    const auto made = Make(u"a");
    made->SetPath(u"a");
    made->GetConnectConfig()->SetHostName(u"host.example.net");
    Number<bool>(*made, u"Raw Log").Set(true);
    ASSERT_TRUE(SaveSession(*made));
    const auto loaded = OpenSession(u"a");
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(loaded->IsChanged());
    VisitSettings(*loaded, [](VProfileData& setting) {
        EXPECT_FALSE(setting.IsMissing()) << VNarrowString(setting.GetName()).GetData();
    });
    EXPECT_EQ(TextOf(*loaded, u"raw log"), u"1");
    EXPECT_EQ(HostOf(*loaded), u"host.example.net");
}

TEST_F(SessionConfigTest, ACloneIsChangedInTheSameWayAndStandsAlone) {
    const auto original = Make(u"a");
    original->SetPath(u"f\\a");
    original->SetTransientText(u"transient");
    original->GetConnectConfig()->SetHostName(u"one");
    Number<bool>(*original, u"Raw Log").Set(true);
    const auto clone = VRef<ISessionConfig>::Adopt(original->Clone());
    EXPECT_TRUE(clone->FindValue(u"Raw Log")->IsChanged());
    EXPECT_TRUE(clone->FindValue(u"Log Mode")->IsMissing());
    EXPECT_EQ(clone->GetPath(), u"f\\a");
    VUnicodeString text;
    clone->GetTransientText(text);
    EXPECT_EQ(text, u"");
    clone->GetConnectConfig()->SetHostName(u"two");
    Number<bool>(*clone, u"Raw Log").Set(false);
    EXPECT_EQ(HostOf(*original), u"one");
    EXPECT_TRUE(Number<bool>(*original, u"Raw Log").Get());
}

TEST_F(SessionConfigTest, OnlyChangedSettingsAreCopiedToOthers) {
    const auto source = Load([](VProfileKey& key) { key.WriteString(u"Title Bar", u"same"); });
    const auto target = Make(u"t");
    dynamic_cast<VProfileText&>(*target->FindValue(u"Title Bar")).Set(u"kept"_v);
    Number<int>(*source, u"Highlighting Style").Set(4);
    target->CopyChangesFrom(source.Get());
    EXPECT_EQ(TextOf(*target, u"Highlighting Style"), u"4");
    EXPECT_EQ(TextOf(*target, u"Title Bar"), u"kept");
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

TEST_F(SessionConfigTest, AnyOtherPathMakesATemporarySessionAStoredOne) {
    const auto session = Make(u"Default");
    auto& config = dynamic_cast<SessionConfig&>(*session);
    config.SetStored(false);
    EXPECT_TRUE(session->SetPath(u"Default"));
    EXPECT_FALSE(session->IsStored());
    EXPECT_FALSE(session->SetPath(u"x"));
    EXPECT_TRUE(session->IsStored());
    config.SetPath(u"Default");
    config.SetStored(false);
    config.SetName(u"x");
    EXPECT_TRUE(session->IsStored()) << "a name of its own does it too";
}

TEST_F(SessionConfigTest, ASessionMadeFromTheTemplateKeepsItsHost) {
    const auto session = OpenSession(u"Default");
    session->SetProtocolName(u"Telnet"_v);
    session->SetPath(u"new");
    session->SetName(u"new");
    session->SetProtocolName(u"SSH2"_v);
    session->GetConnectConfig()->SetHostName(u"h");
    ASSERT_TRUE(SaveSession(*session));
    EXPECT_EQ(HostOf(*OpenSession(u"new")), u"h");
}

TEST_F(SessionConfigTest, AValueOfTheWrongTypeCountsAsAbsent) {
    const auto session = Load([](VProfileKey& key) {
        key.WriteString(u"Idle Timeout", u"soon");
        key.WriteDword(u"Title Bar", 3);
        key.WriteMultiString(u"Protocol Name", VStringArray());
    });
    EXPECT_EQ(TextOf(*session, u"Idle Timeout"), u"300");
    EXPECT_EQ(TextOf(*session, u"Title Bar"), u"");
    EXPECT_TRUE(session->HasProtocol());
}

}  // namespace
}  // namespace connectdialog::test
