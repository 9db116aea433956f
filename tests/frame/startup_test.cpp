#include <set>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/vcriticalsection.h"
#include "frame/connectdialogapi.h"
#include "imports/dialogkit/browseforfolder.h"
#include "imports/dialogkit/windowclass.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

constexpr char16_t kOldMarker[] = u"0311ABC6-1CDD-46fc-A08A-0D7C00242FCA";

class StartupTest : public LibraryTest {
  protected:
    static VProfileStoreFactory* CountingGetter() {
        ++stores;
        return counted;
    }
    StartupTest() {
        counted = factory.get();
        stores = 0;
        ConnectDialogDllInitProfileFactory(CountingGetter);
    }
    static inline VProfileStoreFactory* counted = nullptr;
    static inline int stores = 0;
};

TEST_F(StartupTest, TheUpgradeRunsOnceAndOnlyForOldData) {
    MakeSession(u"f\\s");
    const std::pair<VUnicodeString, bool> rows[] = {{u"", false},
                                                    {VUnicodeString(kOldMarker) + u"x", false},
                                                    {u"0311abc6-1cdd-46fc-a08a-0d7c00242fca", false},
                                                    {kOldMarker, true}};
    for (const auto& [marker, runs] : rows) {
        panels.global->configUpgradeMarker.Set(marker);
        panels.global->saves = 0;
        stores = 0;
        ConnectDialogInitGUI(nullptr, nullptr, nullptr);
        EXPECT_EQ(panels.global->saves, runs ? 1 : 0);
        EXPECT_EQ(stores > 0, runs);
    }
    EXPECT_EQ(panels.global->configUpgradeMarker.Get(), u"7B2F2717-85C8-4729-8394-3B7697039CEB");
    stores = 0;
    ConnectDialogInitGUI(nullptr, nullptr, nullptr);
    EXPECT_EQ(stores, 0);
    EXPECT_EQ(panels.initCalls, 5);
    EXPECT_EQ(panels.pick, &ShowConnectDialogMultiSelectBrowseMode);
    EXPECT_TRUE(GetModuleState().connectClassRegistered);
    EXPECT_NE(FindWindowClass(u"Brennmark Software Connect Dialog"), nullptr);
    panels.global = nullptr;
    ConnectDialogInitGUI(nullptr, nullptr, nullptr);
    EXPECT_EQ(panels.initCalls, 6) << "without global settings the neighbours are still introduced";
}

TEST_F(StartupTest, ResultsOutliveTheirCleanupWithTheirOwner) {
    EXPECT_EQ(GetConnectDialogSessionConfig(0), nullptr);
    GetModuleState().connectResultConfigs.Add(VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"s", nullptr)));
    EXPECT_EQ(GetConnectDialogSessionConfigCount(), 1U);
    EXPECT_EQ(GetConnectDialogSessionConfig(1), nullptr);
    const auto kept = VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(0));
    CleanupConnectDialogSessionConfigs();
    EXPECT_EQ(GetConnectDialogSessionConfigCount(), 0U);
    EXPECT_EQ(kept->GetName(), u"s");
}

TEST_F(StartupTest, WhatTheHostHandsInIsReplaced) {
    ConnectDialogInitApplicationCommandLine(u"app");
    EXPECT_EQ(GetHostCallbacks().applicationCommandLine, u"app");
    ConnectDialogInitApplicationCommandLine(nullptr);
    EXPECT_TRUE(GetHostCallbacks().applicationCommandLine.IsEmpty());
    auto lock = VRef<ISynchObject>::Adopt(new VCriticalSection);
    for (const std::int32_t references : {3, 2}) {
        ConnectDialogDllInit(nullptr, references == 3 ? lock.Get() : nullptr);
        EXPECT_EQ(lock->AddRef(), references);
        lock->Release();
    }
    const std::set<unsigned> numbers = {GetGlobalConfigChangeMessage(), GetCreateNewTabMessage(),
                                        GetWakestoneShowSelectionMessage(), GetWakestoneCanExitApplicationMessage()};
    EXPECT_EQ(numbers.size(), 4U) << "each message has a number of its own";
    EXPECT_TRUE(*numbers.begin() >= 0xC000U && *numbers.rbegin() <= 0xFFFFU);
}

TEST_F(StartupTest, ASecondLookForKeyToolsDoesNothing) {
    GetSpecialFunctions(u"nowhere", u"missing.so");
    EXPECT_TRUE(GetModuleState().specialFunctionsLoaded);
    GetSpecialFunctions(nullptr, nullptr);
    EXPECT_EQ(g_pfnLaunchKeygenWizard, nullptr);
}

TEST(BrowseForFolder, TheAnswerCountsAlsoWhenItIsNoFolderOfTheDisk) {
    VUnicodeString path = u"\\first"_v;
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "nobody to ask with";
    HeadlessDialogKit kit;
    kit.ExpectFolder(nullptr);
    EXPECT_FALSE(VBrowseForFolder(nullptr, path)) << "given up";
    EXPECT_EQ(path, u"\\first");
    kit.ExpectFolder(u"\\chosen");
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"\\chosen");
    kit.ExpectFolder(u"");
    kit.ExpectBox(u"Failed to retrieve a valid path."_v, kAnswerOk);
    EXPECT_TRUE(VBrowseForFolder(nullptr, path));
    EXPECT_EQ(path, u"");
    EXPECT_EQ(kit.TakeFaults(), "");
}

}  // namespace
}  // namespace connectdialog::test
