// What every back end of the dialogs owes with its trees: see dialogkitconformance.h.
#pragma once

#include <vector>

#include "support/dialogkitconformance.h"

namespace connectdialog::test {

template <class BackEnd>
class TreeConformance : public DialogKitConformance<BackEnd> {};

TYPED_TEST_SUITE_P(TreeConformance);

TYPED_TEST_P(TreeConformance, TheTreeShowsItsItemsAndTellsClicks) {
    using namespace conformance;
    this->Run([&](auto& dialog) {
        Notes& notes = this->notes;
        auto& tree = *dialog.GetTree(kTree);
        EXPECT_EQ(tree.Read(), "-root\n  +a\n   b\n   c\n   d\n   e\n");
        EXPECT_TRUE(tree.Click(notes.Child(1)));
        EXPECT_TRUE(tree.Click(notes.Child(2), Accelerator::kControl | Accelerator::kShift));
        EXPECT_TRUE(tree.RightClick(notes.Child(3)));
        EXPECT_EQ(notes.Take(), "left:b:3:0 left:c:3:5 right:d:3:0");
        EXPECT_EQ(dialog.GetFocus(), kTree);
        EXPECT_FALSE(tree.ClickExpander(notes.Child(1))) << "it has none";
        EXPECT_FALSE(tree.Click(notes.inner)) << "folded away";
        EXPECT_TRUE(tree.ClickExpander(notes.Child(0)));
        EXPECT_TRUE(tree.DoubleClick(notes.inner));
        EXPECT_EQ(notes.Take(), "left:a:1:0 left:aa:3:0 double:aa");
        EXPECT_EQ(tree.Read(), "-root\n  -a\n     aa\n   b\n   c\n   d\n   e\n");
        EXPECT_EQ(notes.items.GetSelectedCount(), 0U) << "what a click means is not the view's to say";
        EXPECT_EQ(tree.GetTip(notes.Child(1)), u"<b>tip</b> of b");
        EXPECT_EQ(tree.GetTip(notes.root), u"");

        notes.items.SetState(notes.Child(1), kTreeSelected, true);
        notes.items.SetState(notes.Child(2), kTreeForcedExpander, true);
        notes.items.SetState(notes.Child(3), kTreeCut, true);
        notes.items.SetState(notes.root, kTreeDropTarget, true);
        notes.items.SetCaret(notes.Child(1));
        notes.items.SetInsertMark(notes.Child(2), true);
        notes.items.Remove(notes.Child(0));
        EXPECT_EQ(tree.Read(), "->root\n   *b <\n  +c\n---\n   xd\n   e\n");
    });
}

TYPED_TEST_P(TreeConformance, TheTreeScrollsByRowsAndKnowsWhereTheyStand) {
    using namespace conformance;
    this->Run([&](auto&) {
        Notes& notes = this->notes;
        std::vector<TreeItem> all;
        for (int i = 0; i < 500; ++i) all.push_back(notes.Add(notes.root, u"session"));
        ITreeView& view = *notes.view;
        VRectangle row;
        VRectangle label;
        EXPECT_TRUE(view.GetItemRectangle(notes.root, false, row));
        EXPECT_EQ(row.top, 0);
        EXPECT_FALSE(view.GetItemRectangle(all.back(), false, row));
        view.EnsureVisible(all.back());
        ASSERT_TRUE(view.GetItemRectangle(all.back(), false, row));
        ASSERT_TRUE(view.GetItemRectangle(all.back(), true, label));
        EXPECT_LE(row.bottom, view.GetClientRectangle().bottom);
        EXPECT_EQ(label.top, row.top);
        EXPECT_GT(label.left, row.left);
        EXPECT_EQ(view.HitTest({label.left + 1, label.top + 1}).item, all.back());
        EXPECT_EQ(view.HitTest({label.right + 5, label.top + 1}).part, TreePart::kBeside);
        EXPECT_EQ(view.HitTest({-1, label.top + 1}).item, TreeItem::kNone);
        view.ScrollRows(-1);
        EXPECT_TRUE(!view.GetItemRectangle(all.back(), false, row) || row.bottom > view.GetClientRectangle().bottom ||
                    row.top > label.top);
        view.ScrollRows(-100000);
        EXPECT_TRUE(view.GetItemRectangle(notes.root, false, row));
        notes.items.SetState(notes.root, kTreeExpanded, false);
        EXPECT_FALSE(view.GetItemRectangle(all.front(), false, row));
        notes.items.Clear();
        EXPECT_EQ(view.HitTest({label.left + 1, 1}).item, TreeItem::kNone);
    });
}

TYPED_TEST_P(TreeConformance, ALabelIsEditedInPlace) {
    using namespace conformance;
    this->Run([&](auto& dialog) {
        Notes& notes = this->notes;
        auto& tree = *dialog.GetTree(kTree);
        notes.view->BeginLabelEdit(notes.root);
        EXPECT_FALSE(tree.IsEditing());
        EXPECT_EQ(notes.Take(), "edit:root");

        notes.view->BeginLabelEdit(notes.Child(1));
        EXPECT_EQ(tree.GetEditText(), u"b");
        dialog.PressKey(kKeyF3);
        dialog.PressKey(kKeyDelete);
        EXPECT_EQ(notes.Take(), "edit:b") << "keys are the edit box's";
        EXPECT_TRUE(tree.TypeLabel(u"新会话"_v));
        EXPECT_EQ(notes.Take(), "edited:b:新会话");
        EXPECT_EQ(notes.items.GetText(notes.Child(1)), u"b") << "who owns the item changes it";

        notes.view->BeginLabelEdit(notes.Child(2));
        dialog.PressKey(kKeyEscape);
        EXPECT_FALSE(dialog.IsClosed());
        notes.view->BeginLabelEdit(notes.Child(2));
        dialog.PressKey(kKeyReturn);
        EXPECT_EQ(notes.Take(), "edit:c edited:c:cancelled edit:c edited:c:c");

        notes.view->BeginLabelEdit(notes.Child(2));
        tree.Click(notes.Child(3));
        notes.view->BeginLabelEdit(notes.Child(2));
        dialog.Press(kOther);
        EXPECT_EQ(notes.Take(), "edit:c edited:c:c left:d:3:0 edit:c edited:c:c 14");

        notes.view->BeginLabelEdit(notes.Child(2));
        notes.items.Remove(notes.Child(2));
        EXPECT_EQ(notes.Take(), "edit:c edited:c:cancelled");
        notes.view->BeginLabelEdit(notes.Child(2));
        tree.TypeLabel(u"refused"_v);
        EXPECT_TRUE(tree.IsEditing()) << "begun again";
        notes.items.SetText(notes.Child(2), u"refused"_v);
        notes.view->BeginLabelEdit(notes.Child(2));
        notes.Take();
        dialog.Press(kOther);
        dialog.Tick(kBox, true);
        tree.Click(notes.Child(3));
        EXPECT_TRUE(tree.IsEditing());
        EXPECT_EQ(notes.Take(),
                  "edited:refused:refused edit:refused edited:refused:refused edit:refused "
                  "edited:refused:refused edit:refused")
            << "each click is lost";
        notes.view->EndLabelEdit(false);
        EXPECT_FALSE(tree.IsEditing());
    });
}

TYPED_TEST_P(TreeConformance, DragsTellWhereTheyAreAndWhatTheyDo) {
    using namespace conformance;
    if (!TypeParam::CanDrag()) GTEST_SKIP() << "there are no drags on this screen";
    this->Run([&](auto& dialog) {
        Notes& notes = this->notes;
        auto& tree = *dialog.GetTree(kTree);
        const TreeItem b = notes.Child(1);
        EXPECT_FALSE(tree.Drag(notes.root, [](auto&) {})) << "not to be dragged";
        notes.Take();
        EXPECT_TRUE(tree.Drag(b, [&](auto& drag) {
            EXPECT_EQ(drag.MoveTo(tree.PointOn(notes.root)), DropEffect::kNone);
            EXPECT_EQ(drag.MoveTo(tree.PointOn(notes.Child(3))), DropEffect::kMove);
            EXPECT_EQ(drag.MoveTo(tree.PointOn(notes.Child(4)), Accelerator::kControl), DropEffect::kCopy);
            drag.Drop();
        }));
        EXPECT_EQ(notes.Take(), "left:b:3:0 drag:b enter:2 drop:e:1 dragged:1");
        tree.Drag(b, [&](auto& drag) {
            drag.MoveTo(tree.PointOn(notes.Child(3)), Accelerator::kShift);
            drag.Drop();
        });
        EXPECT_EQ(notes.Take(), "left:b:3:0 drag:b enter:2 leave dragged:0") << "nothing is done there";
        tree.Drag(b, [&](auto& drag) {
            drag.MoveTo(tree.PointOn(notes.Child(3)));
            drag.Leave();
            drag.MoveTo(tree.PointOn(notes.Child(4)));
        });
        EXPECT_EQ(notes.Take(), "left:b:3:0 drag:b enter:2 leave enter:2 leave dragged:0");
        notes.items.SetState(notes.Child(0), kTreeExpanded, true);
        tree.Drag(b, [&](auto& drag) {
            drag.MoveTo(tree.PointOn(notes.inner));
            drag.Drop();
        });
        EXPECT_EQ(notes.Take(), "left:b:3:0 drag:b enter:2 drop:aa:2 dragged:0") << "the data was not taken";
    });
}

REGISTER_TYPED_TEST_SUITE_P(TreeConformance, TheTreeShowsItsItemsAndTellsClicks,
                            TheTreeScrollsByRowsAndKnowsWhereTheyStand, ALabelIsEditedInPlace,
                            DragsTellWhereTheyAreAndWhatTheyDo);

}  // namespace connectdialog::test
