#include "suite/dialogkit/qt/qttree.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "qtuser.h"
#include "suite/dialogkit/qt/qtlabeleditor.h"
#include "suite/dialogkit/qt/qttext.h"
#include "support/dialogkitconformance.h"

namespace connectdialog::test {
namespace {

using namespace conformance;

class QtTrees : public DialogKitConformance<QtBackEnd> {
  protected:
    template <class Script>
    void Run(Script script) {
        DialogKitConformance::Run([&](QtUserDialog& dialog) {
            tree = &dialog.GetTree(kTree)->GetWidget();
            script(dialog, *dialog.GetTree(kTree));
        });
    }

    QtTree* tree = nullptr;
};

TEST_F(QtTrees, FastClicksOnAnExpanderCountOneByOne) {
    Run([&](QtUserDialog&, QtUserTree& user) {
        VRectangle row;
        ASSERT_TRUE(tree->GetItemRectangle(notes.Child(0), true, row));
        VPoint point{row.left, (row.top + row.bottom) / 2};
        while (tree->HitTest(point).part != TreePart::kExpander) --point.x;
        DoubleClickWidget(*tree->viewport(), ToQt(point));
        EXPECT_EQ(notes.Take(), "left:a:1:0 left:a:1:0");
        EXPECT_FALSE(user.Click(notes.inner)) << "open and shut again";
    });
}

TEST_F(QtTrees, TheLabelEditorTakesKeysAndInputMethodsAndStaysWhenTheTextIsRefused) {
    Run([&](QtUserDialog& dialog, QtUserTree& user) {
        notes.view->BeginLabelEdit(notes.Child(1));
        for (const char16_t letter : {u'X', u'Y'}) dialog.PressKey(letter);
        EXPECT_EQ(user.GetEditText(), u"xy") << "the old text was selected";
        TypeInto(*tree->GetEditor(), QStringLiteral("会话 ✓"));
        EXPECT_EQ(user.GetEditText(), u"会话 ✓");
        EXPECT_EQ(QAccessible::queryAccessibleInterface(tree->GetEditor())->text(QAccessible::Name), "b");

        TypeInto(*tree->GetEditor(), QStringLiteral("refused"));
        notes.Take();
        user.Click(notes.Child(3));
        EXPECT_EQ(notes.Take(), "edited:b:refused edit:b") << "the click does nothing more";
        EXPECT_TRUE(user.IsEditing());
        dialog.PressKey(kKeyTab);
        EXPECT_EQ(notes.Take(), "edited:b:b");
        EXPECT_FALSE(user.IsEditing());
    });
}

TEST_F(QtTrees, TheLabelEditorFollowsItsRow) {
    Run([&](QtUserDialog&, QtUserTree&) {
        for (int i = 0; i < 100; ++i) notes.Add(notes.root, u"x");
        notes.view->BeginLabelEdit(notes.Child(1));
        const auto isOverLabel = [&] {
            VRectangle label;
            QApplication::processEvents();
            return tree->GetItemRectangle(notes.Child(1), true, label) && tree->GetEditor()->y() == label.top &&
                   tree->GetEditor()->x() == label.left;
        };
        EXPECT_TRUE(isOverLabel());
        notes.items.SetState(notes.Child(0), kTreeExpanded, true);
        EXPECT_TRUE(isOverLabel());
        notes.view->ScrollRows(1);
        EXPECT_TRUE(isOverLabel());
        notes.Take();
        notes.items.SetState(notes.root, kTreeExpanded, false);
        QApplication::processEvents();
        QApplication::processEvents();
        EXPECT_EQ(notes.Take(), "edited:b:cancelled") << "folded away";
    });
}

TEST_F(QtTrees, AShortPullIsNoDragAndAnExpanderIsNotDragged) {
    Run([&](QtUserDialog&, QtUserTree& user) {
        const QPoint start = ToQt(user.PointOn(notes.Child(1)));
        QWindow* window = tree->window()->windowHandle();
        const auto pull = [&](QPoint from, int way) {
            const QPoint at = tree->viewport()->mapTo(tree->window(), from);
            QTest::mousePress(window, Qt::LeftButton, {}, at);
            QTest::mouseEvent(QTest::MouseMove, window, Qt::LeftButton, {}, at + QPoint(way, 0));
            QTest::mouseRelease(window, Qt::LeftButton, {}, at + QPoint(way, 0));
        };
        pull(start, QApplication::startDragDistance() - 1);
        EXPECT_EQ(notes.Take(), "left:b:3:0");
        pull(QPoint(tree->viewport()->width() - 30, start.y()), 20);
        EXPECT_EQ(notes.Take(), "left:b:4:0") << "beside the label";
    });
}

TEST_F(QtTrees, RowsAreReadAloudAsTheyStand) {
    Run([&](QtUserDialog&, QtUserTree&) {
        notes.items.SetState(notes.Child(0), kTreeExpanded, true);
        notes.items.SetState(notes.inner, kTreeSelected, true);
        notes.items.SetCaret(notes.inner);
        notes.GetWindow()->SetFocus(kTree);
        QAccessibleInterface& readable = *QAccessible::queryAccessibleInterface(tree);
        EXPECT_EQ(readable.role(), QAccessible::Tree);
        ASSERT_EQ(readable.childCount(), 7);
        QStringList names;
        for (int i = 0; i < 7; ++i) names += readable.child(i)->text(QAccessible::Name);
        EXPECT_EQ(names.join(u' '), "root a aa b c d e");
        QAccessibleInterface& inner = *readable.child(2);
        EXPECT_TRUE(inner.state().selected && inner.state().focused && !inner.state().expandable);
        EXPECT_EQ(readable.focusChild(), &inner);
        EXPECT_EQ(readable.indexOfChild(&inner), 2);
        EXPECT_EQ(readable.childAt(inner.rect().center().x(), inner.rect().center().y()), &inner);
        EXPECT_EQ(inner.parent(), &readable);
        EXPECT_TRUE(readable.child(1)->state().expanded && readable.child(1)->state().expandable);
        readable.child(1)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_TRUE(readable.child(1)->state().collapsed);
        EXPECT_EQ(readable.childCount(), 6);
        EXPECT_TRUE(inner.state().offscreen);
        notes.items.Remove(notes.Child(0));
        EXPECT_FALSE(inner.isValid());
        EXPECT_EQ(inner.text(QAccessible::Name), QString());
        EXPECT_EQ(readable.child(6), nullptr);
    });
}

TEST_F(QtTrees, HostileItemsDoNoHarm) {
    Run([&](QtUserDialog&, QtUserTree&) {
        const std::u16string texts[] = {std::u16string(10000, u'W'), std::u16string(u"\xD800"),
                                        std::u16string(u"a\0b\n", 4), u"<img src='x'>", u""};
        TreeItem deep = notes.root;
        for (const std::u16string& text : texts) notes.Add(notes.root, text);
        for (int i = 0; i < 2000; ++i) {
            deep = notes.Add(deep, u"deep");
            notes.items.SetState(deep, kTreeExpanded, true);
        }
        notes.view->EnsureVisible(deep);
        tree->grab();
        tree->horizontalScrollBar()->setValue(tree->horizontalScrollBar()->maximum());
        tree->grab();
        VRectangle label;
        EXPECT_TRUE(notes.view->GetItemRectangle(deep, true, label));
        EXPECT_GE(label.left, 0) << "it can be scrolled into view";
        EXPECT_LE(label.left, tree->viewport()->width());
    });
}

}  // namespace
}  // namespace connectdialog::test
