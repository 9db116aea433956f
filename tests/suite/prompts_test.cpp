#include <gtest/gtest.h>

#include "config/firewallconfig.h"
#include "foundation/vunicodestringi.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vdialog.h"
#include "sessiondb/firewalllist.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

class PromptsTest : public SuiteTest {
  protected:
    ~PromptsTest() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    HeadlessDialogKit kit;
};

TEST_F(PromptsTest, AFirewallAsksForWhatItLacks) {
    WithKey(u"Firewalls\\hop", [](VProfileKey& key) { key.WriteString(u"Firewall Type", u"SOCKSv5_USERPASS"); });
    const auto firewall = VRef<FirewallConfig>::Adopt(LoadFirewall(u"hop"_v));
    VUnicodeStringI answer;
    kit.ExpectDialog(FirewallPromptIds::kUsernameDialog, [](HeadlessDialog& dialog) {
        EXPECT_FALSE(dialog.Press(kIdOk)) << "a name is wanted";
        dialog.Type(FirewallPromptIds::kAnswer, u"root"_v);
        dialog.Tick(FirewallPromptIds::kSave, true);
        dialog.Press(kIdOk);
    });
    EXPECT_TRUE(firewall->GetUsername(&answer));
    EXPECT_EQ(answer, u"root");
    kit.ExpectDialog(FirewallPromptIds::kPasswordDialog,
                     [](HeadlessDialog& dialog) { dialog.Type(FirewallPromptIds::kAnswer, u"given up"_v); });
    EXPECT_FALSE(firewall->GetPassword(&answer));
    EXPECT_EQ(answer, u"");
    kit.ExpectDialog(FirewallPromptIds::kPasswordDialog, [](HeadlessDialog& dialog) {
        dialog.Type(FirewallPromptIds::kAnswer, u"s3cret"_v);
        dialog.Press(kIdOk);
    });
    EXPECT_TRUE(firewall->GetPassword(&answer));
    EXPECT_EQ(answer, u"s3cret");
    EXPECT_TRUE(answer.IsSensitive());
    const auto stored = VRef<FirewallConfig>::Adopt(LoadFirewall(u"hop"_v));
    EXPECT_TRUE(stored->GetUsername(&answer));
    EXPECT_EQ(answer, u"root") << "asked to be saved";
}

TEST_F(PromptsTest, ABoxThatIsNotWantedAgainIsRememberedInTheStoreAtOnce) {
    VRef<GlobalConfig> global;
    ASSERT_TRUE(GetGlobalConfig(global, -1));
    global->lineSendDelay.Set(77);
    const auto show = [&](bool isTicked, int button, bool isQuestion) {
        kit.ExpectDialog(OptionalBoxIds::kDialog, [&](HeadlessDialog& dialog) {
            EXPECT_EQ(dialog.GetText(OptionalBoxIds::kText), u"一\n二");
            dialog.Tick(OptionalBoxIds::kDontShowAgain, isTicked);
            EXPECT_TRUE(dialog.Press(button));
        });
        return ShowOptionalMessageBox(nullptr, u"一\r\n二\r\n"_v, VUnicodeString(), global->suppressMultiEditWarning,
                                      u"OK"_v, isQuestion, 1, ~0U);
    };
    const auto stored = [&] { return ReadDwordOr(*factory, kGlobalKey, u"Suppress Multi Edit Warning", 99); };
    EXPECT_NE(show(true, kIdCancel, false), 1);
    EXPECT_EQ(show(false, kIdOk, false), 1);
    EXPECT_EQ(stored(), 99U);
    EXPECT_NE(show(true, OptionalBoxIds::kNo, true), 1);
    EXPECT_EQ(stored(), 1U);
    EXPECT_EQ(ReadDwordOr(*factory, kGlobalKey, u"Line Send Delay", 99), 99U) << "only what the box changed";
}

}  // namespace
}  // namespace connectdialog::test
