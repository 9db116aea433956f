// The parts of a session: terminal, printer, remote host, protocols.
#include <string>
#include <sys/stat.h>

#include "config/printerconfig.h"
#include "config/remotehostconfig.h"
#include "config/sessionconfig.h"
#include "config/sessiondbhooks.h"
#include "config/terminalconfig.h"
#include "foundation/vreportmessageparams.h"
#include "support/fakesuite.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

using namespace std::string_literals;

class TerminalConfigTest : public LibraryTest {
  protected:
    /// A terminal whose key holds what `fill` writes and nothing else.
    static TerminalConfig Load(const std::function<void(VProfileKey&)>& fill, bool hasKelda = false) {
        std::optional<TerminalConfig> terminal;
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        WithKey(u"k", [&](VProfileKey& key) {
            fill(key);
            terminal.emplace(&key, hasKelda);
        });
        return *terminal;
    }
    static TerminalConfig LoadEmulation(const char16_t* emulation, bool hasKelda = false) {
        return Load([&](VProfileKey& key) { key.WriteString(u"Emulation", emulation); }, hasKelda);
    }
};

TEST_F(TerminalConfigTest, UnknownEmulationsGiveWayAndTheOldNameIsRespelled) {
    const struct {
        const char16_t* stored;
        const char16_t* loaded;
        bool hasAnsiColor;
        bool hasKelda = false;
    } kRows[] = {
        {u"ANSI", u"ANSI", true},        {u"Linux", u"Linux", true},       {u"SCOANSI", u"SCOANSI", true},
        {u"SCO-ANSI", u"SCOANSI", true}, {u"Kelda", u"Kelda", true, true}, {u"Kelda", u"VT100", false},
        {u"WYSE50", u"WYSE50", false},   {u"WYSE60", u"WYSE60", false},    {u"VT220", u"VT220", false},
        {u"VT102", u"VT102", false},     {u"VT100", u"VT100", false},      {u"Dumb", u"Dumb", false},
        {u"Xterm", u"Xterm", false},     {u"vt100", u"VT100", false},      {u"ansi", u"VT100", false},
        {u"", u"VT100", false},
    };
    for (const auto& row : kRows) {
        const TerminalConfig terminal = LoadEmulation(row.stored, row.hasKelda);
        EXPECT_EQ(terminal.emulation.Get(), row.loaded);
        EXPECT_EQ(terminal.emulation.GetStored(), row.stored);
        EXPECT_EQ(terminal.emulation.IsChanged(), std::u16string_view(row.stored) != row.loaded);
        EXPECT_EQ(terminal.ansiColor.Get(), row.hasAnsiColor) << ::testing::PrintToString(row.stored);
    }
    const TerminalConfig plain = Load([](VProfileKey& key) {
        key.WriteString(u"Emulation", u"Linux");
        key.WriteDword(u"ANSI Color", 0);
    });
    EXPECT_FALSE(plain.ansiColor.Get()) << "what is stored counts";
}

TEST_F(TerminalConfigTest, TheEmulationDecidesColorsFontAndKeymap) {
    const TerminalConfig usual(nullptr, false);
    EXPECT_EQ(usual.normalFont.Get(), VLogFont(13, u"Lucida Console"));

    const TerminalConfig ansi = LoadEmulation(u"ANSI");
    EXPECT_EQ(ansi.foreground.Get(), 0xFFFFFF);
    EXPECT_EQ(ansi.normalFont.Get(), VLogFont(12, u"Terminal"));
    EXPECT_FALSE(ansi.useUnicodeLineDrawing.Get());

    const TerminalConfig vt220 = LoadEmulation(u"VT220");
    EXPECT_EQ(vt220.keymapName.Get(), u"VT220");
    EXPECT_TRUE(vt220.useAlternateKeyboard.Get());
}

TEST_F(TerminalConfigTest, TheResizeModeAndTheSwitchesBeforeItAgree) {
    const struct {
        std::int64_t mode;  ///< -1: none stored
        std::uint32_t rows;
        std::uint32_t cols;
        int loaded;
        bool isSynchronized;
    } kRows[] = {
        {-1, 0, 0, 2, false}, {-1, 1, 0, 0, true}, {-1, 1, 1, 0, true}, {0, 0, 0, 0, false},
        {1, 1, 1, 1, false},  {1, 0, 0, 1, false}, {2, 1, 1, 2, true},  {7, 1, 1, 7, true},
    };
    for (const auto& row : kRows) {
        const TerminalConfig terminal = Load([&](VProfileKey& key) {
            if (row.mode >= 0) key.WriteDword(u"Resize Mode", static_cast<std::uint32_t>(row.mode));
            key.WriteDword(u"Sync View Rows", row.rows);
            key.WriteDword(u"Sync View Cols", row.cols);
        });
        EXPECT_EQ(terminal.resizeMode.Get(), row.loaded);
        EXPECT_EQ(terminal.syncViewRows.Get(), row.isSynchronized);
        EXPECT_EQ(terminal.IsChanged(), row.loaded == 1 && row.rows != 0);
    }
}

/// The record as it was once stored: a height, a face in narrow text, and the size behind it.
std::string NarrowFont(char height, const std::string& face) {
    return std::string(1, height) + std::string(27, '\0') + face + std::string(32 - face.size(), '\0') + "\x64\0\0\0"s;
}

TEST_F(TerminalConfigTest, FontsOfOlderVersionsAreTakenOverAndStayWhereTheyAre) {
    const TerminalConfig oldest = Load([](VProfileKey& key) {
        key.WriteString(u"Font Family", u"vt100");
        key.WriteDword(u"Font Size", 20);
    });
    for (const VProfileLogFont* font : {&oldest.normalFont, &oldest.narrowFont}) {
        EXPECT_EQ(font->Get(), VLogFont(20, u"vt100"));
        EXPECT_TRUE(font->IsMissing());
    }
    EXPECT_FALSE(oldest.useUnicodeLineDrawing.Get());

    const std::u16string face = u"Schrö" + std::u16string(26, u'x');  // fills its room
    TerminalConfig newer = Load([](VProfileKey& key) {
        key.WriteString(u"Font Family", u"vt100");
        const std::string record = NarrowFont(9, "Schr\xC3\xB6" + std::string(26, 'x'));
        key.WriteBinary(u"Normal Font", record.data(), static_cast<std::uint32_t>(record.size()));
    });
    EXPECT_EQ(newer.normalFont.Get().GetFace(), face);
    EXPECT_EQ(newer.normalFont.Get().height, 9);
    EXPECT_EQ(newer.normalFont.Get().size, 100);
    EXPECT_EQ(newer.narrowFont.Get(), VLogFont(13, u"vt100"));
    WithKey(u"k", [&](VProfileKey& key) {
        newer.Save(key, true);
        VUnicodeString family;
        std::uint32_t number = 0;
        EXPECT_TRUE(key.ReadString(u"Font Family", family));
        EXPECT_EQ(family, u"vt100");
        EXPECT_FALSE(key.ReadDword(u"Font Size", number));
        EXPECT_EQ(TerminalConfig(&key, false).normalFont.Get().GetFace(), face);
    });
}

TEST_F(TerminalConfigTest, AKeymapOfItsOwnTurnsTheAlternateKeyboardOn) {
    const struct {
        const char16_t* name;
        int stored;  ///< -1: nothing
        const char16_t* loadedName;
        bool isOn;
    } kRows[] = {
        {u"Custom", 0, u"Custom", true},      {u"CUSTOM", -1, u"CUSTOM", true},    {u"SCO-ANSI", 0, u"SCOANSI", false},
        {u"sco-ansi", 0, u"sco-ansi", false}, {u"SCO-ANSI", -1, u"SCOANSI", true}, {u"default", -1, u"default", false},
        {u"default", 1, u"default", true},    {u"Linux", -1, u"Linux", true},      {u"", -1, u"", true},
    };
    for (const auto& row : kRows) {
        const TerminalConfig terminal = Load([&](VProfileKey& key) {
            key.WriteString(u"Keymap Name", row.name);
            if (row.stored >= 0) key.WriteDword(u"Use Alternate Keyboard", static_cast<std::uint32_t>(row.stored));
        });
        EXPECT_EQ(terminal.keymapName.Get(), row.loadedName);
        EXPECT_EQ(terminal.useAlternateKeyboard.Get(), row.isOn) << ::testing::PrintToString(row.name) << row.stored;
    }
}

TEST_F(TerminalConfigTest, TheSwitchOfAnOlderNameMovesToThePresentOne) {
    TerminalConfig older = Load([](VProfileKey& key) { key.WriteDword(u"Enable 80/132 Column Switching", 0); });
    EXPECT_FALSE(older.enableColumnSwitching.Get());
    older.enableColumnSwitching.Set(true);
    WithKey(u"k", [&](VProfileKey& key) {
        older.Save(key, false);
        std::uint32_t number = 9;
        EXPECT_TRUE(key.ReadDword(u"Enable 80/132 Column Switching", number));
        EXPECT_EQ(number, 0U) << "the older name is never written";
        EXPECT_TRUE(TerminalConfig(&key, false).enableColumnSwitching.Get()) << "the present name counts";
    });
}

/// Remembers what was reported, and with which insert.
class RecordingRouter : public VReportMessageRouter {
  public:
    std::uint32_t HandleReport(IReportMessageParams* report) override {
        EXPECT_EQ(report->GetCode(), 0xE137000AU);
        EXPECT_EQ(report->GetInsertCount(), 1U);
        names.emplace_back(report->GetInserts()[0]);
        return 0;
    }
    std::vector<std::u16string> names;
};
RecordingRouter router;

class TerminalMapTest : public TerminalConfigTest {
  protected:
    TerminalMapTest() {
        router.names.clear();
        SetReportRouterGetter([]() -> VReportMessageRouter* { return &router; });
    }
    ~TerminalMapTest() override { SetReportRouterGetter(nullptr); }

    static TerminalConfig LoadMaps(const VUnicodeString& font, const VUnicodeString& drawing) {
        return Load([&](VProfileKey& key) {
            key.WriteString(u"User Font Map", font.GetData());
            key.WriteString(u"User Line Drawing Map", drawing.GetData());
        });
    }

    TemporaryFolder folder;
};

TEST_F(TerminalMapTest, ALineIsACodeAndABadOneLeavesAHole) {
    setenv("MAPS", folder.GetPath().c_str(), 1);
    folder.Write("font", "2500\r\n\n0x41\n \tfF \nzz\n-1\n12zz\n10041\n9");
    const TerminalConfig terminal = LoadMaps(u"%MAPS%/font", VUnicodeString());
    ASSERT_NE(terminal.GetFontMap(), nullptr);
    const std::vector<unsigned> codes(terminal.GetFontMap()->begin(), terminal.GetFontMap()->begin() + 9);
    EXPECT_EQ(codes, (std::vector<unsigned>{0x2500, 0x41, 0xFF, 0, 0, 0x12, 0, 9, 0}));
    unsetenv("MAPS");
}

TEST_F(TerminalMapTest, WhatIsNoUsableFileIsToldAndTheSessionGoesOn) {
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    folder.Write("large", std::string(5 << 20, '\n'));
    for (const char* leaf : {"none", "", "pipe", "large"}) {
        router.names.clear();
        const TerminalConfig terminal = LoadMaps(folder.Name(leaf), VUnicodeString());
        EXPECT_EQ(terminal.GetFontMap(), nullptr);
        EXPECT_EQ(terminal.userFontMap.Get(), folder.Name(leaf));
        EXPECT_EQ(router.names, std::vector{std::u16string(folder.Name(leaf).View())});
    }
    router.names.clear();
    EXPECT_EQ(LoadMaps(VUnicodeString(), u"%Q").GetLineDrawingMap(), nullptr);
    EXPECT_EQ(router.names, std::vector{u"%Q"s}) << "no file name";
}

class SessionPartsTest : public LibraryTest {
  protected:
    /// A printer, read from an empty key after `fill`.
    static PrinterConfig LoadPrinter(const std::function<void(VProfileKey&)>& fill) {
        std::optional<PrinterConfig> printer;
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"k"); });
        WithKey(u"k", [&](VProfileKey& key) {
            fill(key);
            printer.emplace(&key);
        });
        return *printer;
    }
};

TEST_F(SessionPartsTest, RawModeTurnsThePrintersPortOff) {
    for (const bool isRaw : {true, false}) {
        const PrinterConfig printer = LoadPrinter([&](VProfileKey& key) {
            key.WriteDword(u"Use Raw Mode", isRaw ? 1 : 0);
            key.WriteDword(u"Use Printer Port", 1);
        });
        EXPECT_EQ(printer.usePrinterPort.Get(), !isRaw);
        EXPECT_EQ(printer.IsChanged(), isRaw);
    }
}

/// Knows no firewall and remembers which one was asked for.
class RecordingHooks : public ISessionDbHooks {
  public:
    IFirewallUI* LoadFirewall(const VUnicodeString& name) override {
        asked = name;
        return nullptr;
    }
    bool SaveFirewall(FirewallConfig&) override { return false; }
    void EnumerateFirewalls(IBuffer&) override {}
    void UpgradeButtonBars() override {}
    VUnicodeString asked;
};

TEST_F(SessionPartsTest, AHostsFirewallIsAskedForByTheNameThatCounts) {
    RecordingHooks hooks;
    InstallSessionDbHooks(&hooks);
    const auto expectName = [](IRemoteHostConfig& host, const char16_t* expected) {
        VUnicodeString name;
        host.GetFirewallName(name);
        EXPECT_EQ(name, expected);
    };
    for (const auto& [older, name] : {std::pair(0U, u"None"), {1U, u"DefaultTerminalFirewall"}}) {
        WithKey(u"k", [&, use = older, expected = name](VProfileKey& key) {
            key.WriteDword(u"Use Firewall", use);
            expectName(*VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(&key)), expected);
        });
    }
    const auto host = VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(nullptr));
    host->SetFirewallName(u"own"_v);
    EXPECT_EQ(hooks.asked, u"own");
    host->SetFirewallOverride(u"over"_v);
    EXPECT_EQ(hooks.asked, u"over");
    expectName(*host, u"over");
    expectName(*VRef<IRemoteHostConfig>::Adopt(host->Clone()), u"own");
    EXPECT_EQ(hooks.asked, u"own") << "the clone loads a firewall of its own";
    EXPECT_EQ(host->FindSetting(u"hostname"), host->FindValue(u"HOSTNAME"));
    EXPECT_EQ(host->FindSetting(u"Firewall Port"), nullptr);
    host->SetFirewallOverride(VUnicodeString());
    expectName(*host, u"own");
}

}  // namespace
}  // namespace connectdialog::test
