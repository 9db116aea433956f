// The tree control on the desktop.
#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QPointer>

#include "imports/dialogkit/treeview.h"
#include "suite/dialogkit/qt/qttreelook.h"
#include "suite/dialogkit/qt/qttreerows.h"

class QDropEvent;

namespace connectdialog {

class QtDialogFrame;
class QtLabelEditor;

/// Paints what is in view, from the items themselves: the time does not depend on how many there are. The scroll bar
/// counts rows.
class QtTree final : public QAbstractScrollArea, public ITreeView, private ITreeItemsObserver {
  public:
    explicit QtTree(QtDialogFrame& frame);
    ~QtTree() override;

    void Attach(VTreeItems& newItems, ITreeEvents& newEvents);
    /// Shows nothing and tells nobody anything any more.
    void Detach();
    /// Ends a drag that RunDrag runs, with nothing done.
    void GiveUpDrag();
    bool IsDragging() const { return isDragging; }

    // For those who read the tree aloud, and for tests.

    /// Null while nothing is attached.
    const VTreeItems* GetItems() const { return items; }
    const QtTreeRows& GetRows() const {
        Sync();
        return rows;
    }
    /// As a click on the row would, without the click; opens and closes an item as its expander would.
    void ActOn(TreeItem item, TreePart part);
    /// Null while no label is edited.
    QtLabelEditor* GetEditor() const;
    TreeItem GetEdited() const { return edited; }
    /// What a drop would do where the drag is now.
    DropEffect GetDropEffect() const { return dropEffect; }

    // ITreeView.
    TreeHit HitTest(VPoint point) const override;
    bool GetItemRectangle(TreeItem item, bool labelOnly, VRectangle& rectangle) const override;
    VRectangle GetClientRectangle() const override;
    void EnsureVisible(TreeItem item) override;
    void ScrollRows(int rowCount) override;
    void Redraw() override { viewport()->update(); }
    void BeginLabelEdit(TreeItem item) override;
    void EndLabelEdit(bool keepText) override;
    DropEffect RunDrag(TreeItem item, const VDragData& data) override;
    // The desktop carries the picture itself.
    bool EnterDragImage(VPoint) override { return true; }
    void MoveDragImage(VPoint) override {}
    void LeaveDragImage() override {}

  protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void OnItemInserted(TreeItem) override { Schedule(); }
    void OnItemRemoving(TreeItem item) override;
    void OnItemChanged(TreeItem) override { Schedule(); }

    /// Brings the rows, the scroll bars and the edit box up to date, once the event at hand is over.
    void Schedule() const;
    void Sync() const;
    void SyncScrollBars() const;
    void SyncEditor() const;
    /// Tells screen readers what changed, when there are any.
    void TellReaders(bool areRowsOthers) const;
    int CountRowsInView() const;
    int LabelWidthOf(int row) const;
    QPoint OriginOf(int row) const;
    QtTreeRowPlaces PlacesOf(int row) const;
    /// A row without an icon leaves no room for one.
    QtTreeMetrics MetricsOf(int row) const;
    QtTreeRowLook LookOf(int row) const;
    void TellPress(MouseButton button, QPoint point, Qt::KeyboardModifiers modifiers);
    void TellDragOver(QPoint point, Qt::KeyboardModifiers modifiers);
    void Answer(QDropEvent& event) const;
    void ShowTip(QPoint point, QPoint onScreen);
    void TellText(const QString& text);

    QtDialogFrame& frame;
    VTreeItems* items = nullptr;
    ITreeEvents* events = nullptr;
    QtTreeMetrics metrics;
    mutable QtTreeRows rows;
    mutable TreeItem toBeSeen = TreeItem::kNone;
    mutable int widest = 0;  ///< the right edge of the widest row that was in view, pixels from the left of all
    mutable bool isSyncPending = false;
    mutable TreeItem readCaret = TreeItem::kNone;  ///< where screen readers know the caret

    TreeItem edited = TreeItem::kNone;
    QPointer<QtLabelEditor> editor;

    TreeItem pressed = TreeItem::kNone;  ///< on it the left button went down
    QPoint pressPoint;
    bool isDragging = false;

    // The drag over the control.
    VDragData dragData;
    QPoint dragPoint;
    DropEffect dropEffect = DropEffect::kNone;
    QBasicTimer dragRepeat;
};

}  // namespace connectdialog
