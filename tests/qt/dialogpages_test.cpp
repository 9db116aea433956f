// The dialogs with pages on real widgets: quick connect and the new session wizard over the reference suite.
#include <gtest/gtest.h>

#include "layoutcheck.h"
#include "qtuser.h"
#include "quickconnect/quickconnect.h"
#include "resources/dialogids.h"
#include "suite/protocols/pages.h"
#include "support/suitetest.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog::test {
namespace {

class QtPages : public SuiteTest {
  protected:
    ~QtPages() override {
        CleanupQuickConnectDialog();
        EXPECT_EQ(kit.TakeFaults(), "");
    }
    VRef<ISessionConfig> Show(const QtPlayedKit::DialogScript& script, unsigned kind = 3) {
        kit.ExpectDialog(QuickConnectIds::kDialog, script);
        ISessionConfig* chosen = nullptr;
        ShowQuickConnectDialog(&chosen, u"", kind, nullptr);
        return VRef<ISessionConfig>::Adopt(chosen);
    }

    QtPlayedKit kit;
};

TEST_F(QtPages, AHostIsTypedAndReturnConnects) {
    const auto session = Show([](QtUserDialog& dialog) {
        ASSERT_NE(dialog.GetPage(), nullptr);
        EXPECT_EQ(dialog.GetPage()->GetFocus(), kFirstPageField);
        EXPECT_FALSE(dialog.IsEnabled(kIdOk));
        dialog.PressKey(kKeyReturn);
        for (const char16_t letter : {u'W', u'E', u'B'}) dialog.PressKey(letter);
        EXPECT_TRUE(dialog.IsEnabled(kIdOk));
        EXPECT_TRUE(dialog.Pick(QuickConnectIds::kProtocol, u"Telnet"_v));
        EXPECT_EQ(dialog.GetPage()->GetText(kFirstPageField), u"web");
        dialog.PressKey(kKeyTab);
        EXPECT_EQ(dialog.GetPage()->GetFocus(), kFirstPageField) << "behind the combo box";
        dialog.PressKey(kKeyReturn);
        EXPECT_TRUE(dialog.IsClosed());
    });
    ASSERT_TRUE(session);
    VUnicodeString text;
    session->GetProtocolName(text);
    EXPECT_EQ(text, u"Telnet");
    session->GetConnectConfig()->GetHostName(text);
    EXPECT_EQ(text, u"web");
    EXPECT_FALSE(Show([](QtUserDialog& dialog) { dialog.PressKey(kKeyEscape); })) << "Escape in the page";
}

TEST_F(QtPages, NoPageOfAProtocolHasTextsCutOffOrControlsOnEachOther) {
    for (const ProtocolSide side : {ProtocolSide::kTerminal, ProtocolSide::kTransfer}) {
        const bool isTransfer = side == ProtocolSide::kTransfer;
        CleanupQuickConnectDialog();
        InstallReferenceSuite(isTransfer ? u"Tessaly" : u"NorHalden", *factory);
        const auto look = [side](QtUserDialog& dialog) {
            for (const ProtocolPage& page : GetProtocolPages()) {
                if (page.side != side) continue;
                EXPECT_TRUE(dialog.Pick(QuickConnectIds::kProtocol, VUnicodeString(page.protocol)));
                ASSERT_NE(dialog.GetPage(), nullptr);
                CheckLayout(dialog.GetPage()->GetFrame(), "page " + std::to_string(page.dialog.id));
            }
        };
        Show(look, isTransfer ? 6 : 3);
    }
}

TEST_F(QtPages, TheWizardIsWalkedWithItsButtons) {
    for (const bool isBothInstalled : {false, true}) {
        const auto both = isBothInstalled ? std::make_unique<BothInstalled>() : nullptr;
        const auto config = VRef<SessionConfig>::Adopt(new SessionConfig(u"New", nullptr));
        kit.ExpectDialog(WizardIds::kSheet, [&](QtUserDialog& sheet) {
            const auto look = [&](int id) {
                ASSERT_EQ(sheet.GetPage()->GetTemplateId(), id);
                EXPECT_NE(sheet.GetPage()->GetFocus(), kNoId);
                CheckLayout(sheet.GetPage()->GetFrame(), "page " + std::to_string(id));
            };
            const auto press = [&](int button) {
                EXPECT_TRUE(sheet.Press(button));
                if (!both) return;
                look(WizardIds::kTransferPage);
                EXPECT_TRUE(sheet.Press(button));
            };
            look(both ? WizardIds::kTerminalPage : WizardIds::kSinglePage);
            EXPECT_FALSE(sheet.Press(WizardIds::kBack));
            EXPECT_TRUE(sheet.GetPage()->Pick(WizardIds::kProtocol, u"SSH2"_v));
            EXPECT_TRUE(sheet.Press(WizardIds::kNext));
            look(FindProtocolPage(u"SSH2")->dialog.id);
            EXPECT_TRUE(sheet.GetPage()->Type(kFirstPageField, u"Web"_v));
            press(WizardIds::kNext);
            look(WizardIds::kFinishPage);
            press(WizardIds::kBack);
            EXPECT_EQ(sheet.GetPage()->GetText(kFirstPageField), u"Web");
            press(WizardIds::kNext);
            EXPECT_TRUE(sheet.Press(WizardIds::kFinish));
        });
        std::int64_t result = 0;
        bool usesWizard = false;
        EXPECT_TRUE(LaunchNewSessionWizard(*config, nullptr, result, usesWizard));
        EXPECT_EQ(result, VWizardSheet::kFinished);
        EXPECT_EQ(config->GetName(), u"Web");
    }
}

}  // namespace
}  // namespace connectdialog::test
