#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/textmetrics.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "imports/dialogkit/vtreeitems.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "support/dialogkitconformance.h"

namespace connectdialog::test {

struct HeadlessBackEnd {
    using Kit = HeadlessDialogKit;
    using Dialog = HeadlessDialog;
    using Tree = HeadlessTree;
    static bool CanDrag() { return true; }
};
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, DialogKitConformance, HeadlessBackEnd);

namespace {

struct NoOwner : ITreeItemsOwner {
    void OnItemDeleted(void*) override { ++deleted; }
    int deleted = 0;
};

constexpr TreeItem kNone = TreeItem::kNone;

std::string Labels(const VTreeItems& items, TreeItem parent) {
    std::string text;
    for (TreeItem item = items.GetFirstChild(parent); item != kNone; item = items.GetNextSibling(item))
        text += static_cast<char>(items.GetText(item)[0]);
    return text;
}

TEST(TreeItems, StandWhereTheyAreInserted) {
    NoOwner owner;
    VTreeItems items(owner);
    const auto add = [&](TreeItem parent, TreePlace place, TreeItem after, const char16_t* text) {
        return items.Insert(parent, place, after, text, 1, 0, nullptr);
    };
    const TreeItem root = add(kNone, TreePlace::kLast, kNone, u"r");
    const TreeItem b = add(root, TreePlace::kLast, kNone, u"b");
    add(root, TreePlace::kFirst, kNone, u"a");
    add(root, TreePlace::kLast, kNone, u"d");
    add(root, TreePlace::kBehind, b, u"c");
    add(root, TreePlace::kBehind, root, u"e");  // no child of the parent
    EXPECT_EQ(Labels(items, root), "abcde");
    items.Remove(b);
    EXPECT_EQ(Labels(items, root), "acde");
    EXPECT_EQ(add(b, TreePlace::kLast, kNone, u"x"), kNone) << "the parent is gone";
    EXPECT_EQ(items.GetCount(), 5U);
    items.Clear();
    EXPECT_EQ(owner.deleted, 6);
    EXPECT_EQ(items.GetFirstChild(kNone), kNone);
}

TEST(TreeItems, HandlesOfItemsThatAreGoneAndInventedOnesAreNotValid) {
    NoOwner owner;
    VTreeItems items(owner);
    const TreeItem first = items.Insert(kNone, TreePlace::kLast, kNone, u"a", 0, 0, nullptr);
    items.SetState(first, kTreeSelected, true);
    items.SetCaret(first);
    items.SetInsertMark(first, true);
    items.Remove(first);
    const TreeItem second = items.Insert(kNone, TreePlace::kLast, kNone, u"b", 0, 0, nullptr);
    EXPECT_NE(first, second) << "the place is used again, the handle is not";
    EXPECT_EQ(items.GetCaret(), kNone);
    EXPECT_EQ(items.GetSelectedCount(), 0U);
    for (const TreeItem item : {first, static_cast<TreeItem>(0xFFFFFFFFFFFFFFFF), static_cast<TreeItem>(99)}) {
        EXPECT_FALSE(items.IsValid(item));
        EXPECT_EQ(items.GetText(item), u"");
        items.SetText(item, u"x"_v);
        items.SetState(item, kTreeSelected, true);
        items.Remove(item);
        EXPECT_EQ(items.GetParent(item), kNone);
    }
    EXPECT_EQ(items.GetText(second), u"b");
    EXPECT_EQ(items.GetCount(), 1U);
}

TEST(TreeItems, TheSelectionIsWhatWasSwitchedOnAndNotOff) {
    NoOwner owner;
    VTreeItems items(owner);
    std::vector<TreeItem> all;
    std::minstd_rand random(7);
    for (int i = 0; i < 100; ++i) all.push_back(items.Insert(kNone, TreePlace::kLast, kNone, u"i", 0, 0, nullptr));
    for (int i = 0; i < 5000; ++i) items.SetState(all[random() % all.size()], kTreeSelected, random() % 2 == 0);
    std::size_t selected = 0;
    for (const TreeItem item : all) selected += items.HasState(item, kTreeSelected) ? 1 : 0;
    EXPECT_GT(selected, 0U);
    EXPECT_EQ(items.GetSelectedCount(), selected);
    EXPECT_EQ(items.GetSelected().size(), selected);
    items.ClearSelection();
    EXPECT_EQ(items.GetSelectedCount(), 0U);
    for (const TreeItem item : all) EXPECT_FALSE(items.HasState(item, kTreeSelected));
}

TEST(TreeItems, AreWalkedAsTheyAreSeenAndRemovedHoweverDeep) {
    NoOwner owner;
    VTreeItems items(owner);
    TreeItem parent = items.Insert(kNone, TreePlace::kLast, kNone, u"0", 0, 0, nullptr);
    const TreeItem top = parent;
    constexpr int kDepth = 100000;
    for (int i = 1; i < kDepth; ++i) {
        items.SetState(parent, kTreeExpanded, true);
        parent = items.Insert(parent, TreePlace::kLast, kNone, u"n", 0, 0, nullptr);
    }
    const TreeItem last = items.Insert(kNone, TreePlace::kLast, kNone, u"z", 0, 0, nullptr);
    int seen = 0;
    for (TreeItem item = top; item != kNone; item = items.GetNextVisible(item)) ++seen;
    EXPECT_EQ(seen, kDepth + 1);
    EXPECT_EQ(items.GetPreviousVisible(last), parent);
    items.SetState(top, kTreeExpanded, false);
    EXPECT_EQ(items.GetNextVisible(top), last);
    EXPECT_EQ(items.GetPreviousVisible(last), top);
    items.Remove(top);
    EXPECT_EQ(items.GetCount(), 1U);
}

// A dialog of its own for what the others do not use.
constexpr ControlTemplate kControls[] = {{ControlKind::kStatic, 10, u"path", {0, 0, 40, 9}},
                                         {ControlKind::kEdit, 11, u"", {0, 10, 40, 9}},
                                         {ControlKind::kButton, kIdCancel, u"x", {0, 20, 40, 9}}};
constexpr DialogTemplate kTemplate{90, 100, 50, u"Test", kControls};

class TestDialog : public VDialog {
  public:
    TestDialog() : VDialog(kTemplate, nullptr) {
        static constexpr Accelerator kKeys[] = {{Accelerator::kControl, u'F', 77}, {Accelerator::kNone, kKeyF3, 78}};
        SetAccelerators(kKeys);
    }
    std::vector<int> commands;
    int timerEvents = 0;
    bool wasDestroyed = false;
    using VDialog::OnInitDialog;

  protected:
    bool OnCommand(int command) override {
        commands.push_back(command);
        return command >= 77 || VDialog::OnCommand(command);
    }
    void OnTimer(int timer) override {
        if (++timerEvents == 2) GetWindow()->StopTimer(timer);
    }
    void OnDestroy() override { wasDestroyed = GetWindow() != nullptr; }
};

TEST(DialogSeam, KeysTimersToolbarAndClosingReachTheDialog) {
    HeadlessDialogKit kit;
    TestDialog dialog;
    VToolbarState toolbar;
    toolbar.Add(80, u"tip"_v);
    toolbar.Add(81, u"tip"_v);
    toolbar.Enable(81, false);
    kit.ExpectDialog(90, [&](HeadlessDialog& shown) {
        dialog.GetWindow()->ShowToolbar(1, toolbar);
        EXPECT_TRUE(shown.PressKey(u'F', Accelerator::kControl));
        EXPECT_FALSE(shown.PressKey(u'F', Accelerator::kControl | Accelerator::kShift));
        EXPECT_TRUE(shown.PressKey(kKeyF3));
        EXPECT_TRUE(shown.Press(80));
        EXPECT_FALSE(shown.Press(81));
        dialog.GetWindow()->StartTimer(100);
        shown.Elapse(99);
        EXPECT_EQ(dialog.timerEvents, 0);
        shown.Elapse(1);
        EXPECT_EQ(dialog.timerEvents, 1);
        shown.Elapse(1000);
        EXPECT_EQ(dialog.timerEvents, 2) << "it was stopped";
        EXPECT_TRUE(shown.PressKey(kKeyEscape));
        EXPECT_FALSE(shown.PressKey(kKeyF3)) << "closed";
    });
    EXPECT_EQ(dialog.DoModal(), kDialogCancelled);
    EXPECT_EQ(dialog.commands, (std::vector{77, 78, 80, kIdCancel}));
    EXPECT_TRUE(dialog.wasDestroyed);
    EXPECT_EQ(dialog.GetWindow(), nullptr);
    EXPECT_EQ(kit.TakeFaults(), "");
}

TEST(DialogSeam, WhatWasNotExpectedIsAFaultAndAnsweredHarmlessly) {
    HeadlessDialogKit kit;
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(), kDialogCancelled);
    EXPECT_EQ(VMessageBox(nullptr, u"delete?"_v, kBoxYesNo | kBoxWarning), kAnswerNo);
    kit.ExpectBox(u"late"_v, kAnswerOk);
    EXPECT_EQ(kit.TakeFaults(), "unexpected: dialog 90\nunexpected: box delete?\ndid not come: box late\n");
    EXPECT_EQ(kit.TakeFaults(), "");
}

TEST(DialogSeam, ABoxShowsAReportUnderTheNameOfTheApplication) {
    HeadlessDialogKit kit;
    VReportMessageParams notice(0x61090001);
    notice.AddInsert(u"web");
    kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
    VMessageBox(nullptr, notice);
    VReportMessageParams failure(0xE1090003);
    failure.AddInsert(u"A\\B");
    VMessageBox(nullptr, failure);
    ASSERT_EQ(kit.GetBoxes().size(), 2U);
    EXPECT_EQ(kit.GetBoxes()[0].text, u"\"web\" 未找到。");
    EXPECT_EQ(kit.GetBoxes()[0].flags, kBoxInformation);
    EXPECT_EQ(kit.GetBoxes()[1].flags, kBoxError);
}

TEST(DialogSeam, PathsAreShortenedInTheMiddleUntilTheyFit) {
    HeadlessDialogKit kit;
    TestDialog dialog;
    ASSERT_TRUE(dialog.Create());
    // The control is 60 pixels wide: ten characters, or five of East Asian scripts.
    const std::pair<const char16_t*, const char16_t*> rows[] = {{u"ab\\cd", u"ab\\cd"},
                                                                {u"ab\\cdef\\gh", u"ab\\cdef\\gh"},
                                                                {u"ab\\cdef\\ghi", u"ab\\...\\ghi"},
                                                                {u"abcd\\efg\\hi\\jk", u"...\\jk"},
                                                                {u"a\\bcdefghijklm", u"...\\bcd..."},
                                                                {u"abcdefghijklm", u"abcdefg..."},
                                                                {u"会话会话会话", u"会话会..."},
                                                                {u"", u""}};
    for (const auto& [path, shown] : rows) EXPECT_EQ(AbbreviatePathname(*dialog.GetWindow(), 10, path), shown);
    EXPECT_EQ(AbbreviatePathname(*dialog.GetWindow(), 999, u"no such control"_v), u"no such control");
    EXPECT_EQ(EscapeAmpersand(u"a & b && c"_v), u"a && b &&&& c");
    dialog.Destroy();
}

TEST(DialogSeam, MenusChangeByCommandAlsoInSubMenus) {
    VPopupMenu inner;
    inner.Add(5, u"five"_v);
    inner.Add(6, u"six"_v);
    VPopupMenu menu;
    menu.Add(1, u"one"_v);
    menu.AddSeparator();
    menu.AddSubMenu(u"more"_v, inner);
    menu.Add(2, u"two"_v);
    menu.Check(5, true);
    menu.Enable(6, false);
    menu.SetText(2, u"zwei"_v);
    menu.Remove(1);
    menu.RemoveAt(0);
    ASSERT_EQ(menu.GetEntries().size(), 2U);
    EXPECT_TRUE(menu.Find(5)->isChecked);
    EXPECT_EQ(menu.Find(2)->text, u"zwei");
    EXPECT_EQ(menu.Find(1), nullptr);

    HeadlessDialogKit kit;
    kit.ExpectMenu([](const VPopupMenu&) { return 5; });
    EXPECT_EQ(kit.TrackPopupMenu(nullptr, menu, {}), 5);
    kit.ExpectMenu([](const VPopupMenu&) { return 6; });
    EXPECT_EQ(kit.TrackPopupMenu(nullptr, menu, {}), 0);
    EXPECT_EQ(kit.TakeFaults(), "not to be chosen: command 6\n");
}

}  // namespace
}  // namespace connectdialog::test
