// Cut, copy, paste, drag and drop.
#include "connectdialog/treetransferrecord.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;
using enum SessionArrangement;

constexpr KeyModifiers kControl = Accelerator::kControl;

class Transfer : public ConnectDialogTest {
  protected:
    /// f holds a, b and the folder in with x; g holds c; the root holds s and t.
    void OpenWorld(SessionArrangement arrangement) {
        AddSessions({u"f\\a", u"f\\b", u"f\\in\\x", u"g\\c", u"s", u"t"});
        Arrange(arrangement);
        Open();
        for (const std::u16string_view folder : {u"", u"f", u"f\\in", u"g"}) Expand(folder);
    }
    std::string Stored() {
        return StoredIn(u"") + " | " + StoredIn(u"f") + " | " + StoredIn(u"f\\in") + " | " + StoredIn(u"g");
    }
    /// Reads the tree, reloads it, and expects the same folders, sessions and order.
    void ExpectStoreAgrees() {
        const auto outline = [&] {
            std::string text = Tree().Read();
            std::erase_if(text, [](char c) { return c == '*' || c == '<' || c == 'x' || c == '>'; });
            return text;
        };
        for (const std::u16string_view folder : {u"", u"f", u"g"})
            if (Tree().Find(folder) != TreeItem::kNone) Expand(folder);
        const std::string shown = outline();
        dialog->Destroy();
        Open();
        for (const std::u16string_view folder : {u"", u"f", u"g"})
            if (Tree().Find(folder) != TreeItem::kNone) Expand(folder);
        EXPECT_EQ(outline(), shown);
    }
    std::vector<std::byte>& ClipboardBlock() { return kit.GetClipboard()[std::u16string(kTreeTransferFormat)]; }
};

TEST_F(Transfer, TheRecordHasItsPublishedLayout) {
    TreeTransferRecord record;
    record.sourceItem = static_cast<TreeItem>(0x0102030405060708);
    record.sourcePath = u"A\\é"_v;
    record.sourceLocation = VUnicodeString(std::u16string(300, u'p'));
    record.isCut = true;
    const std::vector<std::byte> block = record.Pack();
    ASSERT_EQ(block.size(), 1056U);
    const auto at = [&](std::size_t offset) { return std::to_integer<int>(block[offset]); };
    EXPECT_EQ(at(0), 8);
    EXPECT_EQ(at(7), 1);
    EXPECT_EQ(at(8), 'A');
    EXPECT_EQ(at(12), 0xE9);
    EXPECT_EQ(at(14), 0);
    EXPECT_EQ(at(528 + 2 * 258), 'p');
    EXPECT_EQ(at(528 + 2 * 259), 0) << "the last character of a text is a zero";
    EXPECT_EQ(at(1048), 1);
    const auto read = TreeTransferRecord::Unpack(block);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->sourceItem, record.sourceItem);
    EXPECT_EQ(read->sourcePath, record.sourcePath);
    EXPECT_EQ(read->sourceLocation.GetLength(), 259U);
    EXPECT_TRUE(read->isCut);
    // A block without a zero anywhere does not run off its texts.
    const auto wild = TreeTransferRecord::Unpack(std::vector(1056, std::byte{0xFF}));
    ASSERT_TRUE(wild);
    EXPECT_EQ(wild->sourcePath.GetLength(), 259U);
    EXPECT_FALSE(TreeTransferRecord::Unpack(std::vector(1055, std::byte{0})));
}

TEST_F(Transfer, PasteGoesWhereTheTargetSays) {
    struct Row {
        SessionArrangement arrangement;
        const char16_t* source;
        const char16_t* target;
        bool isCut;
        const char* stored;  ///< root | f | f\in | g
        const char* selected;
    };
    const Row rows[] = {
        {kAlphabetical, u"s", u"f", true, "f/ g/ t | in/ a b s | x | c", "s"},
        {kAlphabetical, u"s", u"f\\a", false, "f/ g/ s t | in/ a b s | x | c", "s"},
        {kAlphabetical, u"f\\a", u"f", false, "f/ g/ s t | in/ a a (1) b | x | c", "a (1)"},
        {kAlphabetical, u"f\\a", u"f\\b", true, "f/ g/ s t | in/ a b | x | c", "b"},  // its own folder: nothing
        {kAlphabetical, u"f\\in", u"", true, "f/ g/ in/ s t | a b |  | c", "in"},
        {kAlphabetical, u"f\\in", u"f\\in", false, nullptr, "in"},  // refused
        {kAlphabetical, u"f", u"f\\in", true, nullptr, "in"},       // refused
        {kAlphabetical, u"g", u"f", false, "f/ g/ s t | g/ in/ a b | x | c", "g"},
        {kLogical, u"t", u"g", true, "f/ g/ s | in/ a b | x | c t", "t"},
        {kManual, u"t", u"f\\a", true, "f/ g/ s | in/ a t b | x | c", "t"},
        {kManual, u"t", u"f", false, "f/ g/ s t | in/ a b t | x | c", "t"},
        {kManual, u"t", u"", true, "f/ g/ s t | in/ a b | x | c", "t"},
        {kManual, u"s", u"t", true, "f/ g/ t s | in/ a b | x | c", "s"},
        {kManual, u"s", u"f", true, "f/ g/ t | in/ a b s | x | c", "s"},
        {kManual, u"f", u"s", true, "g/ f/ s t | in/ a b | x | c", "f"},
        {kManual, u"g", u"f\\a", false, "f/ g/ s t | in/ g/ a b | x | c", "g"},
        {kManual, u"f\\in", u"g", true, "f/ g/ s t | a b |  | in/ c", "in"},
        {kManual, u"g", u"s", true, "f/ g/ s t | in/ a b | x | c", "s"},  // the last folder already
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Escape(row.source) + " to " + Escape(row.target));
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"Sessions"); });
        OpenWorld(row.arrangement);
        const std::string before = Stored();
        if (row.stored == nullptr)
            kit.ExpectBox(VUnicodeString(row.source) == row.target
                              ? u"Cannot copy a folder into itself"_v
                              : u"Cannot copy or move a parent folder into a child"_v,
                          kAnswerOk);
        CopyTo(row.source, row.target, row.isCut);
        EXPECT_EQ(Stored(), row.stored != nullptr ? row.stored : before);
        EXPECT_EQ(Selected(), row.selected);
        EXPECT_EQ(dialog->GetEnabled().find('V') != std::string::npos, !row.isCut);
        EXPECT_EQ(Tree().Read().find('x'), Tree().Read().find("x\n")) << "no cut mark is left";
        ExpectStoreAgrees();
    }
}

TEST_F(Transfer, ACutItemShowsItUntilItIsPastedOrTakenBack) {
    OpenWorld(kAlphabetical);
    Click(u"f\\a");
    Command(kCut);
    EXPECT_TRUE(dialog->Items().HasState(At(u"f\\a"), kTreeCut));
    Click(u"f\\b");
    Command(kBarCut);
    EXPECT_FALSE(dialog->Items().HasState(At(u"f\\a"), kTreeCut)) << "one at a time";
    Command(kPaste);
    EXPECT_FALSE(dialog->Items().HasState(At(u"f\\b"), kTreeCut)) << "pasted on itself: taken back";
    EXPECT_EQ(dialog->GetEnabled(), "CcPXD");
    Click(u"f\\a");
    Command(kCut);
    Click(u"");
    Command(kCopy);
    EXPECT_TRUE(dialog->Items().HasState(At(u"f\\a"), kTreeCut)) << "the root cannot be copied";
    Click(u"f\\a");
    Click(u"f\\b", kControl);
    Command(kCopy);
    Click(u"g");
    Command(kPaste);
    EXPECT_EQ(StoredIn(u"g"), "a c") << "several are not copied either: what was cut is pasted";
}

TEST_F(Transfer, ACopyCanBePastedAgainAndKeepsItsValues) {
    OpenWorld(kAlphabetical);
    AddSession(u"f\\a", u"SSH2", u"None", u"a.example");
    CopyTo(u"f\\a", u"g", false);
    Command(kBarPaste);
    Click(u"");
    Command(kPaste);
    EXPECT_EQ(Stored(), "f/ g/ a s t | in/ a b | x | a a (1) c");
    VUnicodeString host;
    OpenSession(u"g\\a (1)"_v)->GetConnectConfig()->GetHostName(host);
    EXPECT_EQ(host, u"a.example");
}

TEST_F(Transfer, AnItemThatIsGoneCannotBePasted) {
    OpenWorld(kAlphabetical);
    Click(u"f\\a");
    Command(kCopy);
    Rename(u"f\\a", u"e"_v);
    kit.ExpectBox(u"Item 'a' is no longer available for pasting"_v, kAnswerOk);
    Command(kPaste);
    EXPECT_EQ(dialog->GetEnabled(), "CcPXDV") << "a copy may come back";
    Click(u"s");
    Command(kCut);
    Click(u"g");
    WithKey(u"Sessions", [](VProfileKey& key) { key.DeleteKey(u"s"); });
    kit.ExpectBox(u"Item 's' is no longer available for pasting"_v, kAnswerOk);
    Command(kPaste);
    EXPECT_EQ(dialog->GetEnabled(), "CcPXD");
    Command(kPaste);
    EXPECT_EQ(StoredIn(u"g"), "c") << "silent once it is off";
}

TEST_F(Transfer, TheClipboardIsNotTrusted) {
    OpenWorld(kManual);
    Click(u"f\\a");
    Command(kCopy);
    const std::vector<std::byte> good = ClipboardBlock();
    const std::string before = Stored();
    Click(u"g");
    for (const std::size_t size : {std::size_t{0}, std::size_t{8}, std::size_t{1055}, std::size_t{1057}}) {
        ClipboardBlock().resize(size);
        Command(kPaste);
    }
    kit.GetClipboard().clear();
    Command(kPaste);
    // A handle of nothing, and one of another item than the path says.
    TreeTransferRecord record = *TreeTransferRecord::Unpack(good);
    for (const TreeItem handle : {TreeItem::kNone, static_cast<TreeItem>(0xFFFFFFFFFFFFFFFF), At(u"f\\b"), At(u"")}) {
        record.sourceItem = handle;
        ClipboardBlock() = record.Pack();
        kit.ExpectBox(u"Item 'a' is no longer available for pasting"_v, kAnswerOk);
        Command(kPaste);
        for (KeyModifiers keys : {KeyModifiers{0}, kControl}) {
            Tree().DragFromOutside(VDragData(kTreeTransferFormat, record.Pack()), [&](HeadlessDrag& drag) {
                EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f")), keys), DropEffect::kNone);
                EXPECT_FALSE(drag.Drop());
            });
        }
    }
    Tree().DragFromOutside(VDragData(u"Text"_v, good), [&](HeadlessDrag& drag) {
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f"))), DropEffect::kNone);
    });
    EXPECT_EQ(Stored(), before);
    kit.BreakClipboard(true);
    kit.ExpectBox(u"ERROR: Unable to copy item to clipboard"_v, kAnswerOk);
    Command(kCopy);
    Command(kPaste);
    EXPECT_EQ(Stored(), before);
}

TEST_F(Transfer, AFolderLooksAsBeforeWhereverItGoes) {
    OpenWorld(kManual);
    panels.global->rememberFolderExpansion.Set(false);  // which is about the next time
    EXPECT_TRUE(DragTo(u"f", u"g", 2));
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -g\n     c\n  -*f <\n    -in\n       x\n     a\n     b\n   s\n   t\n");
    EXPECT_TRUE(DragTo(u"f\\in", u"g"));
    CopyTo(u"g", u"f", false);
    EXPECT_EQ(Tree().Read(),
              "-Sessions\n  -g\n    -in\n       x\n     c\n  -f\n    -*g <\n      -in\n         x\n       c\n     a\n"
              "     b\n   s\n   t\n");
}

TEST_F(Transfer, PathsLongerThanTheRecordAreMovedAllTheSame) {
    std::u16string folder(200, u'f');
    const std::u16string deep = folder + u'\\' + std::u16string(200, u'g');
    AddSession((deep + u"\\s").c_str());
    AddSession((deep + u"\\t").c_str());
    Open();
    Expand(u"");
    Expand(folder);
    Expand(deep);
    CopyTo(deep + u"\\s", u"", true);
    EXPECT_TRUE(SessionKeyExists(u"s"_v));
    EXPECT_EQ(StoredIn(deep.c_str()), "t");
    EXPECT_TRUE(DragTo(deep + u"\\t", u""));
    EXPECT_EQ(StoredIn(deep.c_str()), "");
}

TEST_F(Transfer, AChangeOfTheArrangementTurnsPasteOff) {
    OpenWorld(kAlphabetical);
    Click(u"s");
    Command(kCut);
    EXPECT_EQ(dialog->GetEnabled(), "CcPXDV");
    Command(kArrangeManually);
    EXPECT_EQ(dialog->GetEnabled(), "CcPXD");
}

TEST_F(Transfer, DropsGoWhereTheyArePointedAt) {
    struct Row {
        SessionArrangement arrangement;
        const char16_t* source;
        const char16_t* target;
        int zone;
        KeyModifiers keys;
        const char* stored;  ///< null: no drop is offered
    };
    const char* const same = "f/ g/ s t | in/ a b | x | c";
    const Row rows[] = {
        {kAlphabetical, u"s", u"f", 1, 0, "f/ g/ t | in/ a b s | x | c"},
        {kAlphabetical, u"s", u"f\\a", 0, kControl, "f/ g/ s t | in/ a b s | x | c"},
        {kAlphabetical, u"s", u"t", 2, 0, same},  // its own folder has its own order
        {kAlphabetical, u"f\\a", u"f\\b", 1, kControl, "f/ g/ s t | in/ a a (1) b | x | c"},
        {kAlphabetical, u"f\\a", u"", 1, 0, "f/ g/ a s t | in/ b | x | c"},
        {kAlphabetical, u"g", u"f\\a", 1, 0, "f/ s t | g/ in/ a b | x | "},
        {kAlphabetical, u"f", u"f\\in", 1, 0, nullptr},
        {kAlphabetical, u"f", u"f\\a", 1, 0, nullptr},
        {kAlphabetical, u"f", u"f\\in\\x", 1, kControl, nullptr},
        {kAlphabetical, u"s", u"f", 1, KeyModifiers{kControl | Accelerator::kShift}, nullptr},
        {kAlphabetical, u"s", u"f", 1, Accelerator::kShift, nullptr},
        {kAlphabetical, u"s", u"f", 1, Accelerator::kAlt, "f/ g/ t | in/ a b s | x | c"},
        {kManual, u"t", u"s", 0, 0, "f/ g/ t s | in/ a b | x | c"},
        {kManual, u"s", u"t", 2, 0, "f/ g/ t s | in/ a b | x | c"},
        {kManual, u"s", u"t", 0, 0, same},  // where it stands already
        {kManual, u"t", u"s", 2, 0, same},
        {kManual, u"t", u"f\\a", 0, 0, "f/ g/ s | in/ t a b | x | c"},
        {kManual, u"t", u"f\\b", 0, 0, "f/ g/ s | in/ a t b | x | c"},
        {kManual, u"t", u"f\\b", 1, 0, "f/ g/ s | in/ a t b | x | c"},
        {kManual, u"t", u"f\\b", 2, kControl, "f/ g/ s t | in/ a b t | x | c"},
        {kManual, u"f\\b", u"f\\a", 0, kControl, "f/ g/ s t | in/ b (1) a b | x | c"},
        {kManual, u"s", u"f", 0, 0, "f/ g/ t | in/ a b s | x | c"},
        {kManual, u"f\\a", u"f", 2, 0, "f/ g/ s t | in/ b a | x | c"},
        {kManual, u"g", u"f", 0, 0, "g/ f/ s t | in/ a b | x | c"},
        {kManual, u"g", u"f", 2, 0, same},
        {kManual, u"f", u"g", 2, 0, "g/ f/ s t | in/ a b | x | c"},
        {kManual, u"f", u"g", 0, 0, same},
        {kManual, u"g", u"f", 1, 0, "f/ s t | in/ g/ a b | x | "},
        {kManual, u"g", u"f\\in", 0, 0, "f/ s t | g/ in/ a b | x | "},
        {kManual, u"g", u"f\\in", 2, 0, "f/ s t | in/ g/ a b | x | "},
        {kManual, u"g", u"f\\a", 0, 0, "f/ s t | in/ g/ a b | x | "},
        {kManual, u"f", u"t", 1, 0, "g/ f/ s t | in/ a b | x | c"},
        {kManual, u"f\\in", u"", 0, 0, "in/ f/ g/ s t | a b |  | c"},
        {kManual, u"g", u"", 2, 0, "g/ f/ s t | in/ a b | x | c"},
        {kManual, u"f\\in", u"", 1, 0, "f/ g/ in/ s t | a b |  | c"},
        {kManual, u"f", u"f\\in", 0, 0, nullptr},
        {kManual, u"f", u"f\\a", 2, 0, nullptr},
        {kManual, u"f", u"f", 1, kControl, nullptr},
        {kManual, u"f", u"g", 1, Accelerator::kShift, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(Escape(row.source) + " on " + Escape(row.target) + ' ' + std::to_string(row.zone));
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"Sessions"); });
        OpenWorld(row.arrangement);
        const bool isTaken = DragTo(row.source, row.target, row.zone, row.keys);
        EXPECT_EQ(Stored(), row.stored != nullptr ? row.stored : same);
        const bool isSame = row.stored == nullptr || std::string_view(row.stored) == same;
        EXPECT_TRUE(isSame ? row.stored != nullptr || !isTaken : isTaken);
        EXPECT_EQ(Tree().Read().find('>'), std::string::npos) << "no mark is left";
        EXPECT_EQ(Tree().Read().find("---"), std::string::npos);
        EXPECT_FALSE(Tree().ShowsDragImage());
        ExpectStoreAgrees();
    }
}

TEST_F(Transfer, ADragShowsWhereItWouldGo) {
    OpenWorld(kManual);
    EXPECT_FALSE(Tree().Drag(At(u""), [](HeadlessDrag&) {})) << "the root stays";
    const auto markAt = [&](std::u16string_view path) {
        const std::string text = Tree().Read();
        const std::string leaf = Escape(path.substr(path.rfind(u'\\') + 1));
        if (text.find(">" + leaf) != std::string::npos) return "on";
        const std::size_t line = text.find("---\n");
        const std::size_t label = text.find(leaf + "\n");
        return line == std::string::npos ? "none" : line < label ? "before" : "behind";
    };
    Tree().Drag(At(u"t"), [&](HeadlessDrag& drag) {
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f\\b"), 1)), DropEffect::kMove);
        EXPECT_STREQ(markAt(u"f\\b"), "before");
        drag.MoveTo(Tree().PointOn(At(u"f\\b"), 19));
        EXPECT_STREQ(markAt(u"f\\b"), "behind");
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"g")), kControl), DropEffect::kCopy);
        EXPECT_STREQ(markAt(u"g"), "on");
        EXPECT_TRUE(Tree().ShowsDragImage());
        drag.Leave();
        EXPECT_STREQ(markAt(u"g"), "none");
        EXPECT_EQ(drag.MoveTo({-5, -5}), DropEffect::kNone);
    });
    Tree().Drag(At(u"g"), [&](HeadlessDrag& drag) {
        drag.MoveTo(Tree().PointOn(At(u"f\\b")));
        EXPECT_NE(Tree().Read().find("---\n     a\n"), std::string::npos) << "the end of the folders";
    });
}

TEST_F(Transfer, AFolderUnderAWaitingDragOpens) {
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        OpenWorld(arrangement);
        EXPECT_TRUE(Tree().ClickExpander(At(u"g")));
        Tree().Drag(At(u"s"), [&](HeadlessDrag& drag) {
            const VPoint point = Tree().PointOn(At(u"g"));
            const unsigned wait = arrangement == kManual ? 1000 : 750;
            drag.MoveTo(Tree().PointOn(At(u"f")));
            drag.MoveTo(point);
            drag.MoveTo(point);
            drag.Wait(wait / 2);
            drag.MoveTo(Tree().PointOn(At(u"f")));
            drag.Wait(wait);
            EXPECT_FALSE(dialog->Items().HasState(At(u"g"), kTreeExpanded)) << "the pointer went on";
            drag.MoveTo(point);
            drag.MoveTo(point);
            drag.Wait(wait - 1);
            EXPECT_FALSE(dialog->Items().HasState(At(u"g"), kTreeExpanded));
            drag.Wait(1);
            EXPECT_TRUE(dialog->Items().HasState(At(u"g"), kTreeExpanded));
        });
        Window().Elapse(5000);
    }
}

TEST_F(Transfer, ADragAtTheEdgeScrolls) {
    for (int i = 0; i < 40; ++i) {
        VUnicodeString name;
        name.Format(u"s%1!02d!", i);
        AddSession(name.GetData());
    }
    Open();
    Expand(u"");
    Tree().Drag(At(u"s00"), [&](HeadlessDrag& drag) {
        drag.MoveTo({50, 100});
        const VPoint low{50, Tree().GetClientRectangle().bottom - 5};
        drag.MoveTo(low);
        drag.MoveTo(low);
        EXPECT_EQ(Tree().GetFirstRow(), 2);
        drag.MoveTo({50, 3});
        EXPECT_EQ(Tree().GetFirstRow(), 1);
    });
}

}  // namespace
}  // namespace connectdialog::test
