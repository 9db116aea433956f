#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/configpanels/sessionname.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

class ConfigPanelsTest : public SuiteTest {
  protected:
    std::uint32_t StoredNumber(const char16_t* name) const { return ReadDwordOr(*factory, kGlobalKey, name, 99); }
    static VRef<GlobalConfig> Global() {
        VRef<GlobalConfig> global;
        EXPECT_TRUE(GetGlobalConfig(global, -1));
        return global;
    }
};

/// Users' data: a name here changes only together with a migration.
TEST_F(ConfigPanelsTest, GlobalSettingsKeepTheirNames) {
    const auto global = Global();
    VUnicodeString names;
    for (std::size_t i = 0; const VProfileData* member = dynamic_cast<VProfileData&>(*global).GetMember(i); ++i)
        names += member->GetName() + u", ";
    EXPECT_EQ(names,
              u"Config Upgrade Marker, Session Arrangement Mode, Hide Dot Entries, Line Send Delay, "
              u"Character Send Delay, Maximum Cols, Maximum Scrollback, RemoteFrame Window Placement, "
              u"Remote ExplorerFrame State, "
              u"Remote ListView State, Tessaly Remote Tab State, Connect Dialog Placement, "
              u"Connect Dialog On Startup, Quick Connect On Startup, Quick Connect Save Session, Show Descriptions, "
              u"Show Transfer Sessions, Show Terminal Sessions, Save Config On Close, Last Session Path, "
              u"Last Session Expanded, Remember Folder Expansion, Options Page Path, Open In Tab, Tab Mode, "
              u"Tabs Forced, Session Tree Font, Suppress Multi Connect Warning, Suppress Multi Edit Warning, "
              u"Use New Session Wizard, Update Reminder Suppressed, Last Update Reminder, ");
}

TEST_F(ConfigPanelsTest, OneRecordServesTheProcessUntilItIsReadAgain) {
    const auto global = Global();
    EXPECT_EQ(Global().Get(), global.Get());
    EXPECT_EQ(global->configUpgradeMarker.Get(), u"7B2F2717-85C8-4729-8394-3B7697039CEB")
        << "a new store is no old one";
    EXPECT_EQ(StoredNumber(u"Line Send Delay"), 99U) << "reading wrote something";
    global->sessionArrangementMode.Set(2);
    EXPECT_TRUE(global->Save());
    EXPECT_EQ(StoredNumber(u"Session Arrangement Mode"), 2U);

    ASSERT_TRUE(WriteDwords(*factory, kGlobalKey, {u"Session Arrangement Mode"}, 1));
    EXPECT_EQ(Global()->sessionArrangementMode.Get(), 2);
    GetReferenceConfigPanels().ReloadGlobalConfig();
    EXPECT_EQ(Global()->sessionArrangementMode.Get(), 1);
    EXPECT_EQ(global->sessionArrangementMode.Get(), 2);
}

TEST_F(ConfigPanelsTest, WhatCouldNotBeWrittenIsWrittenByTheNextSave) {
    VReportMessageParams report;
    // Nobody can make a file there.
    const auto refusing = stores::OpenProfileStoreFactory(u"sqlite:/proc/nowhere/sessions.db", report);
    ASSERT_TRUE(refusing);
    InstallReferenceSuite(u"NorHalden"_v, *refusing);
    const auto global = Global();
    global->lineSendDelay.Set(77);
    EXPECT_FALSE(global->Save());
    EXPECT_EQ(global->lineSendDelay.Get(), 77);

    InstallReferenceSuite(u"NorHalden"_v, *factory);
    EXPECT_TRUE(global->Save());
    EXPECT_EQ(StoredNumber(u"Line Send Delay"), 77U);
}

TEST_F(ConfigPanelsTest, TheProductFollowsFromTheApplicationsName) {
    EXPECT_EQ(GetCurrentAppProductID(), AppKind::kNorHalden);
    InstallReferenceSuite(u"tessaly"_v, *factory);
    EXPECT_EQ(GetCurrentAppProductID(), AppKind::kTessaly);
    InstallReferenceSuite(u"Other"_v, *factory);
    EXPECT_EQ(GetCurrentAppProductID(), AppKind::kUnknown);
    EXPECT_TRUE(IsSuiteProgramInstalled("sh"));
    EXPECT_FALSE(IsSuiteProgramInstalled("no-such-program-anywhere"));
}

TEST_F(ConfigPanelsTest, NamesThatTheTreeCannotHoldAreRefused) {
    AddFolderEntry(u"", u"Servers", u"", false);
    AddFolderEntry(u"Servers", u"web", u"", false);
    using Fault = SessionNameFault;
    const std::u16string longest(kMaxSessionNameLength, u'n');
    // The folder, the old name and the new one.
    const std::tuple<const char16_t*, const char16_t*, std::u16string, Fault> rows[] = {
        {u"", u"", u"a b/c%d\"e'f", Fault::kNone},
        {u"", u"", u"\u540D\U0001F600", Fault::kNone},
        {u"", u"", longest, Fault::kNone},
        {u"", u"", longest + u"n", Fault::kTooLong},
        {u"", u"", u"", Fault::kEmpty},
        {u"", u"", u"a\\b", Fault::kSeparator},
        {u"", u"", u"a:b", Fault::kColon},
        {u"", u"", u"txt\u202Egpj", Fault::kControl},
        {u"", u"", std::u16string(u"a\0b", 3), Fault::kControl},
        {u"", u"", {u'a', 0xD800}, Fault::kHalfCharacter},
        {u"", u"", u" a", Fault::kBlankAtEdge},
        {u"", u"", u"a\u3000", Fault::kBlankAtEdge},
        {u"", u"", u".", Fault::kDots},
        {u"", u"", u"..", Fault::kDots},
        {u"", u"", u"...", Fault::kNone},
        {u"Servers", u"", u"__FOLDERDATA__", Fault::kFolderData},
        {u"", u"", u"default", Fault::kTemplate},
        {u"", u"Default", u"DEFAULT", Fault::kNone},
        {u"Servers", u"", u"Default", Fault::kNone},
        {u"", u"", u"SERVERS", Fault::kTaken},
        {u"", u"Servers", u"SERVERS", Fault::kNone},
        {u"Servers", u"", u"Web", Fault::kTaken},
    };
    for (const auto& [parent, oldName, newName, fault] : rows) {
        const VUnicodeString name{std::u16string_view(newName)};
        EXPECT_EQ(CheckSessionName(parent, oldName, name), fault) << testing::PrintToString(newName);
        EXPECT_EQ(DescribeSessionNameFault(fault, name).IsEmpty(), fault == Fault::kNone);
    }
    EXPECT_FALSE(ValidateSessionName(u"Servers", u"New", u"Web", true, nullptr)) << "the path is the folder";
    EXPECT_TRUE(ValidateSessionName(u"", u"New", u"Web", true, nullptr));
    EXPECT_TRUE(ValidateSessionName(u"Servers\\web", u"web", u"Web", false, nullptr));
}

}  // namespace
}  // namespace connectdialog::test
