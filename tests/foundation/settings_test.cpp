// The settings hives, what policies make of them, and the names and paths of the environment.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>

#include "foundation/venvironment.h"
#include "foundation/vpath.h"
#include "foundation/vpolicies.h"
#include "foundation/vsettingshive.h"
#include "platform/codepage.h"
#include "support/childprocess.h"
#include "support/temporaryhives.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;
using test::ChildProcess;
using test::ModeOf;
using test::ReadFile;
using test::WriteFile;

VHiveValue Dword(std::uint32_t number) {
    return VHiveValue::OfDword(number);
}

std::u16string Numbered(const char* name, int number) {
    return platform::ToWide(name + std::to_string(number));
}

class SettingsHive : public testing::Test {
  protected:
    VSettingsHive& User() { return VSettingsHive::Of(HiveScope::kUser); }

    std::uint32_t ReadNumber(std::u16string_view key, std::u16string_view name) {
        VHiveValue value;
        const VHiveStatus status = User().ReadValue(key, name, value);
        EXPECT_EQ(status.code, 0U) << platform::ToNarrow(status.detail);
        std::uint32_t number = 0;
        value.GetDword(number);
        return number;
    }

    test::TemporaryHives hives;
};

TEST_F(SettingsHive, AnAbsentFileIsAnEmptyHiveAndIsMadeByTheFirstWrite) {
    VHiveValue value;
    EXPECT_EQ(User().FindKey(u"").code, 0U);
    EXPECT_EQ(User().FindKey(u"A").code, 2U);
    EXPECT_EQ(User().ReadValue(u"A", u"v", value).code, 1018U);
    EXPECT_EQ(User().WriteValue(u"A", u"v", Dword(1)).code, 1018U);
    EXPECT_EQ(User().DeleteKey(u"A").code, 2U);
    EXPECT_FALSE(fs::exists(hives.UserFile()));
    EXPECT_EQ(User().CreateKey(u"A\\B").code, 0U);
    EXPECT_EQ(User().WriteValue(u"a\\b", u"v", Dword(7)).code, 0U);
    EXPECT_EQ(ReadNumber(u"A\\B", u"V"), 7U);
    for (const char16_t* bad : {u"A\\", u"\\A", u"A\\\\B", u"A\nB", u"A\xD800", u"A];B"}) {
        EXPECT_EQ(User().CreateKey(bad).code, 87U) << platform::ToNarrow(bad);
    }
    EXPECT_EQ(User().WriteValue(u"A", u"v\"\r\n[HKEY_CURRENT_USER\\X]", Dword(1)).code, 87U);
    EXPECT_EQ(User().WriteValueAndKey(u"New\\Key", u"v\n", Dword(1)).code, 87U);
    EXPECT_EQ(User().FindKey(u"New").code, 2U) << "the key was not made without its value";
    EXPECT_EQ(User().WriteValueAndKey(u"New\\Key", u"v", Dword(9)).code, 0U);
    EXPECT_EQ(ReadNumber(u"New\\Key", u"v"), 9U);
}

TEST_F(SettingsHive, FilesAreTheUsersOwnAndTheMachinesForAll) {
    const fs::path folder = hives.Folder() / "new" / "folder";
    const fs::path machine = hives.Folder() / "etc" / "xdg";
    VSettingsHive::SetPaths((machine / "machine.reg").u16string(), (folder / "user.reg").u16string());
    const mode_t mask = umask(077);
    EXPECT_EQ(User().CreateKey(u"A").code, 0U);
    EXPECT_EQ(VSettingsHive::Of(HiveScope::kMachine).CreateKey(u"A").code, 0U);
    umask(mask);
    EXPECT_EQ(ModeOf(folder), 0700U);
    EXPECT_EQ(ModeOf(folder / "user.reg"), 0600U);
    EXPECT_EQ(ModeOf(folder / "user.reg.lock"), 0600U);
    EXPECT_EQ(ModeOf(machine.parent_path()), 0755U);
    EXPECT_EQ(ModeOf(machine), 0755U);
    EXPECT_EQ(ModeOf(machine / "machine.reg"), 0644U);
}

TEST_F(SettingsHive, AChangeByAnotherIsSeenAndALinkIsKept) {
    hives.WriteUser("[HKEY_CURRENT_USER\\A]\n\"v\"=dword:1\n");
    EXPECT_EQ(ReadNumber(u"A", u"v"), 1U);
    hives.WriteUser("[HKEY_CURRENT_USER\\A]\n\"v\"=dword:22\n");
    EXPECT_EQ(ReadNumber(u"A", u"v"), 0x22U);
    const fs::path real = hives.Folder() / "real.reg";
    fs::rename(hives.UserFile(), real);
    fs::create_symlink(real, hives.UserFile());
    WriteFile(hives.Folder() / "real.reg.new", "left by a killed writer");
    EXPECT_EQ(User().WriteValue(u"A", u"v", Dword(3)).code, 0U);
    EXPECT_TRUE(fs::is_symlink(hives.UserFile()));
    EXPECT_NE(ReadFile(real).find("\"v\"=dword:00000003"), std::string::npos);
    EXPECT_FALSE(fs::exists(hives.Folder() / "real.reg.new"));
    fs::remove(real);
    EXPECT_EQ(User().CreateKey(u"A").code, 1921U);
    EXPECT_TRUE(fs::is_symlink(hives.UserFile())) << "a link that leads nowhere is nobody's to replace";
}

TEST_F(SettingsHive, WhatIsNoPlainFileOrTooLargeIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(hives.UserFile().c_str(), 0600), 0);
    EXPECT_EQ(User().FindKey(u"A").code, 13U);
    fs::remove(hives.UserFile());
    WriteFile(hives.UserFile(), std::string(VSettingsHive::kMaxBytes + 1, '\n'));
    EXPECT_EQ(User().CreateKey(u"A").code, 223U);
    fs::remove(hives.UserFile());
    ASSERT_EQ(User().CreateKey(u"A").code, 0U);
    const std::string before = ReadFile(hives.UserFile());
    VHiveValue huge{kHiveBinary, std::vector<std::uint8_t>(VSettingsHive::kMaxBytes / 3)};
    EXPECT_EQ(User().WriteValue(u"A", u"v", huge).code, 223U);
    EXPECT_EQ(ReadFile(hives.UserFile()), before);
}

TEST_F(SettingsHive, AWriteThatRunsOutOfRoomLeavesTheOldFile) {
    ASSERT_EQ(User().CreateKey(u"A").code, 0U);
    const std::string before = ReadFile(hives.UserFile());
    ChildProcess writer([this](ChildProcess&) {
        const rlimit limit{4096, 4096};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        return static_cast<int>(User().WriteValue(u"A", u"v", {kHiveBinary, std::vector<std::uint8_t>(5000)}).code);
    });
    EXPECT_EQ(writer.Wait(), 223);
    EXPECT_EQ(ReadFile(hives.UserFile()), before);
    EXPECT_FALSE(fs::exists(hives.UserFile().string() + ".new"));
}

TEST_F(SettingsHive, WritersInSeveralProcessesLoseNothing) {
    constexpr int kWriters = 3;
    constexpr int kValues = 40;
    ASSERT_EQ(User().CreateKey(u"A").code, 0U);
    std::unique_ptr<ChildProcess> writers[kWriters];
    for (int i = 0; i < kWriters; ++i) {
        writers[i] = std::make_unique<ChildProcess>([this, i](ChildProcess&) {
            for (int n = 0; n < kValues; ++n) {
                if (!User().WriteValue(u"A", Numbered("v", i * kValues + n), Dword(1))) return 1;
            }
            return 0;
        });
    }
    for (const auto& writer : writers) EXPECT_EQ(writer->Wait(), 0);
    for (int n = 0; n < kWriters * kValues; ++n) EXPECT_EQ(ReadNumber(u"A", Numbered("v", n)), 1U) << n;
}

class Policies : public testing::Test {
  protected:
    Policies() { VForgetPolicies(); }
    ~Policies() override { VForgetPolicies(); }
    test::TemporaryHives hives;
};

constexpr char kMachinePolicy[] = "[HKEY_LOCAL_MACHINE\\Software\\Policies\\Brennmark]\n";
constexpr char kGlobal[] = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark\\Global]\n";
constexpr char kUserPolicy[] = "[HKEY_CURRENT_USER\\Software\\Policies\\Brennmark]\n";

TEST_F(Policies, ThePlacesAreAskedInTheirOrder) {
    std::uint32_t value = 99;
    EXPECT_FALSE(VGetPolicyDword(u"P", value));
    EXPECT_EQ(value, 99U);
    hives.WriteMachine(std::string(kGlobal) + "\"p\"=dword:3\n");
    EXPECT_TRUE(VGetPolicyDword(u"P", value));
    EXPECT_EQ(value, 3U);
    hives.WriteUser(std::string(kUserPolicy) + "\"P\"=dword:2\n");
    VGetPolicyDword(u"P", value);
    EXPECT_EQ(value, 2U);
    hives.WriteMachine(std::string(kGlobal) + "\"P\"=dword:3\n" + kMachinePolicy + "\"P\"=dword:1\n");
    VGetPolicyDword(u"P", value);
    EXPECT_EQ(value, 1U);
    hives.WriteMachine(std::string(kMachinePolicy) + "\"P\"=\"1\"\nwrong line\n");
    VGetPolicyDword(u"P", value);
    EXPECT_EQ(value, 2U) << "a value of another type does not count";
}

TEST_F(Policies, TheProductsRootIsTheFirstCandidateThatIsThere) {
    EXPECT_EQ(VGetProductRoot(u"NorHalden"), u"SOFTWARE\\Brennmark\\NorHalden");
    EXPECT_EQ(VGetVendorRoot(), u"SOFTWARE\\Brennmark");
    hives.WriteUser("[HKEY_CURRENT_USER\\Software\\Brennmark Works\\NorHalden 3.0]\n");
    EXPECT_EQ(VGetProductRoot(u"NorHalden"), u"SOFTWARE\\Brennmark Works\\NorHalden 3.0");
    hives.WriteUser(
        "[HKEY_CURRENT_USER\\Software\\Brennmark Works\\Tessaly]\n"
        "[HKEY_CURRENT_USER\\Software\\Brennmark\\Tessaly]\n");
    EXPECT_EQ(VGetProductRoot(u"Tessaly"), u"SOFTWARE\\Brennmark\\Tessaly");
    hives.WriteMachine("[HKEY_LOCAL_MACHINE\\Software\\Brennmark Works\\Tessaly]\n");
    EXPECT_EQ(VGetProductRoot(u"Tessaly"), u"SOFTWARE\\Brennmark Works\\Tessaly");
}

TEST_F(Policies, WhatMayBeSavedFollowsThePoliciesAndIsFixedOnceAsked) {
    constexpr char kTessaly[] = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark\\Tessaly]\n";
    constexpr char kNorHalden[] = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark\\NorHalden]\n";
    // The lines, the product, and whether user names and passwords can be saved.
    const std::tuple<std::string, const char16_t*, bool, bool> kRows[] = {
        {"", nullptr, true, true},
        {std::string(kMachinePolicy) + "\"Save Usernames\"=dword:0\n\"Save Passwords\"=dword:1\n", u"NorHalden", false,
         false},
        {std::string(kNorHalden) + "\"Save Passwords\"=dword:0\n", u"NorHalden", true, false},
        {std::string(kTessaly) + "\"Disable Passwords\"=dword:1\n", u"tessaly", true, false},
        {std::string(kTessaly) + "\"Disable Passwords\"=dword:1\n" + kGlobal + "\"Save Passwords\"=dword:1\n",
         u"Tessaly", true, true},
        {std::string(kMachinePolicy) + "\"Save Passwords\"=dword:0\n", u"Tessaly", true, false},
        {"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark Works\\Second 3.0]\n\"Save Passwords\"=dword:0\n", u"HALDEN", true,
         false},
    };
    for (const auto& [lines, product, canSaveUsernames, canSavePasswords] : kRows) {
        VForgetPolicies();
        hives.WriteMachine(lines);
        EXPECT_EQ(VCanSavePasswords(product, u"Second"), canSavePasswords) << lines;
        EXPECT_EQ(VCanSaveUsernames(product, u"Second"), canSaveUsernames) << lines;
        hives.WriteMachine(std::string(kMachinePolicy) + "\"Save Usernames\"=dword:0\n");
        EXPECT_EQ(VCanSaveUsernames(product, u"Second"), canSaveUsernames) << "fixed for the process";
        EXPECT_EQ(VCanSavePasswords(product, u"Second"), canSavePasswords) << "fixed for the process";
    }
}

TEST(Environment, PortableTokensAreReplacedWhereTheirVariableIsSet) {
    unsetenv("U3_APP_DATA_PATH");
    setenv("U3_DEVICE_DOCUMENT_PATH", "E:\\Docs", 1);
    EXPECT_EQ(VExpandPortableTokens(u"%u3data%|%u3doc%|%U3DOC%"), u"%u3data%|E:\\Docs|%U3DOC%");
    EXPECT_FALSE(VIsPortableInstall());
    unsetenv("U3_DEVICE_DOCUMENT_PATH");
}

TEST(Path, SplittingGivesFolderAndLeaf) {
    const char16_t* const kRows[][3] = {{u"a\\b\\c", u"a\\b", u"c"}, {u"a\\", u"", u"a"},     {u"\\a", u"\\", u"a"},
                                        {u"c:\\", u"", u""},         {u"c:\\a", u"c:", u"a"}, {u"", u"", u""}};
    for (const auto& [path, folder, expected] : kRows) {
        VUnicodeString leaf(u"old");
        EXPECT_EQ(VSplitPath(path, leaf), folder) << platform::ToNarrow(path);
        EXPECT_EQ(leaf, expected) << platform::ToNarrow(path);
    }
    char letter = 'x';
    for (const char* path : {"", "c", "cc:", "c:/"}) {
        EXPECT_FALSE(VIsDriveRoot(path, letter)) << path;
        EXPECT_EQ(letter, 0);
    }
}

TEST(Path, DotsAtTheBeginningAreResolvedAgainstTheBase) {
    const char16_t* const kRows[][3] = {
        {u"", u".\\a", u".\\a"}, {u"b\\c", u".", u"b\\c"},      {u"b\\c", u".\\a", u"b\\c\\a"},
        {u"b", u"..", u".."},    {u"b/c\\d", u"../a", u"b/a"},  {u"b\\c", u"...", u"..."},
        {u"b\\c", u".a", u".a"}, {u"b\\c", u"a\\..", u"a\\.."}, {u"b\\c", u"", u""},
    };
    for (const auto& [base, path, resolved] : kRows) {
        VSetDotPathBase(base);
        EXPECT_EQ(VResolveDotPath(path), resolved) << platform::ToNarrow(path);
    }
    VSetDotPathBase({});
}

}  // namespace
}  // namespace connectdialog
