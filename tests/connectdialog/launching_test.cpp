// From a selection to work for a host, also by a shortcut on the desktop.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "connectdialog/desktopshortcut.h"
#include "foundation/vnarrowstring.h"
#include "imports/dialogkit/appname.h"
#include "imports/hostcallbacks.h"
#include "platform/codepage.h"
#include "platform/desktopshortcut.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"
#include "support/faultystore.h"
#include "support/processrunner.h"
#include "support/temporaryfolder.h"

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
    AddSession(u"term", u"SSH2", u"None");
    panels.isTerminalInstalled = false;
    OpenWith({u"term"});
    Command(ConnectCommands::kConnect);
    EXPECT_EQ(Outcome(), "open");
    EXPECT_FALSE(dialog->CanConnect(false));
    panels.isTerminalInstalled = true;
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

TEST_F(Launching, AHostThatCannotBeKeptIsToldAndUsed) {
    AddSession(u"s", u"SSH2", u"None", u"");
    OpenWith({u"s"});
    FaultyStoreFactory wrapped(*factory);
    UseStore(wrapped);
    wrapped.plan.failAll = true;
    kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& prompt) {
        prompt.Type(HostnamePromptIds::kHostname, u"s.example"_v);
        prompt.Press(kIdOk);
    });
    kit.ExpectBox(u"ERROR: Could not save the session in the database."_v, kAnswerOk);
    Command(ConnectCommands::kConnect);
    EXPECT_EQ(Outcome(), "accepted s");
    UseStore(*factory);
}

TEST_F(Launching, MoreThanTwentySessionsAreOpenedOnlyAfterAsking) {
    for (int i = 10; i < 31; ++i) AddSession((u"f\\s"_v + VUnicodeString(std::to_string(i).c_str())).GetData());
    MakeFolder(u"f\\g");
    OpenWith({u"f", u"f\\s10"});
    for (const int button : {kIdCancel, kIdOk}) {
        kit.ExpectDialog(MultiConnectIds::kDialog, [=](HeadlessDialog& warning) {
            EXPECT_EQ(warning.GetTitle(), u"NorHalden");
            EXPECT_EQ(warning.GetText(MultiConnectIds::kText), u"你选定要打开的会话多于 20 个。");
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
    OpenWith({u"s"}, {false, true, false, true, nullptr});
    EXPECT_TRUE(dialog->IsOpenInTab());
}

TEST_F(Launching, ADoubleClickConnectsASessionAndOpensAFolder) {
    AddSessions({u"f\\s", u"t"});
    OpenWith({u"t"});
    EXPECT_TRUE(Tree().DoubleClick(At(u"f")));
    EXPECT_TRUE(Tree().Click(At(u"f\\s"))) << "in sight";
    EXPECT_EQ(Outcome(), "open");
    EXPECT_TRUE(Tree().DoubleClick(At(u"f\\s")));
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

namespace fs = std::filesystem;

class DesktopShortcutTest : public testing::Test {
  protected:
    DesktopShortcutTest() {
        setenv("XDG_CONFIG_HOME", scratch.GetPath().c_str(), 1);
        unsetenv("XDG_CURRENT_DESKTOP");
        scratch.Write("user-dirs.dirs", "XDG_DESKTOP_DIR=\"" + desktop.string() + "\"\n");
    }
    ~DesktopShortcutTest() override { unsetenv("XDG_CONFIG_HOME"); }

    fs::path FileOf(const std::string& label) const { return desktop / (label + ".desktop"); }

    TemporaryFolder scratch;
    const fs::path desktop = scratch.GetPath() / "My Desktop";
};

/// Values that mean something to a shell, to the quoting rules or to their two levels.
const std::vector<std::string> kArguments = {
    "/S",        "A\\B c", "%U %% %", "\"q\" \\\" \\\\", "$(touch x) `y` $HOME",  "a\nb",
    "tab\there", "",       " lead",   "*?#;&|<>~()'[]=", "\xC3\xA4 \xE4\xBC\x9A", "-x"};

TEST_F(DesktopShortcutTest, IsValidAndReachesTheProgramAsItIs) {
    const std::string program =
        scratch.WriteProgram("a program", "printf '<%s>\\n' \"$@\" > " + (scratch / "draft") + "; mv " +
                                              (scratch / "draft") + ' ' + (scratch / "out") + '\n');
    platform::ShortcutCommand command{{program}, false};
    command.arguments.insert(command.arguments.end(), kArguments.begin(), kArguments.end());
    ASSERT_TRUE(platform::MakeDesktopShortcut(u" 50% \u4F1A\u8BDD; \"x\"", command));
    const fs::path file = FileOf(" 50% \xE4\xBC\x9A\xE8\xAF\x9D; \"x\"");
    EXPECT_EQ(ModeOf(file), 0700U);
    if (platform::FindProgram("desktop-file-validate").empty() || platform::FindProgram("gio").empty())
        GTEST_SKIP() << "desktop-file-utils and gio tell what the file means";
    const ProcessResult checked = RunProcess({platform::FindProgram("desktop-file-validate"), file});
    EXPECT_EQ(checked.exitCode, 0) << checked.output;
    EXPECT_EQ(checked.output, "");
    const ProcessResult launched = RunProcess({platform::FindProgram("gio"), "launch", file});
    EXPECT_EQ(launched.exitCode, 0) << launched.errors;
    for (int i = 0; i < 500 && !fs::exists(scratch / "out"); ++i) RunProcess({"/bin/sleep", "0.01"});
    std::string expected;
    for (const std::string& argument : kArguments) expected += '<' + argument + ">\n";
    EXPECT_EQ(scratch.Read("out"), expected);
}

TEST_F(DesktopShortcutTest, ReplacesOneOfTheLabelAndRefusesWhatCannotBeOne) {
    ASSERT_TRUE(CreateShortcutTo({u"\\bin\\true", true, {}}, u"/S \"A\\B\" ", u"web"));
    for (const bool needsTerminal : {false, true}) {
        GetHostCallbacks().needsTerminal = needsTerminal;
        ASSERT_TRUE(CreateDesktopShortcut(u"/S \"other\" ", u"web", nullptr));
        const std::string entry = ReadFile(FileOf("web"));
        EXPECT_NE(entry.find("\nExec=\"" + fs::read_symlink("/proc/self/exe").string() + "\" \"/S\" \"other\"\n"),
                  std::string::npos)
            << entry;
        EXPECT_NE(entry.find(needsTerminal ? "\nTerminal=true\n" : "\nTerminal=false\n"), std::string::npos);
    }
    GetHostCallbacks().shortcutOptions.Add(u"--store"_v);
    GetHostCallbacks().shortcutOptions.Add(u"sqlite:/a b"_v);
    ASSERT_TRUE(CreateDesktopShortcut(u"/S \"other\" ", u"web", nullptr));
    EXPECT_NE(ReadFile(FileOf("web")).find("\" \"--store\" \"sqlite:/a b\" \"/S\" \"other\"\n"), std::string::npos);
    GetHostCallbacks() = {};
    const std::u16string half(1, char16_t{0xD800});
    for (const std::u16string& label :
         {std::u16string(), std::u16string(u".."), std::u16string(u"a/b"), std::u16string(u"a\\b"),
          std::u16string(u"a\nb"), std::u16string(u"a\0b", 3), half})
        EXPECT_FALSE(CreateShortcutTo({u"\\bin\\true", false, {}}, u"/S \"x\" ", VUnicodeString(label)));
    const std::pair<const char16_t*, VUnicodeString> rows[] = {
        {u"\\bin\\a=b", u""_v},
        {u"", u""_v},
        {u"\\bin\\true", u"/S \"x"_v},
        {u"\\bin\\true", u"/S \""_v + VUnicodeString(half) + u"\" "}};
    for (const auto& [program, arguments] : rows) EXPECT_FALSE(CreateShortcutTo({program, false, {}}, arguments, u"x"));
    fs::create_directory(FileOf("folder"));
    EXPECT_FALSE(CreateShortcutTo({u"\\bin\\true", false, {}}, u"", u"folder"));
    EXPECT_EQ(std::distance(fs::directory_iterator(desktop), fs::directory_iterator()), 2);
}

TEST_F(DesktopShortcutTest, IsMarkedAsTheDesktopAsks) {
    scratch.WriteProgram("gio", "echo \"$@\" >> " + (scratch / "marks") + "\nexit 1\n");
    const char* const searchPath = std::getenv("PATH");
    const std::string path = searchPath != nullptr ? searchPath : "/usr/bin:/bin";
    setenv("PATH", (scratch.GetPath().string() + ":" + path).c_str(), 1);
    const std::string web = FileOf("web").string();
    const std::pair<const char*, std::string> rows[] = {
        {"KDE", ""},
        {"ubuntu:GNOME", "set -t string -- " + web + " metadata::trusted true\n"},
        {"XFCE", "set -t string -- " + web + " metadata::xfce-exe-checksum "}};
    for (const auto& [desktops, mark] : rows) {
        setenv("XDG_CURRENT_DESKTOP", desktops, 1);
        fs::remove(scratch / "marks");
        EXPECT_TRUE(CreateShortcutTo({u"\\bin\\true", true, {}}, u"/S \"x\" ", u"web")) << "marked or not";
        const std::string marks = scratch.Read("marks");
        EXPECT_TRUE(mark.empty() ? marks.empty() : marks.starts_with(mark)) << marks;
    }
    const std::string sum = RunProcess({"/usr/bin/sha256sum", web}).output.substr(0, 64);
    EXPECT_TRUE(scratch.Read("marks").ends_with(sum + "\n"));
    setenv("PATH", path.c_str(), 1);
    unsetenv("XDG_CURRENT_DESKTOP");
}

TEST(RunQuietly, EndsWhatDoesNotEnd) {
    EXPECT_TRUE(platform::RunQuietly({"/bin/true"}, std::chrono::seconds(5)));
    EXPECT_FALSE(platform::RunQuietly({"/bin/false"}, std::chrono::seconds(5)));
    EXPECT_FALSE(platform::RunQuietly({"/bin/sleep", "60"}, std::chrono::milliseconds(50)));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kTimeout);
}

}  // namespace
}  // namespace connectdialog::test
