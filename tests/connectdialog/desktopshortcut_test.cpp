#include "connectdialog/desktopshortcut.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/vnarrowstring.h"
#include "imports/hostcallbacks.h"
#include "platform/codepage.h"
#include "platform/desktopshortcut.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "support/processrunner.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

namespace fs = std::filesystem;

VStringArray ListOf(const std::vector<VUnicodeString>& texts) {
    VStringArray list;
    for (const VUnicodeString& text : texts) list.Add(text);
    return list;
}

class DesktopShortcutTest : public testing::Test {
  protected:
    DesktopShortcutTest() {
        setenv("XDG_CONFIG_HOME", scratch.GetPath().c_str(), 1);
        unsetenv("XDG_CURRENT_DESKTOP");
        scratch.Write("user-dirs.dirs", "XDG_DESKTOP_DIR=\"" + desktop.string() + "\"\n");
    }
    ~DesktopShortcutTest() override { unsetenv("XDG_CONFIG_HOME"); }

    std::string WriteProgram(const std::string& name, const std::string& script) const {
        std::string path = scratch.Write(name, "#!/bin/sh\n" + script);
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }
    fs::path FileOf(const std::string& label) const { return desktop / (label + ".desktop"); }

    TemporaryFolder scratch;
    const fs::path desktop = scratch.GetPath() / "My Desktop";
};

/// Values that mean something to a shell, to the quoting rules or to their two levels.
const std::vector<std::string> kArguments = {
    "/S",        "A\\B c", "%U %% %", "\"q\" \\\" \\\\", "$(touch x) `y` $HOME",  "a\nb",
    "tab\there", "",       " lead",   "*?#;&|<>~()'[]=", "\xC3\xA4 \xE4\xBC\x9A", "-x"};

TEST_F(DesktopShortcutTest, IsValidAndReachesTheProgramAsItIs) {
    const std::string program = WriteProgram("a program", "printf '<%s>\\n' \"$@\" > " + (scratch / "draft") + "; mv " +
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

TEST_F(DesktopShortcutTest, ALabelMayBeLongerThanAFilesName) {
    for (const char16_t last : {u'1', u'2'}) {
        const VUnicodeString label(std::u16string(83, u'\u4F1A') + last);  // three bytes each
        ASSERT_TRUE(CreateShortcutTo({u"\\bin\\true", true, {}}, u"", label));
        ASSERT_TRUE(CreateShortcutTo({u"\\bin\\true", true, {}}, u"", label)) << "in place of the first";
    }
    std::vector<std::string> labels;
    for (const fs::path& file : fs::directory_iterator(desktop)) {
        const std::string name = file.filename().string();
        EXPECT_LE(name.size(), 255U);
        EXPECT_TRUE(name.ends_with(".desktop"));
        EXPECT_EQ(platform::ToNarrow(platform::ToWide(name)), name) << "whole characters";
        const std::string entry = ReadFile(file);
        labels.push_back(entry.substr(entry.find("Name=") + 5 + 83 * 3, 2));
    }
    std::ranges::sort(labels);
    EXPECT_EQ(labels, (std::vector<std::string>{"1\n", "2\n"})) << "each has its own file and its whole label";
}

TEST_F(DesktopShortcutTest, IsMarkedAsTheDesktopAsks) {
    WriteProgram("gio", "echo \"$@\" >> " + (scratch / "marks") + "\nexit 1\n");
    const char* const searchPath = std::getenv("PATH");
    const std::string path = searchPath != nullptr ? searchPath : "/usr/bin:/bin";
    setenv("PATH", (scratch.GetPath().string() + ":" + path).c_str(), 1);
    const std::string web = FileOf("web").string();
    const struct {
        const char* desktops;
        std::string mark;
    } rows[] = {{"KDE", ""},
                {"ubuntu:GNOME", "set -t string -- " + web + " metadata::trusted true\n"},
                {"XFCE", "set -t string -- " + web + " metadata::xfce-exe-checksum "}};
    for (const auto& row : rows) {
        setenv("XDG_CURRENT_DESKTOP", row.desktops, 1);
        fs::remove(scratch / "marks");
        EXPECT_TRUE(CreateShortcutTo({u"\\bin\\true", true, {}}, u"/S \"x\" ", u"web")) << "marked or not";
        const std::string marks = scratch.Read("marks");
        EXPECT_TRUE(row.mark.empty() ? marks.empty() : marks.starts_with(row.mark)) << marks;
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
