// Cut, copy, paste, drag and drop: what is offered, shown and refused. Where things end up in each order, from and to
// any kind of item, is the random user's matter.
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
        WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"Sessions"); });
        AddSessions({u"f\\a", u"f\\b", u"f\\in\\x", u"g\\c", u"s", u"t"});
        Arrange(arrangement);
        Open();
        for (const std::u16string_view folder : {u"f\\in", u"g"}) Expand(folder);
    }
    std::string Stored() {
        return StoredIn(u"") + " | " + StoredIn(u"f") + " | " + StoredIn(u"f\\in") + " | " + StoredIn(u"g");
    }
    std::vector<std::byte>& ClipboardBlock() { return kit.GetClipboard()[std::u16string(kTreeTransferFormat)]; }
};

TEST_F(Transfer, TheClipboardIsNotTrusted) {
    OpenWorld(kManual);
    Click(u"f\\a");
    Command(kCopy);
    const std::vector<std::byte> good = ClipboardBlock();
    const std::string before = Stored();
    Click(u"g");
    for (const std::size_t size : {std::size_t{0}, std::size_t{1055}, std::size_t{1057}}) {
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
        Tree().DragFromOutside(VDragData(kTreeTransferFormat, record.Pack()), [&](HeadlessDrag& drag) {
            EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f")), kControl), DropEffect::kNone);
            EXPECT_FALSE(drag.Drop());
        });
    }
    Tree().DragFromOutside(VDragData(u"Text"_v, good), [&](HeadlessDrag& drag) {
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f"))), DropEffect::kNone);
    });
    kit.BreakClipboard(true);
    kit.ExpectBox(u"ERROR: Unable to copy item to clipboard"_v, kAnswerOk);
    Command(kCopy);
    Command(kPaste);
    EXPECT_EQ(Stored(), before);
}

TEST_F(Transfer, WhatIsCutIsMarkedAndPastedOnceWhatIsCopiedAsOftenAsWanted) {
    OpenWorld(kAlphabetical);
    panels.global->rememberFolderExpansion.Set(false);
    Open();  // no folder has been opened yet
    Expand(u"");
    // What is marked as cut, and "V" where something can be pasted.
    const auto state = [&] {
        std::string text;
        for (const char16_t* path : {u"f", u"f\\in", u"g", u"s", u"t"})
            if (dialog->Items().HasState(At(path), kTreeCut)) text += Escape(path);
        return text + (dialog->GetEnabled().ends_with('V') ? " V" : "");
    };
    for (const bool isRoot : {true, false}) {
        Click(isRoot ? u"" : u"s");
        if (!isRoot) Click(u"t", kControl);
        Command(kCopy);
        EXPECT_EQ(state(), "") << "neither the root nor several";
    }
    Click(u"s");
    Command(kBarCut);
    EXPECT_EQ(state(), "s V");
    Click(u"t");
    Command(kCut);
    EXPECT_EQ(state(), "t V");
    Command(kPaste);
    EXPECT_EQ(state(), "") << "on itself it is given up";
    Command(kCut);
    Command(kBarCopy);
    EXPECT_EQ(state(), " V");
    Click(u"f");
    Command(kCut);
    Click(u"f\\in");
    kit.ExpectBox(u"Cannot copy or move a parent folder into a child"_v, kAnswerOk);
    Command(kBarPaste);
    EXPECT_EQ(state(), "") << "also when it is refused";
    CopyTo(u"s", u"g", false);
    Command(kPaste);
    EXPECT_EQ(StoredIn(u"g"), "c s s (1)");
    EXPECT_EQ(Selected(), "s (1)");
    EXPECT_EQ(state(), " V");
    CopyTo(u"t", u"f\\in", true);
    EXPECT_EQ(Selected(), "t");
    EXPECT_EQ(StoredIn(u""), "f/ g/ s");
    Open();
    EXPECT_TRUE(DragTo(u"s", u"g"));
    EXPECT_EQ(Selected(), "s (2)") << "in sight, although the folder was never opened";
}

TEST_F(Transfer, WhatIsGoneOrNotOfferedIsNotPasted) {
    OpenWorld(kAlphabetical);
    Click(u"s");
    Command(kCopy);
    for (const int next : {1, 2, 0}) {
        Command(kRotateArrangement);
        EXPECT_EQ(panels.global->sessionArrangementMode.Get(), next);
    }
    EXPECT_EQ(dialog->GetEnabled(), "CcPXD") << "another order forgets what was taken";
    Click(u"g");
    Command(kPaste);
    EXPECT_EQ(StoredIn(u"g"), "c");
    for (const bool isCut : {false, true}) {
        Click(u"s");
        Command(isCut ? kCut : kCopy);
        WithKey(u"Sessions", [](VProfileKey& key) { key.DeleteKey(u"s"); });  // by somebody else
        Click(u"g");
        kit.ExpectBox(u"Item 's' is no longer available for pasting"_v, kAnswerOk);
        Command(kPaste);
        EXPECT_EQ(dialog->GetEnabled(), isCut ? "CcPXD" : "CcPXDV");
        AddSession(u"s");
    }
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
    kit.ExpectBox(u"in already exists in the target folder"_v, kAnswerOk);
    CopyTo(u"g\\in", u"f\\g", false);
    for (const int zone : {0, 2}) {
        EXPECT_TRUE(DragTo(zone == 0 ? u"f" : u"g", u"", zone));
        EXPECT_EQ(StoredIn(u""), zone == 0 ? "f/ g/ s t" : "g/ f/ s t") << "above all others";
    }
}

TEST_F(Transfer, FindNextGoesOnWhereWhatWasFoundWasTaken) {
    OpenWorld(kManual);
    Find(u"host", "h");
    Command(kFindNext);
    EXPECT_EQ(Selected(), "a");
    EXPECT_TRUE(DragTo(u"f\\a", u"f\\b", 2));
    Command(kFindNext);
    EXPECT_EQ(Selected(), "c") << "behind its new place";
    EXPECT_TRUE(DragTo(u"g\\c", u"f"));
    Command(kFindNext);
    EXPECT_EQ(Selected(), "s") << "behind its old place";
}

TEST_F(Transfer, PathsLongerThanTheRecordAreMovedAllTheSame) {
    const std::u16string deep = std::u16string(200, u'f') + u'\\' + std::u16string(200, u'g');
    AddSession((deep + u"\\s").c_str());
    AddSession((deep + u"\\t").c_str());
    Open();
    CopyTo(deep + u"\\s", u"", true);
    EXPECT_TRUE(DragTo(deep + u"\\t", u""));
    EXPECT_TRUE(SessionKeyExists(u"s"_v) && SessionKeyExists(u"t"_v));
    EXPECT_EQ(StoredIn(deep.c_str()), "");
}

TEST_F(Transfer, ADragShowsWhereItWouldGo) {
    OpenWorld(kManual);
    EXPECT_FALSE(Tree().Drag(At(u""), [](HeadlessDrag&) {})) << "the root stays";
    const auto shows = [&](const char* text) { return Tree().Read().find(text) != std::string::npos; };
    Tree().Drag(At(u"t"), [&](HeadlessDrag& drag) {
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f\\b"), 1)), DropEffect::kMove);
        EXPECT_TRUE(shows("---\n     b\n"));
        drag.MoveTo(Tree().PointOn(At(u"f\\b"), 19));
        EXPECT_TRUE(shows("     b\n---\n"));
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"g")), kControl), DropEffect::kCopy);
        EXPECT_TRUE(shows(">g\n") && !shows("---") && Tree().ShowsDragImage());
        drag.Leave();
        EXPECT_FALSE(shows(">g\n"));
        EXPECT_EQ(drag.MoveTo({-5, -5}), DropEffect::kNone);
        const std::pair<KeyModifiers, DropEffect> keys[] = {
            {Accelerator::kAlt, DropEffect::kMove},
            {KeyModifiers{kControl | Accelerator::kAlt}, DropEffect::kMove},
            {Accelerator::kShift, DropEffect::kNone},
            {KeyModifiers{kControl | Accelerator::kShift}, DropEffect::kNone}};
        for (const auto& [modifiers, effect] : keys) {
            drag.Leave();
            EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"g")), modifiers), effect);
        }
        EXPECT_FALSE(drag.Drop());
    });
    EXPECT_EQ(Tree().Read().find('>'), std::string::npos) << "no mark is left";
    EXPECT_FALSE(Tree().ShowsDragImage());
    // A folder over this place of a row: whether it may go there, and what is shown.
    const struct {
        const char16_t* source;
        const char16_t* target;
        std::int32_t height;
        bool isTaken;
        const char* shown;
    } rows[] = {{u"g", u"f\\b", 10, true, "---\n     a\n"},  // the end of the folders
                {u"f", u"f\\b", 10, false, ">b\n"},         {u"f", u"f\\in", 1, false, ">in\n"},
                {u"f", u"f", 10, false, "*>f <\n"},         {u"f", u"g", 10, true, ">g\n"},
                {u"f", u"g", 1, true, "---\n  -g\n"},       {u"f", u"g", 19, true, "-g\n---\n"}};
    for (const auto& row : rows)
        Tree().Drag(At(row.source), [&](HeadlessDrag& drag) {
            drag.MoveTo(Tree().PointOn(At(u"")));
            EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(row.target), row.height)) == DropEffect::kMove, row.isTaken);
            EXPECT_TRUE(shows(row.shown)) << row.shown << Tree().Read();
        });
    OpenWorld(kLogical);
    Tree().Drag(At(u"f"), [&](HeadlessDrag& drag) {
        for (const char16_t* inside : {u"", u"f\\in", u"f\\b"})
            EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(inside))), *inside == 0 ? DropEffect::kMove : DropEffect::kNone);
        EXPECT_TRUE(shows(">b\n") && !shows(">in\n"));
        EXPECT_FALSE(drag.Drop());
    });
}

TEST_F(Transfer, AFolderUnderAWaitingDragOpens) {
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        OpenWorld(arrangement);
        EXPECT_TRUE(Tree().ClickExpander(At(u"g")));
        Tree().Drag(At(u"s"), [&](HeadlessDrag& drag) {
            const auto isOpen = [&] { return dialog->Items().HasState(At(u"g"), kTreeExpanded); };
            const auto rest = [&](const char16_t* path, unsigned milliseconds) {
                for (int i = 0; i < 2; ++i) drag.MoveTo(Tree().PointOn(At(path)));
                drag.Wait(milliseconds);
            };
            const unsigned wait = arrangement == kManual ? 1000 : 750;
            rest(u"g", wait / 2);
            rest(u"f", wait);
            EXPECT_FALSE(isOpen()) << "the pointer went on";
            rest(u"g", wait - 1);
            EXPECT_FALSE(isOpen());
            drag.Wait(1);
            EXPECT_TRUE(isOpen());
            EXPECT_TRUE(Tree().ClickExpander(At(u"g")));
            rest(u"g", wait / 2);
        });
        Window().Elapse(5000);
        EXPECT_FALSE(dialog->Items().HasState(At(u"g"), kTreeExpanded)) << "the drag is over";
    }
}

TEST_F(Transfer, ADragAtTheEdgeScrolls) {
    for (int i = 10; i < 50; ++i) MakeFolder(VUnicodeString(std::to_string(i).c_str()).GetData());
    Open();
    Click(u"10");
    Tree().Drag(At(u"10"), [&](HeadlessDrag& drag) {
        drag.MoveTo({50, 100});
        for (int i = 0; i < 2; ++i) drag.MoveTo({50, Tree().GetClientRectangle().bottom - 5});
        EXPECT_EQ(Tree().GetFirstRow(), 2);
        drag.MoveTo({50, 3});
        EXPECT_EQ(Tree().GetFirstRow(), 1);
    });
}

}  // namespace
}  // namespace connectdialog::test
