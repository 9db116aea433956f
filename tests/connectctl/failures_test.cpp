#include <fstream>
#include <sys/stat.h>

#include "profile/vprofilekey.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, WrongUsageIsTold) {
    const std::vector<std::vector<std::string>> rows = {
        {},
        {"frob"},
        {"ls", "--frob"},
        {"ls", "a", "b"},
        {"show"},
        {"get", "x"},
        {"set", "x", "y"},
        {"connect"},
        {"import"},
        {"import", "openssh"},
        {"trace"},
        {"completion", "csh"},
        {"connect", "x", "--json"},
    };
    for (const auto& arguments : rows) RunBadly(arguments, 2);
}

TEST_F(ToolTest, PathsThatLeadNowhereAreExplained) {
    Seed();
    const struct {
        std::vector<std::string> arguments;
        std::string complaint;
    } rows[] = {
        {{"show", "Servers"}, "\"Servers\" is a folder, a session is needed"},
        {{"show", "Servers\\Web\\"}, "\"Servers\\Web\" is a folder, a session is needed"},
        {{"show", ""}, "the path is empty, a session is needed"},
        {{"show", "nobody"}, "there is no session or folder \"nobody\""},
        {{"show", "Servers/Web/alpha"}, "names are joined by \\: did you mean \"Servers\\Web\\alpha\"?"},
        {{"show", "Servers/nobody"}, "names are joined by \\\n"},
        {{"ls", "Servers\\\\Web"}, "has an empty name"},
        {{"ls", "Servers\\__folderdata__"}, "there is no session or folder"},
        {{"ls", "zeta\\below"}, "there is no session or folder"},
        {{"ls", std::string(100000, 'x')}, "xxx…\""},
        {{"ls", std::string("\x1b[2J")}, "\"<U+001B>[2J\""},
        {{"ls", "\xc3\x28"}, "is not well-formed UTF-8"},
    };
    for (const auto& row : rows) {
        const std::string errors = RunBadly(row.arguments);
        EXPECT_NE(errors.find(row.complaint), std::string::npos) << errors;
    }
}

/// Overwrites bytes of a file in place.
void Patch(const std::string& file, std::streamoff offset, const std::string& bytes) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(offset);
    stream << bytes;
}

TEST_F(ToolTest, StoresThatCannotBeUsedAreExplained) {
    const std::string folder = scratch / "folder";
    ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    const std::string text = scratch.Write("text", "no database at all, but long enough to be looked at\n");
    Seed();
    constexpr std::streamoff kUserVersion = 60;  // in the header of the file format
    Patch(StoreFile(), kUserVersion, "\x7f");
    for (const std::string& url : {"sqlite:" + folder, "sqlite:" + text, "sqlite:" + StoreFile(), std::string("ftp:x"),
                                   std::string("sqlite:"), std::string("\xff")})
        for (const char* command : {"ls", "show"}) RunBadly({"--store", url, command, "zeta"});
}

TEST_F(ToolTest, AStoreThatIsLockedRefusesTheWriteAndKeepsTheValue) {
    Seed();
    WithStore([&] {
        VProfileStore store(false);
        ASSERT_TRUE(store.JoinUnitOfWork());
        RunBadly({"set", "zeta", "Title Bar", "x"});
        ASSERT_TRUE(store.Close());
    });
    EXPECT_EQ(RunWell({"get", "zeta", "Title Bar"}), "\n");
}

TEST_F(ToolTest, OutputThatIsLostIsAFailure) {
    Seed();
    const std::string command = std::string(CONNECTCTL_PROGRAM) + " --store sqlite:" + StoreFile() + " ";
    EXPECT_EQ(RunProcess({"/bin/sh", "-c", command + "ls >/dev/full; echo $?"}).output, "1\n");
    const ProcessResult diff = RunProcess({"/bin/sh", "-c", command + "diff zeta 'Servers\\db' >/dev/full; echo $?"});
    EXPECT_EQ(diff.output, "2\n");
    EXPECT_NE(diff.errors, "");
}

}  // namespace
}  // namespace connectdialog::test
