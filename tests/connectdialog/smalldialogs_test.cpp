#include "connectdialog/findsessiondialog.h"
#include "connectdialog/multiconnectwarningdialog.h"
#include "connectdialog/shortcutnamedialog.h"
#include "foundation/vunicodestringi.h"
#include "quickconnect/hostnameprompt.h"
#include "resources/dialogids.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "support/fakesuite.h"

namespace connectdialog::test {
namespace {

class SmallDialogs : public LibraryTest {
  protected:
    ~SmallDialogs() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    HeadlessDialogKit kit;
};

TEST_F(SmallDialogs, AShortcutGetsALabelThatIsNotBlank) {
    const VUnicodeString one =
        u"NorHalden will create a shortcut on the\nDesktop to the following session or folder:"_v;
    const VUnicodeString several = u"NorHalden will create a shortcut on the\nDesktop to the selected sessions."_v;
    struct Row {
        const char16_t* path;
        bool multiple;
        const char16_t* name;
        const char16_t* shownPath;
    };
    for (const Row& row : {Row{u"A\\B & C", false, u"B & C", u"A\\B && C"},
                           {u"A\\B", true, u"NorHalden sessions", u""},
                           {u"", false, u"NorHalden sessions", u""}}) {
        kit.ExpectDialog(ShortcutNameIds::kDialog, [&](HeadlessDialog& dialog) {
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kName), row.name);
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kPath), row.shownPath);
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kIntro), *row.shownPath != 0 ? one : several);
            dialog.Type(ShortcutNameIds::kName, u" \t "_v);
            kit.ExpectBox(u"Shortcut name error.\n\nShortcut name must be non-empty."_v, kAnswerOk);
            dialog.Press(kIdOk);
            EXPECT_FALSE(dialog.IsClosed());
            EXPECT_EQ(dialog.GetFocus(), ShortcutNameIds::kName);
            dialog.Type(ShortcutNameIds::kName, u"  my box "_v);
            dialog.PressKey(kKeyReturn);
        });
        ShortcutNameDialog dialog(row.path, row.multiple, nullptr);
        EXPECT_EQ(dialog.DoModal(), kDialogAccepted);
        EXPECT_EQ(dialog.GetShortcutName(), u"my box");
    }
}

TEST_F(SmallDialogs, FindNeedsATextAndOnePlaceToLookIn) {
    using namespace FindSessionIds;
    FindOptions remembered;
    remembered.inHostnames = remembered.inFolderNames = false;
    kit.ExpectDialog(kDialog, [&](HeadlessDialog& dialog) {
        EXPECT_EQ(dialog.GetTitle(), u"查找会话");
        EXPECT_FALSE(dialog.PressKey(kKeyReturn)) << "no text";
        dialog.Type(kText, u"web"_v);
        dialog.Tick(kSessionNames, false);
        EXPECT_TRUE(dialog.IsEnabled(kIdOk));
        dialog.Tick(kDescriptions, false);
        dialog.Tick(kMatchCase, true);
        EXPECT_FALSE(dialog.IsEnabled(kIdOk)) << "nowhere to look";
        dialog.Tick(kHostnames, true);
        EXPECT_TRUE(dialog.Press(kIdOk));
    });
    FindSessionDialog dialog(remembered, nullptr);
    EXPECT_EQ(dialog.DoModal(), kDialogAccepted);
    const FindOptions& query = dialog.GetOptions();
    EXPECT_EQ(query.text, u"web");
    EXPECT_TRUE(query.inHostnames && query.matchCase);
    EXPECT_FALSE(query.inSessionNames || query.inFolderNames || query.inDescriptions);
}

TEST_F(SmallDialogs, AHostNameIsAskedForUntilItIsATextOrGivenUp) {
    const auto answer = [&] {
        kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) {
            dialog.Type(HostnamePromptIds::kHostname, u"x"_v);
            dialog.Type(HostnamePromptIds::kHostname, u""_v);
            EXPECT_FALSE(dialog.Press(kIdOk));
            dialog.Type(HostnamePromptIds::kHostname, u" "_v);
            EXPECT_TRUE(dialog.Press(kIdOk)) << "blanks are a text";
        });
    };
    VUnicodeStringI host(u"before");
    kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) { dialog.CloseByFrame(); });
    EXPECT_EQ(LaunchHostnamePromptDialog(u"s", &host, nullptr), kDialogCancelled);
    EXPECT_EQ(host, u"before");
    answer();
    EXPECT_EQ(LaunchHostnamePromptDialog(u"s", &host, nullptr), kDialogAccepted);
    EXPECT_EQ(host, u" ");
}

TEST(SmallDialogsWithoutBackEnd, AreClosedWithNothingChosen) {
    bool suppressed = true;
    EXPECT_EQ(MultiConnectWarningDialog(suppressed, nullptr).DoModal(), kDialogCancelled);
    EXPECT_EQ(VMessageBox(nullptr, u"sure?"_v, kBoxYesNo), kAnswerCancel);
}

}  // namespace
}  // namespace connectdialog::test
