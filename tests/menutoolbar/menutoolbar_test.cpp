// Menu and toolbar descriptions, and what outlives them.
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

#include "keymap/keynames.h"
#include "menutoolbar/buttonline.h"
#include "menutoolbar/menubuild.h"
#include "menutoolbar/standardcommands.h"
#include "menutoolbar/vcustommenutoolbar.h"
#include "menutoolbar/vcustomtoolbar.h"
#include "menutoolbar/vmenutoolbartextrep.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "resources/connectcommands.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;
constexpr MenuParseResult kClean = MenuParseResult::kClean;
constexpr MenuParseResult kFailed = MenuParseResult::kFailed;
constexpr MenuParseResult kWarnings = MenuParseResult::kWarnings;

constexpr CmdData kCommands[] = {
    {16, u"SIXTEEN", -1}, {17, u"SEND", 0},  {18, u"RUN", 1}, {19, u"OPEN_SESSION", -1}, {20, u"OPEN_SESSION_TAB", -1},
    {100, u"COPY", 3},    {101, u"CUT", -1}, {7, u"COPY", 7}, {0, u"NOTHING", 5},
};

VUnicodeString TextOf(const VMenuToolbarItem& item, void (VMenuToolbarItem::*getter)(VUnicodeString&) const) {
    VUnicodeString text;
    (item.*getter)(text);
    return text;
}

/// Writes a block as one line: `name{COPY(label|argument|prompt|tip|image|flags key command) - popup{}}`, with what is
/// empty left out from the end.
class Dump : public IMenuToolbarBuilder {
  public:
    void AddBlock(const VMenuToolbar& block) {
        BeginPopup(TextOf(block, &VMenuToolbarItem::GetText));
        BuildMenuToolbar(block, *this);
        EndPopup();
    }
    void AddItem(const VMenuToolbarItem& item) override {
        VUnicodeString fields;
        for (auto getter : {&VMenuToolbarItem::GetText, &VMenuToolbarItem::GetArgument, &VMenuToolbarItem::GetPrompt,
                            &VMenuToolbarItem::GetToolTip})
            fields += TextOf(item, getter) + u"|";
        VUnicodeString image;
        image.Format(u"%1!d!|", item.GetBitmapIndex());
        fields += item.GetBitmap() != nullptr ? u"file|"_v : item.GetBitmapIndex() >= 0 ? image : u"|"_v;
        const VMenuAccelerator accelerator = item.GetAccelerator();
        if (accelerator != VMenuAccelerator()) {
            image.Format(u"%1!u! %2!c! %3!u!", accelerator.flags, accelerator.key, accelerator.command);
            fields += image;
        }
        std::u16string shown(fields);
        shown.erase(shown.find_last_not_of(u'|') + 1);
        EXPECT_EQ(item.GetType(), item.GetCommandId());
        line += platform::ToNarrow(TextOf(item, &VMenuToolbarItem::GetFunctionName)) + '(' + platform::ToNarrow(shown) +
                ") ";
    }
    void AddSeparator() override { line += "- "; }
    void BeginPopup(const VUnicodeString& label) override { line += platform::ToNarrow(label) + '{'; }
    void EndPopup() override {
        if (line.ends_with(' ')) line.pop_back();
        line += "} ";
    }

    std::string line;
};

class MenuReaderTest : public testing::Test {
  protected:
    MenuParseResult Parse(std::string_view bytes) {
        folder.Write("m", bytes);
        rep.SetCommandTable(&table);
        rep.SetFileName(folder.Name("m"));
        return rep.Parse();
    }
    /// The folder of the test is written as `*`.
    std::string Describe(VReportMessageParams& report) const {
        VUnicodeString text;
        text.Format(u"%1!X!@%2!u!", report.GetCode(), static_cast<std::uint32_t>(report.GetUserData()));
        const bool isSystems = report.GetCode() < 0x10000;
        const std::size_t lineInserts = report.GetUserData() == 0 || isSystems ? 0 : 1;
        for (std::size_t i = lineInserts; i < report.GetInsertCount(); ++i)
            text += u" "_v + VUnicodeString(report.GetInserts()[i]);
        text.Replace(folder.Name("").GetData(), u"*");
        VUnicodeString line;
        line.Format(u"%1!u!", static_cast<std::uint32_t>(report.GetUserData()));
        EXPECT_TRUE(lineInserts == 0 || line == report.GetInserts()[0]);
        return platform::ToNarrow(text);
    }
    /// Warnings, then the error, with `, ` between them.
    std::string Reports() {
        std::string all;
        for (VReportMessageParams& warning : rep.GetWarnings()) all += (all.empty() ? "" : ", ") + Describe(warning);
        if (rep.GetError().GetCode() != 0) all += (all.empty() ? "" : ", ") + Describe(rep.GetError());
        return all;
    }
    std::string Tree() const {
        Dump dump;
        for (const auto& menu : rep.GetMenus()) dump.AddBlock(*menu);
        return dump.line.substr(0, dump.line.find_last_not_of(' ') + 1);
    }

    test::TemporaryFolder folder;
    VMenuResourceData table{kCommands};
    VMenuToolbarTextRep rep;
};

/// The text, the result and the reports.
constexpr std::tuple<const char*, MenuParseResult, const char*> kReportRows[] = {
    {"", kFailed, "E10A0002@0 *m"},
    {"ACCELERATOR\na,A\n\nb,B\na,C\nEND\n", kFailed, "E10A0003@5"},
    {"STRINGTABLE\na,x\nA,x\na,y\nEND\n", kFailed, "E10A0004@4"},
    {"MENU m\nEND\nTOOLBAR \"m\"\nEND\n", kFailed, "E10A0005@3 m"},
    {"MENU m\nPOPUPMENU m\nEND\nPOPUPMENU m\nEND\nEND\n", kClean, ""},
    {"MENU m\nMENU n\nEND\n", kFailed, "E10A0006@2"},
    {"MENU m\nACCELERATOR\n", kFailed, "E10A0006@2"},
    {"ACCELERATOR\nMENUITEM a,COPY\nEND\n", kFailed, "E10A0006@2"},
    {"MENU m\nMENUITEM a,COPY\n\n", kFailed, "E10A0006@3"},
    {"MENU \"m\n", kFailed, "E10A0007@1 *m"},
    {"TOOLBAR t\nPOPUPMENU a,b,c,d,e,f,\"g\nEND\n", kFailed, "E10A0007@2 *m"},
    {"MENU m\nMENUITEM \"a, COPY\nMENUITEM a, COPY, \"x\"y\nEND\n", kWarnings, "E10A0007@2 *m, E10A0007@3 *m"},
    {"ACCELERATOR\nMENUITEM \"\n\"a,b\nEND\n", kWarnings, "E10A0007@2 *m, E10A0007@3 *m"},
    {"MENU m\nMENUITEM a,COPY,,,key\nEND\n", kWarnings, "A10A0008@2 key"},
    {"MENU m\nMENUITEM a,COPY,,text\nEND\n", kWarnings, "A10A0009@2 text"},
    {"MENU m\nMENUITEM a\ndata\nTOOLBARITEM COPY,COPY\nEND\n", kWarnings, "A10A000A@2, A10A000A@3, A10A000A@4"},
    {"ACCELERATOR\na\nEND\nSTRINGTABLE\nb\nEND\nFONT\n", kWarnings, "A10A000A@2, A10A000A@5, A10A000A@7"},
    {"MENU m\nMENUITEM a,copy\nMENUITEM a,\nMENUITEM a,SIXTEEN\nMENUITEM a,NOTHING\nEND\n", kWarnings,
     "A10A000B@2 copy, A10A000B@3 , A10A000B@4 SIXTEEN, A10A000B@5 NOTHING"},
    {"TOOLBAR t\nTOOLBARITEM no.png,COPY\nEND\n", kWarnings, "A10A000C@2 *no.png The file or entry does not exist."},
    {"TOOLBAR t\nTOOLBARITEM ,COPY\nTOOLBARITEM \" \",COPY\nEND\n", kWarnings, "A10A000D@2, A10A000D@3"},
    {"MENU m\nMENUITEM a,RUN,/no/script\nMENUITEM a,RUN,/dev/zero\nMENUITEM a,RUN,\nEND\n", kWarnings,
     "A10A000E@2 /no/script, A10A000E@3 /dev/zero, A10A000E@4 "},
    {"MENU m\nMENUITEM a,SEND\nMENUITEM a,RUN\nMENUITEM a,OPEN_SESSION\nMENUITEM a,OPEN_SESSION_TAB\nEND\n", kWarnings,
     "A10A000F@2 send string, A10A000F@3 script file, A10A000F@4 open session, A10A000F@5 open session in tab"},
    {"FONT a\nFONT b\n", kWarnings, "A10A0010@2"},
    // Lines outside all blocks have no report.
    {"TOOLBAR\tt\nSEPARATOR\nMENUITEM a,COPY\n", kFailed, ""},
    {"FONT a\nFONT b\nEND\n", kFailed, "A10A0010@2"},
};

TEST_F(MenuReaderTest, EveryFaultIsReportedWithItsLine) {
    for (const auto& [text, result, reports] : kReportRows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Parse(text), result);
        EXPECT_EQ(Reports(), reports);
        const bool isSilent = result == kFailed && rep.GetError().GetCode() == 0;
        EXPECT_TRUE(!isSilent || rep.GetStrayLine() > 0);
        for (VReportMessageParams& report : rep.GetWarnings())
            EXPECT_TRUE(std::u16string_view(report.GetText()).starts_with(u"第 ")) << "a text of its own";
    }
}

constexpr const char* kTreeRows[][2] = {
    {"MENU m\nEND of it\nTOOLBAR t\nENDING\nPOPUPMENUp\nEND\n", "m{} t{} p{}"},
    {"MENU  \" m \" , x\n MENUITEM \"a, \"b\"\" , COPY\t\n\tSEPARATORS\n//x\nEND", " m {COPY(a, \"b\") -}"},
    {"MENU m\nMENUITEM a\"b,COPY,c\nMENUITEM ,COPY, \"\" \nMENUITEM a b,CUT,x,,,more,\nEND\n", "m{COPY() CUT(a b|x)}"},
    {"MENU m\nPOPUPMENU\nPOPUPMENU q\nMENUITEM a,COPY\nEND\nSEPARATOR\nEND\nMENUITEM b,COPY\nEND\n",
     "m{{q{COPY(a)} -} COPY(b)}"},
    {"STRINGTABLE\ns, \"Long, text\\nTip\\nX\", y\nt, both\ne,\nEND\nMENU m\nMENUITEM a,COPY,,s\nMENUITEM a,COPY,,t,\n"
     "MENUITEM a,COPY,,,\nMENUITEM a,COPY,,e\nMENUITEM a,COPY,,no\nEND\n",
     "m{COPY(a||Long, text|Tip\\nX) COPY(a||both|both) COPY(a) COPY(a)}"},
    {"ACCELERATOR\na, xyz, CTRL| shift\nv,B,VIRTKEY|Alt|HYPER|alt\np,C\nEND\n"
     "MENU m\nMENUITEM a,COPY,,,a\nMENUITEM b,CUT,,,v\nMENUITEM c,CUT,,,p\n"
     "MENUITEM d,CUT,,,p,\nEND\n",
     "m{COPY(a\tCtrl+Shift+x|||||14 x 100) CUT(b\tAlt+B|||||19 B 101) CUT(c\tC|||||2 C 101) CUT(d)}"},
    {"ACCELERATOR\na,A,ALT\nEND\nSTRINGTABLE\ns,x\nEND\nTOOLBAR t\nTOOLBARITEM COPY,CUT,,s,a\nTOOLBARITEM "
     "SEND,SIXTEEN\n"
     "SEPARATOR\nTOOLBARITEM COPY,SEND,\nEND\n",
     "t{CUT(||x|x|3|18 A 101) SIXTEEN(||||0) - SEND(||||3)}"},
};

TEST_F(MenuReaderTest, LinesBecomeATree) {
    for (const auto& [text, tree] : kTreeRows) {
        SCOPED_TRACE(text);
        EXPECT_NE(Parse(text), kFailed) << Reports();
        EXPECT_EQ(Tree(), tree);
    }
    EXPECT_EQ(Parse("MENU m\nMENUITEM a,OPEN_SESSION,Servers\\web\nMENUITEM b,COPY,x\nEND\nFONT \"Noto Sans\",12\n"),
              kClean);
    const VMenuToolbar::Items& items = rep.FindMenu(u"m")->GetItems();
    EXPECT_TRUE(items[0]->GetTakesArgument());
    EXPECT_FALSE(items[1]->GetTakesArgument());
    EXPECT_EQ(rep.GetFont(), u"Noto Sans");
    EXPECT_EQ(rep.FindMenu(u"M"), nullptr);
}

TEST_F(MenuReaderTest, AFileMayBeInEachEncodingThatHasAMark) {
    for (const TextEncoding encoding : {TextEncoding::kUtf8, TextEncoding::kUtf16Le, TextEncoding::kUtf16Be}) {
        VTextFile file;
        file.SetEncoding(encoding);
        ASSERT_TRUE(file.Open(folder.Name("m"), platform::kGenericWrite, platform::kCreateAlways));
        for (const char16_t* line : {u"MENU 菜单", u"MENUITEM 复制,COPY", u"END"}) ASSERT_TRUE(file.WriteLine(line));
        file.Close();
        rep.SetCommandTable(&table);
        rep.SetFileName(folder.Name("m"));
        EXPECT_EQ(rep.Parse(), kClean) << Reports();
        EXPECT_EQ(Tree(), "菜单{COPY(复制)}");
    }
}

TEST_F(MenuReaderTest, ImagesAreFilesOfBoundedSize) {
    constexpr std::string_view kPng = "\x89PNG\r\n\x1A\nrest";
    folder.Write("a.png", kPng);
    folder.Write("text", "no image");
    folder.Write("empty", "");
    folder.Write("huge", kPng);
    fs::resize_file(folder / "huge", std::uintmax_t{1} << 30);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto parse = [&](const std::string& image) {
        return Parse("TOOLBAR t\nTOOLBARITEM \"" + image + "\",CUT\nTOOLBARITEM \"" + image + "\",CUT\nEND\n");
    };
    for (const std::string& good : {std::string("a.png"), folder / "a.png", "/" + (folder / "a.png")}) {
        EXPECT_EQ(parse(good), kClean) << Reports();
        const VMenuToolbar::Items& items = rep.FindMenu(u"t")->GetItems();
        EXPECT_EQ(items[0]->GetBitmapIndex(), -1);
        EXPECT_NE(items[0]->GetBitmap(), nullptr);
        EXPECT_EQ(items[0]->GetBitmap(), items[1]->GetBitmap()) << "loaded once";
    }
    for (const char* bad : {"text", "empty", "huge", "pipe", ".", "/dev/zero", "a.png/x", "none"}) {
        EXPECT_EQ(parse(bad), kWarnings) << bad;
        EXPECT_EQ(rep.GetWarnings().GetCount(), 2U);
        EXPECT_EQ(rep.GetWarnings()[0].GetCode(), 0xA10A000C);
    }
}

TEST_F(MenuReaderTest, HostileFilesEndWithAnError) {
    const auto errorCode = [&] { return rep.GetError().GetCode(); };
    std::string nested = "MENU m\n";
    for (int i = 0; i < 10'000; ++i) nested += "POPUPMENU x\n";
    EXPECT_EQ(Parse(nested), kFailed);
    EXPECT_EQ(Reports(), "E10A0006@" + std::to_string(VMenuToolbarTextRep::kDeepestPopup + 2));

    EXPECT_EQ(Parse("MENU m\nMENUITEM a," + std::string(10 << 20, 'x') + "\nEND\n"), kWarnings);
    EXPECT_LT(Reports().size(), 5000U);

    folder.Write("m", "");
    fs::resize_file(folder / "m", 100 << 20);
    EXPECT_EQ(rep.Parse(), kFailed);
    EXPECT_EQ(errorCode(), platform::kFileTooLarge) << "one line";
    EXPECT_EQ(Parse("FONT x" + std::string(VMenuToolbarTextRep::kMostLines, '\n')), kClean);
    EXPECT_EQ(Parse("FONT x" + std::string(VMenuToolbarTextRep::kMostLines + 1, '\n')), kFailed);
    EXPECT_EQ(errorCode(), platform::kFileTooLarge) << "many lines";
    const std::string line(std::size_t{1} << 20, 'x');
    std::string lines = "MENU m\n";
    for (int i = 0; i < 17; ++i) lines += line + '\n';
    EXPECT_EQ(Parse(lines), kFailed);
    EXPECT_EQ(errorCode(), platform::kFileTooLarge) << "much text";

    rep.SetFileName(folder.Name(""));
    EXPECT_EQ(rep.Parse(), kFailed);
    EXPECT_EQ(errorCode(), platform::kAccessDenied);
}

TEST_F(MenuReaderTest, ResetAndASecondParseLeaveNothingBehind) {
    rep.Reset();
    EXPECT_EQ(Parse("FONT a\nFONT b\nACCELERATOR\nk,K\nEND\nSTRINGTABLE\ns,x\nEND\nMENU m\n"), kFailed);
    EXPECT_EQ(Parse("MENU m\nMENUITEM a,COPY,,s\nMENUITEM a,COPY,,,k\nMENUITEM a,COPY\nEND\n"), kWarnings);
    EXPECT_EQ(Reports(), "A10A0009@2 s, A10A0008@3 k");
    EXPECT_EQ(rep.GetFont(), u"");
}

class CustomMenuToolbarTest : public testing::Test {
  protected:
    /// Parses, registers the commands of all blocks and, if not told otherwise, resets.
    void Register(std::string_view bytes, bool resets = true) {
        folder.Write("m", bytes);
        VMenuToolbarTextRep& rep = menus.GetRep();
        rep.SetCommandTable(&GetStandardMenuCommands());
        rep.SetFileName(folder.Name("m"));
        ASSERT_EQ(rep.Parse(), MenuParseResult::kClean);
        for (const auto& block : rep.GetMenus()) menus.RegisterCommands(*block);
        if (resets) rep.Reset();
    }

    test::TemporaryFolder folder;
    VCustomMenuToolbar menus;
    VMenuToolbarItem item;
    VUnicodeString text{u"before"};
};

TEST_F(CustomMenuToolbarTest, CommandsAndToolTipsOutliveTheDescription) {
    const std::uint32_t copy = GetStandardMenuCommands().GetCommandNumber(u"MENU_COPY");
    const std::uint32_t paste = GetStandardMenuCommands().GetCommandNumber(u"MENU_PASTE");
    EXPECT_FALSE(menus.FindToolTip(copy, text));
    EXPECT_EQ(text, u"");
    Register(
        "STRINGTABLE\ns,\"Prompt\\nTip\"\nt,Other\nEND\nMENU m\nPOPUPMENU p\nMENUITEM Copy,MENU_COPY\nEND\nSEPARATOR\n"
        "MENUITEM Paste,MENU_PASTE\nEND\nTOOLBAR b\nTOOLBARITEM MENU_COPY,MENU_COPY,,s\n"
        "TOOLBARITEM MENU_COPY,MENU_COPY,,t\nEND\n");
    EXPECT_TRUE(menus.FindToolTip(copy, text));
    EXPECT_EQ(text, u"Tip") << "the first that has one";
    EXPECT_TRUE(menus.FindToolTip(paste, text));
    EXPECT_EQ(text, u"");
    ASSERT_TRUE(menus.FindCommand(paste, item));
    item.GetText(text);
    EXPECT_EQ(text, u"Paste");
    EXPECT_FALSE(menus.FindCommand(0, item)) << "a separator is no command";
    EXPECT_FALSE(menus.FindCommand(copy + (1 << 16), item));
    item.GetText(text);
    EXPECT_EQ(text, u"Paste") << "what is not found leaves the item";
    menus.RemoveCommands();
    EXPECT_FALSE(menus.FindCommand(copy, item));
}

TEST_F(CustomMenuToolbarTest, ItemsWithAnArgumentHaveCommandsOfTheirOwn) {
    Register(
        "ACCELERATOR\na,A,CTRL\nb,B,CTRL\nEND\nMENU m\nMENUITEM x,SEND,one,,a\nMENUITEM y,SEND,two,,b\n"
        "MENUITEM z,MENU_COPY,,,a\nMENUITEM z,MENU_COPY\nEND\n");
    constexpr std::uint32_t kFirst = VCustomMenuToolbar::kFirstArgumentCommand;
    for (const auto& [command, argument] : {std::pair(kFirst, u"one"), std::pair(kFirst + 1, u"two")}) {
        ASSERT_TRUE(menus.FindCommand(command, item));
        item.GetArgument(text);
        EXPECT_EQ(text, argument);
        EXPECT_EQ(item.GetType(), kMenuTypeSend);
        EXPECT_EQ(item.GetAccelerator().command, command);
    }
    EXPECT_FALSE(menus.FindCommand(kMenuTypeSend, item));
    ASSERT_EQ(menus.GetAccelerators().GetCount(), 2U) << "a key fires one command";
    EXPECT_EQ(menus.GetAccelerators()[0], (VMenuAccelerator{10, u'A', static_cast<std::uint16_t>(kFirst)}));
    EXPECT_EQ(menus.GetAccelerators()[1].command, kFirst + 1);
}

TEST_F(CustomMenuToolbarTest, MenusBarsAndKeysAreBuiltWithTextsOfTheCommands) {
    Register(
        "ACCELERATOR\na,c,CTRL|shift\nb,*,ALT\nv,9,VIRTKEY\nEND\nSTRINGTABLE\ns,\"Prompt\\nTip\"\nEND\nMENU m\n"
        "POPUPMENU p\nMENUITEM Copy,MENU_COPY,,s,a\nSEPARATOR\nPOPUPMENU q\nMENUITEM x,SEND,one,,b\nEND\nEND\n"
        "MENUITEM y,SEND,two,,v\nSEPARATOR\nPOPUPMENU e\nEND\nEND\nTOOLBAR t\nTOOLBARITEM MENU_FIND,MENU_COPY,\n"
        "SEPARATOR\nTOOLBARITEM MENU_PASTE,MENU_EXIT\nTOOLBARITEM MENU_RESET,MENU_EXIT\nEND\n",
        false);
    const VMenuToolbarTextRep& rep = menus.GetRep();

    constexpr int kFirst = VCustomMenuToolbar::kFirstArgumentCommand;
    const VPopupMenu menu = MakePopupMenu(*rep.FindMenu(u"m"), menus);
    ASSERT_EQ(menu.GetEntries().size(), 4U);
    EXPECT_FALSE(menu.GetEntries()[2].isSubMenu);
    EXPECT_TRUE(menu.GetEntries()[3].isSubMenu) << "also without entries";
    const VPopupMenu::Entry& popup = menu.GetEntries()[0];
    ASSERT_EQ(popup.children.size(), 3U);
    EXPECT_EQ(popup.children[0].text, u"Copy\tCtrl+Shift+c");
    EXPECT_EQ(popup.children[0].prompt, u"Prompt");
    EXPECT_EQ(popup.children[2].children[0].command, kFirst);

    const VPopupMenu menuBar = MakeMenuBar(*rep.FindMenu(u"m"), menus);
    ASSERT_EQ(menuBar.GetEntries().size(), 3U) << "no separator";
    EXPECT_EQ(menuBar.GetEntries()[0].children[0].text, popup.children[0].text);
    EXPECT_EQ(menuBar.GetEntries()[1].text, u"y") << "no key";

    const VToolbarState bar = MakeToolbar(*rep.FindMenu(u"t"), menus);
    ASSERT_EQ(bar.GetButtons().size(), 4U);
    EXPECT_EQ(bar.GetButtons()[0].tip, u"Tip") << "of the command, wherever it has one";
    EXPECT_EQ(bar.GetButtons()[0].picture, ConnectCommands::kFind) << "another function's";
    EXPECT_EQ(bar.GetButtons()[2].text, u"");
    EXPECT_EQ(bar.GetButtons()[3].text, u"MENU_EXIT") << "instead of a picture";

    const std::vector<Accelerator> keys = MakeAccelerators(menus);
    ASSERT_EQ(keys.size(), 2U) << "there is no key for the asterisk";
    EXPECT_EQ(keys[0].key, u'C');
    EXPECT_EQ(keys[0].modifiers, Accelerator::kControl | Accelerator::kShift);
    EXPECT_EQ(keys[1].command, kFirst + 1);
}

/// Notes who gets which key.
class KeyBar : public VCustomToolbar, public IToolbarEditSink {
  public:
    void OnShowPane(bool isShown, std::int32_t width, std::int32_t height) override {
        log += (isShown ? "show " : "hide ") + std::to_string(width) + "x" + std::to_string(height);
    }
    void OnEnterKey(bool isControlDown, const ToolbarKeyMessage&) override {
        log += isControlDown ? "ctrl+sink" : "sink";
    }
    using VCustomToolbar::OnUserToolTip;
    std::string TakeLog() { return std::exchange(log, {}); }

  protected:
    void DispatchToEdit(const ToolbarKeyMessage&) override { log += "edit"; }

  private:
    std::string log;
};

TEST(CustomToolbarTest, KeysOfAnEditControlReachItPastTheAccelerators) {
    constexpr std::tuple<ToolbarKeyMessage, bool, const char*> kRows[] = {
        {{256, 8, false}, true, "edit"},  {{257, 46, true}, true, "edit"},      {{258, 13, false}, true, "edit"},
        {{256, 13, false}, true, "sink"}, {{256, 13, true}, true, "ctrl+sink"}, {{256, 'C', true}, true, "edit"},
        {{265, 'V', true}, true, "edit"}, {{256, 'C', false}, false, ""},       {{256, 'X', true}, false, ""},
        {{256, 9, false}, false, ""},     {{255, 13, false}, false, ""},        {{266, 8, false}, false, ""},
    };
    KeyBar bar;
    for (const auto& [message, isTaken, log] : kRows) {
        EXPECT_FALSE(bar.PreTranslateMessage(message)) << "without a control";
        bar.SetEditSink(&bar);
        EXPECT_EQ(bar.PreTranslateMessage(message), isTaken) << message.message << ' ' << message.key;
        EXPECT_EQ(bar.TakeLog(), log) << message.message << ' ' << message.key;
        bar.SetEditSink(nullptr);
    }
    bar.ShowPane(true, 30, 20);
    EXPECT_EQ(bar.TakeLog(), "");
    bar.SetEditSink(&bar);
    bar.ShowPane(false, 31, 21);
    EXPECT_EQ(bar.TakeLog(), "hide 31x21");
    EXPECT_EQ(bar.GetEditColours().text, 0x808080U);
    bar.ShowHint(false);
    EXPECT_FALSE(bar.GetEditColours().text);
    VUnicodeString tip;
    EXPECT_FALSE(bar.OnUserToolTip(1, tip)) << "no such command";
}

TEST(ButtonLineTest, ALineGivesBackWhatItWasMadeOf) {
    constexpr std::u16string_view kTexts[] = {u"plain", u"a,b\\,", u"\\r\\n", u"x\\\r\n\\", u" \r\n\r\n ,", u"\\"};
    UserButton button;
    button.function = GetKeyFunctionID(u"SEND");
    for (const std::u16string_view text : kTexts) {
        button.text = text;
        button.label = button.text;
        button.label.Replace(u"\r\n", u"");
        for (const std::u16string_view argument : kTexts) {
            if (argument.find(u'\n') != argument.npos) continue;  // only the text has lines
            button.argument1 = argument;
            button.argument2 = argument;
            button.argument3 = argument.size() > 4 ? argument : u"";
            const VUnicodeString line = EncodeButtonLine(button);
            EXPECT_EQ(DecodeButtonLine(line), button) << platform::ToNarrow(line);
        }
    }
}

TEST(StandardMenuCommandsTest, NumbersAreUniqueAndFitAnAccelerator) {
    const VMenuResourceData& commands = GetStandardMenuCommands();
    EXPECT_EQ(commands.GetCommandNumber(u"SEND"), 17U);
    EXPECT_EQ(commands.GetCommandNumber(u"OPEN_SESSION_TAB"), 20U);
    EXPECT_EQ(commands.GetCommandNumber(u"menu_copy"), 0U);
    EXPECT_EQ(commands.GetBitmapIndex(u"menu_copy"), -1);
    std::set<std::uint32_t> numbers{16, 17, 18, 19, 20, 2048};
    for (std::uint32_t function = kKeyFunctionLaunch + 2; function <= 184; ++function) {
        const VUnicodeString name = GetKeyFunctionName(function);
        const std::uint32_t number = commands.GetCommandNumber(name);
        EXPECT_EQ(number, kFirstKeyFunctionCommand + function);
        EXPECT_TRUE(numbers.insert(number).second);
        EXPECT_LT(number, VCustomMenuToolbar::kFirstArgumentCommand);
    }
}

}  // namespace
}  // namespace connectdialog
