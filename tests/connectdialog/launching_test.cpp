// From a selection to work for a host.
#include "imports/dialogkit/appname.h"
#include "platform/codepage.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

class Launching : public ConnectDialogTest {
  protected:
    void SetProduct(AppKind kind) {
        panels.product = kind;
        SetAppName(kind == AppKind::kTessaly ? u"Tessaly"_v : u"NorHalden"_v);
    }
    /// Opens the dialog with these selected.
    void OpenWith(std::initializer_list<std::u16string_view> paths, const ConnectDialogOptions& mode = {}) {
        Open(mode);
        Click(paths);
    }
    std::string Outcome() {
        std::string text = !Window().IsClosed() ? "open " : dialog->GetResult() == 1 ? "accepted " : "cancelled ";
        for (const VRef<ISessionConfig>& config : dialog->GetChosenConfigs()) text += Escape(config->GetName()) + ' ';
        for (const VUnicodeString& launch : panels.launches) text += platform::ToNarrow(launch) + ' ';
        panels.launches.clear();
        text.pop_back();
        return text;
    }
};

TEST_F(Launching, WhatASessionCanDoAndWhichHostRunsDecideWhereItOpens) {
    AddSession(u"A\\both", u"SSH2", u"SFTP");
    AddSession(u"A\\term", u"SSH2", u"None");
    AddSession(u"A\\xfer", u"None", u"SFTP");
    AddSession(u"A\\none", u"None", u"None");
    MakeFolder(u"empty");
    struct Row {
        AppKind product;
        int command;
        std::initializer_list<std::u16string_view> selected;
        const char* outcome;
    };
    using namespace ConnectCommands;
    const AppKind term = AppKind::kNorHalden;
    const AppKind xfer = AppKind::kTessaly;
    const Row rows[] = {
        {term, kConnect, {u"A\\both"}, "accepted both"},
        {term, ConnectDialogIds::kConnect, {u"A\\term"}, "accepted term"},
        {term, kConnect, {u"A\\xfer"}, "open transfer: app /S \"A\\xfer\""},
        {term, kConnect, {u"A\\none"}, "open"},
        {term, kConnect, {u"A\\term", u"A\\none"}, "accepted term"},
        {term, kConnect, {u"A\\xfer", u"A\\none"}, "accepted"},  // several never launch the sister
        {term, kConnect, {u"A"}, "accepted both term"},
        {term, kConnect, {u"empty"}, "open"},
        {xfer, kConnect, {u"A\\xfer"}, "accepted xfer"},
        {xfer, kConnect, {u"A\\term"}, "open terminal: app /S \"A\\term\""},
        {AppKind::kHalden, kConnect, {u"A\\term"}, "accepted term"},
        {AppKind::kOther, kConnect, {u"A\\both"}, "open"},
        {term, kConnectInTerminal, {u"A\\both"}, "accepted both"},
        {xfer, kConnectInTerminal, {u"A\\both"}, "cancelled terminal: app /S \"A\\both\""},
        {term, kConnectInTerminal, {u"A\\both", u"A\\term"}, "open"},
        {term, kConnectInTransfer, {u"A\\both"}, "cancelled transfer: app /S \"A\\both\""},
        {xfer, kConnectInTransfer, {u"A\\both"}, "accepted both"},
        {term, kConnectInBoth, {u"A\\both"}, "accepted both transfer: app /S \"A\\both\""},
        {xfer, kConnectInBoth, {u"A\\both"}, "accepted both terminal: app /S \"A\\both\""},
        {term, kConnectInBoth, {u"A\\none"}, "open"},
    };
    for (const Row& row : rows) {
        SetProduct(row.product);
        OpenWith(row.selected);
        Command(row.command);
        EXPECT_EQ(Outcome(), row.outcome) << row.command << ' ' << Escape(*row.selected.begin());
    }
}

TEST_F(Launching, NothingIsLaunchedThatIsNotInstalled) {
    AddSession(u"xfer", u"None", u"SFTP");
    AddSession(u"both", u"SSH2", u"SFTP");
    panels.isTransferInstalled = false;
    OpenWith({u"xfer"});
    Command(ConnectCommands::kConnect);
    EXPECT_EQ(Outcome(), "open");
    Click(u"both");
    EXPECT_TRUE(dialog->CanConnect(false));
    EXPECT_FALSE(dialog->CanConnect(true));
    Click(u"xfer", Accelerator::kControl);
    EXPECT_FALSE(dialog->CanConnect(false)) << "several";
}

TEST_F(Launching, AMissingHostIsAskedForOnceAndKept) {
    for (const AppKind product : {AppKind::kNorHalden, AppKind::kTessaly}) {
        SetProduct(product);
        AddSession(u"s", u"SSH2", u"SFTP", u"");
        AddSession(u"t", u"SSH2", u"SFTP", u"");
        OpenWith({u"s", u"t"});
        for (const bool isGivenUp : {true, false})
            kit.ExpectDialog(HostnamePromptIds::kDialog, [=](HeadlessDialog& prompt) {
                EXPECT_EQ(prompt.GetText(HostnamePromptIds::kSessionName), isGivenUp ? u"s" : u"t");
                if (isGivenUp) return;
                prompt.Type(HostnamePromptIds::kHostname, u"t.example"_v);
                prompt.Press(kIdOk);
            });
        Command(ConnectCommands::kConnect);
        EXPECT_EQ(Outcome(), "accepted t") << "of several, only the one that was given up drops out";
        OpenWith({u"t"});
        Command(ConnectCommands::kConnect);
        EXPECT_EQ(Outcome(), "accepted t") << "the answer was saved";
        VUnicodeString other;
        const VRef<ISessionConfig> saved = OpenSession(u"t"_v);
        (product == AppKind::kTessaly ? saved->GetConnectConfig() : saved->GetTransferConnectConfig())
            ->GetHostName(other);
        EXPECT_EQ(other, u"") << "for the side that runs";
        OpenWith({u"s"}, {false, false, true, true, nullptr});
        Command(ConnectCommands::kConnect);
        EXPECT_EQ(Outcome(), "accepted s") << "who browses is not asked";
        dialog.reset();
    }
}

TEST_F(Launching, MoreThanTwentySessionsAreOpenedOnlyAfterAsking) {
    for (int i = 10; i < 31; ++i) AddSession((u"f\\s"_v + VUnicodeString(std::to_string(i).c_str())).GetData());
    MakeFolder(u"f\\g");
    OpenWith({u"f"});
    for (const int button : {kIdCancel, kIdOk}) {
        kit.ExpectDialog(MultiConnectIds::kDialog, [=](HeadlessDialog& warning) {
            warning.Tick(MultiConnectIds::kDontShowAgain, true);
            warning.Press(button);
        });
        Command(ConnectCommands::kConnect);
        EXPECT_EQ(panels.global->suppressMultiConnectWarning.Get(), button == kIdOk);
        EXPECT_EQ(dialog->GetChosenConfigs().GetCount(), button == kIdOk ? 21U : 0U);
    }
    ASSERT_EQ(dialog->GetChosenPaths().GetCount(), 1U);
    EXPECT_EQ(dialog->GetChosenPaths()[0], u"f");
    OpenWith({u"f"});
    Command(ConnectCommands::kConnect);
    EXPECT_EQ(dialog->GetResult(), 1) << "no warning any more";
    panels.global->suppressMultiConnectWarning.Set(false);
    OpenWith({u"f\\s10"});
    Click(u"f\\s29", Accelerator::kShift);
    Command(ConnectCommands::kConnect);
    EXPECT_EQ(dialog->GetChosenConfigs().GetCount(), 20U) << "twenty pass quietly";
}

TEST_F(Launching, OpeningInATabIsTheCheckBoxTheCommandOrAlways) {
    AddSessions({u"s"});
    OpenWith({u"s"});
    Command(ConnectCommands::kConnect);
    EXPECT_FALSE(dialog->IsOpenInTab());
    OpenWith({u"s"});
    Command(ConnectCommands::kOpenInTab);
    EXPECT_TRUE(dialog->IsOpenInTab());
    EXPECT_EQ(Outcome(), "accepted s");
}

TEST_F(Launching, QuickConnectKeepsItsSessionInTheSelectedFolder) {
    AddSessions({u"f\\s"});
    OpenWith({u"f\\s"});
    Command(ConnectCommands::kQuickConnect);
    EXPECT_EQ(Outcome(), "open");
    EXPECT_EQ(dialog->quickConnectFolder, u"f");
    EXPECT_EQ(Selected(), "");
    dialog->quickConnectResult = kDialogAccepted;
    Command(ConnectCommands::kMenuQuickConnect);
    EXPECT_EQ(dialog->quickConnectFolder, u"") << "nothing was selected any more";
    EXPECT_EQ(Outcome(), "accepted quick");
    const int saves = dynamic_cast<FakeGlobalConfig&>(*panels.global).saves;
    dialog->Destroy();
    EXPECT_EQ(dynamic_cast<FakeGlobalConfig&>(*panels.global).saves, saves + 1) << "the settings of this run stay";
}

}  // namespace
}  // namespace connectdialog::test
