#include "foundation/vsettingshive.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

#include "platform/codepage.h"
#include "platform/paths.h"
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

    testsupport::TemporaryHives hives;
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
    fs::create_directory(hives.UserFile());
    EXPECT_NE(User().FindKey(u"A").code, 0U);
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

/// Counts up in two keys in one step, without end, and tells each number when it is stored.
int CountWithoutEnd(VSettingsHive& hive, std::uint32_t start, ChildProcess& parent) {
    for (std::uint32_t number = start;; ++number) {
        const VHiveStatus status = hive.Update([&](VHiveTree& tree) -> VHiveStatus {
            tree.Create(hive.FullPath(u"First"))->values[u"n"].value = Dword(number);
            tree.Create(hive.FullPath(u"Second"))->values[u"n"].value = Dword(number);
            return {};
        });
        if (!status) return 1;
        parent.Report(number);
    }
}

TEST_F(SettingsHive, AKilledWriterLeavesAWholeFileWithAllThatWasAcknowledged) {
    ASSERT_EQ(User().CreateKey(u"Ballast").code, 0U);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(User().WriteValue(u"Ballast", u"b", {kHiveBinary, std::vector<std::uint8_t>(30000)}).code, 0U);
    const std::chrono::duration<double> oneWrite = std::chrono::steady_clock::now() - start;
    std::mt19937 random(20);
    std::uint32_t last = 0;
    std::uint32_t stored = 0;
    for (int round = 0; round < 200; ++round) {
        ChildProcess writer([&](ChildProcess& parent) { return CountWithoutEnd(User(), stored + 1, parent); });
        // The kill comes anywhere within the first write or, in every other round, the second.
        if (round % 2 != 0) writer.ReadReport(last);
        std::this_thread::sleep_for(oneWrite * 1.5 * static_cast<double>(random() % 1000) / 1000.0);
        writer.Kill();
        while (writer.ReadReport(last)) {
        }
        if (!User().FindKey(u"First")) {
            ASSERT_EQ(last, 0U);
            continue;
        }
        stored = ReadNumber(u"First", u"n");
        ASSERT_EQ(ReadNumber(u"Second", u"n"), stored);
        ASSERT_TRUE(stored == last || stored == last + 1) << stored << " after " << last;
        ASSERT_TRUE(User().Health());
        last = stored;
    }
    EXPECT_GT(last, 0U) << "no writer got as far as to a write";
}

}  // namespace
}  // namespace connectdialog
