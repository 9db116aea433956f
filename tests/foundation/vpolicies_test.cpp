#include "foundation/vpolicies.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "foundation/venvironment.h"
#include "foundation/vpath.h"
#include "platform/codepage.h"
#include "support/temporaryhives.h"

namespace connectdialog {
namespace {

class Policies : public testing::Test {
  protected:
    Policies() { VForgetPolicies(); }
    ~Policies() override { VForgetPolicies(); }
    testsupport::TemporaryHives hives;
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

TEST_F(Policies, AProductsSettingStandsUnderItsNamesOldAndNew) {
    hives.WriteMachine(
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark\\NorHalden]\n\"new\"=dword:1\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark Works\\Second]\n\"old\"=dword:2\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Brennmark Works\\Second 3.0]\n\"old\"=dword:3\n");
    // The name, both products and the value; 0: not found.
    constexpr std::tuple<const char16_t*, const char16_t*, const char16_t*, std::uint32_t> kRows[] = {
        {u"new", u"NorHalden", u"Second", 1}, {u"old", u"norhalden x", u"Second", 2}, {u"old", u"HALDEN", u"Second", 3},
        {u"old", u"Tessaly", u"Second", 0},   {u"new", u"NorHalden", u"", 0},         {u"new", nullptr, u"Second", 0},
    };
    for (const auto& [name, product, secondary, expected] : kRows) {
        std::uint32_t value = 0;
        EXPECT_EQ(VGetProductDword(name, product, secondary, value), expected != 0);
        EXPECT_EQ(value, expected);
    }
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
    const struct {
        std::string lines;
        const char16_t* product;
        bool canSaveUsernames;
        bool canSavePasswords;
    } kRows[] = {
        {"", u"NorHalden", true, true},
        {"", nullptr, true, true},
        {std::string(kMachinePolicy) + "\"Save Usernames\"=dword:0\n\"Save Passwords\"=dword:1\n", u"NorHalden", false,
         false},
        {std::string(kNorHalden) + "\"Save Passwords\"=dword:0\n", u"NorHalden", true, false},
        {std::string(kTessaly) + "\"Save Passwords\"=dword:0\n", u"tessaly", true, true},
        {std::string(kTessaly) + "\"Disable Passwords\"=dword:1\n", u"tessaly", true, false},
        {std::string(kTessaly) + "\"Disable Passwords\"=dword:0\n", u"Tessaly", true, true},
        {std::string(kTessaly) + "\"Disable Passwords\"=dword:1\n" + kGlobal + "\"Save Passwords\"=dword:1\n",
         u"Tessaly", true, true},
        {std::string(kMachinePolicy) + "\"Save Passwords\"=dword:0\n", u"Tessaly", true, false},
    };
    for (const auto& row : kRows) {
        VForgetPolicies();
        hives.WriteMachine(row.lines);
        EXPECT_EQ(VCanSavePasswords(row.product, u"Second"), row.canSavePasswords) << row.lines;
        EXPECT_EQ(VCanSaveUsernames(row.product, u"Second"), row.canSaveUsernames) << row.lines;
        hives.WriteMachine(std::string(kMachinePolicy) + "\"Save Usernames\"=dword:0\n");
        EXPECT_EQ(VCanSaveUsernames(row.product, u"Second"), row.canSaveUsernames) << "fixed for the process";
        EXPECT_EQ(VCanSavePasswords(row.product, u"Second"), row.canSavePasswords) << "fixed for the process";
    }
}

TEST(Environment, NamesBetweenSignsAreReplacedOnce) {
    setenv("HIVES_A", "one", 1);
    setenv("HIVES_B", "%HIVES_A%", 1);
    setenv("HIVES_EMPTY", "", 1);
    const char16_t* const kRows[][2] = {{u"a%HIVES_A%b%HIVES_A%", u"aonebone"},
                                        {u"%HIVES_B%", u"%HIVES_A%"},
                                        {u"[%HIVES_EMPTY%]", u"[]"},
                                        {u"100%", u"100%"},
                                        {u"%%", u"%%"},
                                        {u"%NOT_SET%HIVES_A%", u"%NOT_SETone"},
                                        {u"%HIVES=A%", u"%HIVES=A%"}};
    for (const auto& [text, expanded] : kRows)
        EXPECT_EQ(VExpandEnvironment(text), expanded) << platform::ToNarrow(text);
    EXPECT_EQ(VExpandEnvironment(VUnicodeString(std::u16string(510, u'x')) + u"%HIVES_A%").Right(2), u"xo");
}

TEST(Environment, PortableTokensAreReplacedWhereTheirVariableIsSet) {
    unsetenv("U3_APP_DATA_PATH");
    EXPECT_FALSE(VIsPortableInstall());
    setenv("U3_DEVICE_DOCUMENT_PATH", "E:\\Docs", 1);
    EXPECT_EQ(VExpandPortableTokens(u"%u3data%|%u3doc%|%u3doc%|%U3DOC%"), u"%u3data%|E:\\Docs|E:\\Docs|%U3DOC%");
    unsetenv("U3_DEVICE_DOCUMENT_PATH");
}

TEST(Path, JoiningPutsOneBackslash) {
    for (const char16_t* left : {u"a", u"a\\"})
        for (const char16_t* right : {u"b", u"\\b"}) EXPECT_EQ(VJoinPath(left, right), u"a\\b");
    EXPECT_EQ(VJoinPath(u"a/", u"b"), u"a/\\b");
    EXPECT_EQ(VJoinPath(nullptr, u"b"), u"\\b");
}

TEST(Path, SplittingGivesFolderAndLeaf) {
    const char16_t* const kRows[][3] = {{u"a\\b\\c", u"a\\b", u"c"},
                                        {u"a\\b/c", u"a\\b", u"c"},
                                        {u"a\\", u"", u"a"},
                                        {u"\\a", u"\\", u"a"},
                                        {u"/", u"", u""},
                                        {u"c:", u"", u""},
                                        {u"c:\\", u"", u""},
                                        {u"c:\\a", u"c:", u"a"},
                                        {u"a\\\\b", u"a\\", u"b"},
                                        {u"\\\\", u"\\", u""},
                                        {u"", u"", u""}};
    for (const auto& [path, folder, expected] : kRows) {
        VUnicodeString leaf(u"old");
        EXPECT_EQ(VSplitPath(path, leaf), folder) << platform::ToNarrow(path);
        EXPECT_EQ(leaf, expected) << platform::ToNarrow(path);
    }
    char letter = 'x';
    for (const char* path : {"", "c", ":", "cc:", "c:/", "c:\\a", "\xC3\xA9:"}) {
        EXPECT_FALSE(VIsDriveRoot(path, letter)) << path;
        EXPECT_EQ(letter, 0);
    }
}

TEST(Path, DotsAtTheBeginningAreResolvedAgainstTheBase) {
    const char16_t* const kRows[][3] = {
        {u"", u".\\a", u".\\a"}, {u"b\\c", u".", u"b\\c"},      {u"b\\c", u".\\a", u"b\\c\\a"},
        {u"b", u"./a", u"b/a"},  {u"b\\c", u"..", u"b"},        {u"b\\c", u"..\\a", u"b\\a"},
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
