// secret, and the places where its key is kept. Each run is a process of its own, with nothing in memory.
#include <chrono>
#include <filesystem>
#include <sys/stat.h>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

namespace fs = std::filesystem;

class SecretCommand : public ToolTest {
  protected:
    /// A user of his own with neither service nor key.
    std::vector<std::string> User(const std::string& name = "user") const {
        return {"XDG_DATA_HOME=" + (scratch / name), "TEMP=" + (scratch / name), "DBUS_SESSION_BUS_ADDRESS=disabled:"};
    }
    static ProcessResult Secret(const std::string& command, const std::string& input,
                                const std::vector<std::string>& environment) {
        return RunProcess({CONNECTCTL_PROGRAM, "secret", command}, environment, input);
    }
    /// Fails the test unless the run goes well; gives its output.
    static std::string Well(const ProcessResult& result) {
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.errors, "");
        return result.output;
    }
    /// Fails the test unless the run fails with one line that holds `expected`, and prints nothing.
    static void Badly(const ProcessResult& result, const std::string& expected) {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
        EXPECT_NE(result.errors.find(expected), std::string::npos) << result.errors;
    }
    std::string KeyFile(const std::string& user = "user") const { return scratch / (user + "/brennmark/user.key"); }

    /// The same with a Secret Service of the mode running, which keeps its items in the scratch folder.
    ProcessResult WithService(const std::string& mode, const std::string& command, const std::string& input) const {
        const std::string script = std::string(CONNECTDIALOG_TESTS) + "/connectctl/fakesecretservice.py";
        ProcessResult result = RunProcess({"/usr/bin/dbus-run-session", "--", "/usr/bin/python3", script, mode,
                                           scratch / "items", CONNECTCTL_PROGRAM, "secret", command},
                                          {"XDG_DATA_HOME=" + (scratch / "user"), "TEMP=" + (scratch / "user")}, input);
        // The bus grumbles about its limits first.
        while (result.errors.starts_with("dbus-daemon[")) result.errors.erase(0, result.errors.find('\n') + 1);
        return result;
    }
    static bool HasServicePeer() {
        return fs::exists("/usr/bin/dbus-run-session") &&
               RunProcess({"/usr/bin/python3", "-c", "import dbus, gi, ctypes; ctypes.CDLL('libsecret-1.so.0')"})
                       .exitCode == 0;
    }
};

TEST_F(SecretCommand, WhatGoesInComesOutByteForByte) {
    for (const std::string text : {"hunter2", "p\xC3\xA4ss \xE5\xAF\x86\xF0\x9F\x94\x91\n", "\n", " "}) {
        const std::string stored = Well(Secret("protect", text, User()));
        EXPECT_TRUE(stored.starts_with("CAPI:")) << stored;
        EXPECT_EQ(stored.find_first_not_of("0123456789ABCDEF", 5), std::string::npos);
        EXPECT_NE(Well(Secret("protect", text, User())), stored);
        EXPECT_EQ(Well(Secret("unprotect", stored, User())), text);
        EXPECT_EQ(Well(Secret("unprotect", stored.substr(5) + "\r\n", User())), text);
    }
    EXPECT_EQ(Well(Secret("protect", "", User())), "");
    Badly(Secret("protect", std::string((1 << 20) + 1, 'x'), User()), "more than 1048576");
    Badly(Secret("protect", "caf\xE9", User()), "not UTF-8");
    Badly(Secret("protect", std::string("a\0b", 3), User()), "a zero");
    std::string altered = Well(Secret("protect", "hunter2", User()));
    altered.back() = altered.back() == '0' ? '1' : '0';
    Badly(Secret("unprotect", altered, User()), "not unprotected: The data is not valid");
}

TEST_F(SecretCommand, AKeyFileIsTheUsersOwnAndNeverReplaced) {
    const std::string stored = Well(Secret("protect", "hunter2", User()));
    EXPECT_EQ(fs::status(KeyFile()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::file_size(KeyFile()), 32U);
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(KeyFile()).parent_path()), {}), 1) << "no draft is left";
    Badly(Secret("unprotect", stored, User("other")), "The key is not there");
    EXPECT_FALSE(fs::exists(KeyFile("other"))) << "reading makes no key";

    Well(Secret("protect", "x", User("other")));
    fs::rename(KeyFile(), scratch / "kept");
    fs::copy_file(KeyFile("other"), KeyFile());
    Badly(Secret("unprotect", stored, User()), "The key is not there");

    using Spoil = void (*)(const std::string& file, const std::string& kept);
    const std::tuple<const char*, Spoil, const char*> kRows[] = {
        {"a link", [](const std::string& file, const std::string& kept) { fs::create_symlink(kept, file); }, ""},
        {"open to others",
         [](const std::string& file, const std::string& kept) {
             fs::copy_file(kept, file);
             chmod(file.c_str(), 0640);
         },
         "Access was denied"},
        {"cut short",
         [](const std::string& file, const std::string& kept) {
             fs::copy_file(kept, file);
             fs::resize_file(file, 31);
         },
         "The data is not valid"},
        {"a folder", [](const std::string& file, const std::string&) { fs::create_directory(file); }, ""},
    };
    for (const auto& [what, spoil, expected] : kRows) {
        SCOPED_TRACE(what);
        fs::remove(KeyFile());
        spoil(KeyFile(), scratch / "kept");
        const auto before = fs::symlink_status(KeyFile());
        Badly(Secret("unprotect", stored, User()), std::string("not unprotected: ") + expected);
        Badly(Secret("protect", "x", User()), std::string("not protected: ") + expected);
        EXPECT_EQ(fs::symlink_status(KeyFile()).type(), before.type());
    }
    fs::remove(KeyFile());
    fs::rename(scratch / "kept", KeyFile());
    EXPECT_EQ(Well(Secret("unprotect", stored, User())), "hunter2");
    Badly(Secret("protect", "x", {"XDG_DATA_HOME=/proc/none", "DBUS_SESSION_BUS_ADDRESS=disabled:"}), "not protected");
}

TEST_F(SecretCommand, TheSecretServiceKeepsTheKeyWhenItIsOpen) {
    if (!HasServicePeer()) GTEST_SKIP() << "needs dbus, libsecret and the Python modules dbus and gi";
    const std::string stored = Well(WithService("open", "protect", "hunter2"));
    EXPECT_FALSE(fs::exists(KeyFile()));
    EXPECT_EQ(Well(WithService("open", "unprotect", stored)), "hunter2");

    Badly(Secret("unprotect", stored, User()), "The key is not there");
    Badly(WithService("locked", "unprotect", stored), "Access was denied");
    const std::string fromFile = Well(WithService("locked", "protect", "file"));
    EXPECT_TRUE(fs::exists(KeyFile()));
    EXPECT_EQ(Well(WithService("open", "unprotect", fromFile)), "file") << "both keys stay in use";
    EXPECT_EQ(Well(WithService("open", "unprotect", stored)), "hunter2");
}

TEST_F(SecretCommand, AServiceThatHangsIsLeftAfterFiveSeconds) {
    if (!HasServicePeer()) GTEST_SKIP() << "needs dbus, libsecret and the Python modules dbus and gi";
    const std::string stored = Well(WithService("open", "protect", "hunter2"));
    const auto start = std::chrono::steady_clock::now();
    Badly(WithService("hang", "unprotect", stored), "took too long");
    EXPECT_EQ(Well(Secret("unprotect", Well(WithService("hang", "protect", "file")), User())), "file");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace connectdialog::test
