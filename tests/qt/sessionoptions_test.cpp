#include "suite/sessionoptions/sessionoptions.h"

#include <gtest/gtest.h>

#include "config/protocolchoice.h"
#include "config/settingwalk.h"
#include "imports/configpanels.h"
#include "layoutcheck.h"
#include "qtuser.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

class QtSessionOptions : public SuiteTest {
  protected:
    ~QtSessionOptions() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    std::int64_t Run(ISessionConfig& session, const QtPlayedKit::DialogScript& script) {
        kit.ExpectDialog(OptionIds::kDialog, script);
        return ShowSessionOptions(&session, 0, false, false, nullptr);
    }
    static int At(std::u16string_view setting) {
        for (const OptionControl& known : GetOptionControls())
            if (known.field.setting == setting) return known.control;
        return kNoId;
    }
    static void Focus(QtUserDialog& dialog, int id) { dialog.GetControl(id)->setFocus(); }

    QtPlayedKit kit;
};

TEST_F(QtSessionOptions, AUserEditsASessionByKeyboardAndMouse) {
    const VRef<SessionConfig> session = Make(u"SSH2");
    EXPECT_EQ(Run(*session,
                  [&](QtUserDialog& dialog) {
                      EXPECT_EQ(dialog.GetFocus(), At(u""));
                      EXPECT_TRUE(dialog.Type(At(u"Hostname"), u"typed.example"_v));
                      EXPECT_TRUE(dialog.Pick(At(u"Transfer Protocol Name"), u"None"_v));
                      EXPECT_TRUE(dialog.Pick(At(u"Protocol Name"), u"Telnet"_v));
                      EXPECT_FALSE(dialog.IsShown(At(u"SSH Port")));
                      EXPECT_TRUE(dialog.Type(At(u"Telnet Port"), u"0"_v));
                      kit.ExpectBox(u"“Telnet 端口”必须是 1 到 65535 之间的整数。"_v, 1);
                      Focus(dialog, OptionIds::kPages);
                      dialog.PressKey(kKeyDown);
                      EXPECT_EQ(dialog.GetFocus(), At(u"Telnet Port")) << "it stays with what was refused";
                      EXPECT_TRUE(dialog.Type(At(u"Telnet Port"), u"2323"_v));
                      EXPECT_TRUE(dialog.Type(At(u"Description"), u"one\ntwo"_v));
                      Focus(dialog, OptionIds::kPages);
                      dialog.PressKey(kKeyEnd);
                      EXPECT_TRUE(dialog.Type(OptionIds::kFilter, u"jump scroll"_v));
                      EXPECT_TRUE(dialog.Pick(OptionIds::kSettingChoice, u"否"_v));
                      dialog.Press(kIdOk);
                  }),
              1);
    VUnicodeString text;
    session->GetConnectConfig()->GetHostName(text);
    EXPECT_EQ(Escape(text), "typed.example");
    EXPECT_EQ(session->GetConnectConfig()->GetPort(), 2323);
    session->description.GetText(text, false);
    EXPECT_EQ(text, u"one\ntwo");
    EXPECT_FALSE(session->terminal.jumpScroll.Get());
}

TEST_F(QtSessionOptions, NoPageHasTextsCutOffOrControlsOnEachOther) {
    FetchGlobalConfig()->optionsPagePath.Set(u"Connection"_v);
    for (const VUnicodeString& protocol : ListProtocols(ProtocolSide::kTerminal)) {
        const VRef<SessionConfig> session = Make(protocol.GetData());
        Run(*session, [](QtUserDialog& dialog) {
            Focus(dialog, OptionIds::kPages);
            for (const OptionPage& page : GetOptionPages()) {
                EXPECT_EQ(dialog.GetText(OptionIds::kPageFrame), page.title);
                CheckLayout(dialog.GetFrame(), Escape(page.path));
                dialog.PressKey(kKeyDown);
            }
        });
        FetchGlobalConfig()->optionsPagePath.Set(u"Connection"_v);
    }
}

}  // namespace
}  // namespace connectdialog::test
