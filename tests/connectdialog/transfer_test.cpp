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
            {Accelerator::kShift, DropEffect::kNone},
            {KeyModifiers{kControl | Accelerator::kShift}, DropEffect::kNone}};
        for (const auto& [modifiers, effect] : keys) {
            drag.Leave();
            EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"g")), modifiers), effect);
        }
        EXPECT_FALSE(drag.Drop());
    });
    EXPECT_EQ(Tree().Read().find_first_of(">"), std::string::npos) << "no mark is left";
    EXPECT_FALSE(Tree().ShowsDragImage());
    Tree().Drag(At(u"g"), [&](HeadlessDrag& drag) {
        drag.MoveTo(Tree().PointOn(At(u"f\\b")));
        EXPECT_TRUE(shows("---\n     a\n")) << "the end of the folders";
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
        });
        Window().Elapse(5000);
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
