#include "suite/dialogkit/qt/qttree.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/dialogkit/qt/qticons.h"
#include "suite/dialogkit/qt/qtlabeleditor.h"
#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

QtTree::QtTree(QtDialogFrame& frame) : QAbstractScrollArea(&frame), frame(frame), metrics(QtTreeMetrics::Of(*this)) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    viewport()->setAcceptDrops(true);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled);
}

QtTree::~QtTree() {
    Detach();
}

void QtTree::Attach(VTreeItems& newItems, ITreeEvents& newEvents) {
    Detach();
    items = &newItems;
    events = &newEvents;
    items->SetObserver(this);
    Schedule();
}

void QtTree::Detach() {
    if (items == nullptr) return;
    EndLabelEdit(false);
    items->SetObserver(nullptr);
    items = nullptr;
    events = nullptr;
    dragRepeat.stop();
    rows.Clear();
}

void QtTree::OnItemRemoving(TreeItem item) {
    if (items->IsInside(edited, item)) EndLabelEdit(false);
    Schedule();
}

// What is shown.

void QtTree::Schedule() const {
    if (std::exchange(isSyncPending, true)) return;
    QMetaObject::invokeMethod(
        viewport(), [this] { Sync(); }, Qt::QueuedConnection);
}

void QtTree::Sync() const {
    if (items == nullptr) return;
    const bool areRowsOthers = rows.Update(*items);
    if (areRowsOthers) widest = 0;
    SyncScrollBars();
    SyncEditor();
    if (!std::exchange(isSyncPending, false)) return;
    viewport()->update();
    TellReaders(areRowsOthers);
}

void QtTree::TellReaders(bool areRowsOthers) const {
    if (!QAccessible::isActive()) return;
    auto* self = const_cast<QtTree*>(this);  // the toolkit wants it so; readers change nothing
    const auto tell = [&](QAccessible::Event what, int row) {
        QAccessibleEvent event(self, what);
        event.setChild(row);
        QAccessible::updateAccessibility(&event);
    };
    if (areRowsOthers) tell(QAccessible::ObjectReorder, -1);
    tell(QAccessible::SelectionWithin, -1);
    const TreeItem caret = items->GetCaret();
    const int row = rows.Find(caret);
    if (std::exchange(readCaret, caret) != caret && row >= 0 && hasFocus()) tell(QAccessible::Focus, row);
}

void QtTree::SyncScrollBars() const {
    const int inView = CountRowsInView();
    QScrollBar& down = *verticalScrollBar();
    down.setRange(0, std::max(0, rows.GetCount() - inView));
    down.setPageStep(inView);
    const int wanted = rows.Find(std::exchange(toBeSeen, TreeItem::kNone));
    if (wanted >= 0) down.setValue(std::clamp(down.value(), wanted - inView + 1, wanted));

    const int end = std::min(rows.GetCount(), down.value() + inView + 1);
    for (int row = down.value(); row < end; ++row) {
        const QtTreeRowPlaces places(MetricsOf(row), rows[row].level, LabelWidthOf(row), QPoint());
        widest = std::max(widest, places.label.right() + 1);
    }
    QScrollBar& across = *horizontalScrollBar();
    across.setRange(0, std::max(0, widest - viewport()->width()));
    across.setPageStep(viewport()->width());
    across.setSingleStep(metrics.indent);
}

void QtTree::SyncEditor() const {
    if (editor == nullptr) return;
    const int row = rows.Find(edited);
    if (row < 0) {
        // Later: nobody who asks where a row stands expects to be told of an end.
        const auto end = [this, item = edited] {
            if (edited == item && rows.Find(item) < 0) const_cast<QtTree*>(this)->EndLabelEdit(false);
        };
        QMetaObject::invokeMethod(viewport(), end, Qt::QueuedConnection);
        return;
    }
    editor->Cover(PlacesOf(row).label, viewport()->rect());
    editor->show();
}

int QtTree::CountRowsInView() const {
    return std::max(1, viewport()->height() / metrics.rowHeight);
}

int QtTree::LabelWidthOf(int row) const {
    return TreeTextWidth(*this, ToQt(items->GetText(rows[row].item)));
}

QPoint QtTree::OriginOf(int row) const {
    return {-horizontalScrollBar()->value(), (row - verticalScrollBar()->value()) * metrics.rowHeight};
}

QtTreeRowPlaces QtTree::PlacesOf(int row) const {
    return {MetricsOf(row), rows[row].level, LabelWidthOf(row), OriginOf(row)};
}

QtTreeMetrics QtTree::MetricsOf(int row) const {
    QtTreeMetrics own = metrics;
    if (TreeIcon(items->GetImage(rows[row].item, false)).isNull()) own.icon = own.gap = 0;
    return own;
}

QtTreeRowLook QtTree::LookOf(int row) const {
    const TreeItem item = rows[row].item;
    const auto has = [&](TreeItemState state) { return items->HasState(item, state); };
    QtTreeRowLook look;
    look.text = ToQt(items->GetText(item));
    look.image = items->GetImage(item, has(kTreeSelected));
    look.level = rows[row].level;
    look.hasExpander = items->HasChildrenOrExpander(item);
    look.isExpanded = has(kTreeExpanded);
    look.isHighlighted = has(kTreeSelected) || has(kTreeDropTarget);
    look.isCut = has(kTreeCut);
    look.hasCaret = items->GetCaret() == item;
    look.isEdited = edited == item;
    return look;
}

void QtTree::paintEvent(QPaintEvent*) {
    Sync();
    if (items == nullptr) return;
    QPainter painter(viewport());
    const int first = verticalScrollBar()->value();
    const int end = std::min(rows.GetCount(), first + CountRowsInView() + 1);
    bool isBehind = false;
    const int marked = rows.Find(items->GetInsertMark(isBehind));
    for (int row = first; row < end; ++row) {
        const QtTreeRowLook look = LookOf(row);
        const QtTreeRowPlaces places(MetricsOf(row), look.level, TreeTextWidth(*this, look.text), OriginOf(row));
        PaintTreeRow(painter, *this, look, places);
        const QRect whole(0, places.label.top(), viewport()->width(), metrics.rowHeight);
        if (row == marked) PaintInsertMark(painter, *this, whole, places.icon.left(), isBehind);
    }
}

void QtTree::resizeEvent(QResizeEvent*) {
    Schedule();
}

void QtTree::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
    metrics = QtTreeMetrics::Of(*this);
    widest = 0;
    Schedule();
}

void QtTree::scrollContentsBy(int, int) {
    viewport()->update();
    SyncEditor();
    Schedule();
}

void QtTree::focusInEvent(QFocusEvent*) {
    viewport()->update();
}
void QtTree::focusOutEvent(QFocusEvent*) {
    viewport()->update();
}

// Where things stand.

TreeHit QtTree::HitTest(VPoint point) const {
    Sync();
    const QPoint at = ToQt(point);
    if (items == nullptr || !viewport()->rect().contains(at)) return {};
    const int row = verticalScrollBar()->value() + at.y() / metrics.rowHeight;
    if (row >= rows.GetCount()) return {};
    const TreeItem item = rows[row].item;
    const QtTreeRowPlaces places = PlacesOf(row);
    if (places.label.contains(at)) return {item, TreePart::kLabel};
    if (places.icon.contains(at)) return {item, TreePart::kIcon};
    const bool isOnExpander = places.expander.contains(at) && items->HasChildrenOrExpander(item);
    return {item, isOnExpander ? TreePart::kExpander : TreePart::kBeside};
}

bool QtTree::GetItemRectangle(TreeItem item, bool labelOnly, VRectangle& rectangle) const {
    Sync();
    const int row = rows.Find(item);
    if (row < 0) return false;
    const int top = OriginOf(row).y();
    if (top < 0 || top >= viewport()->height()) return false;
    rectangle = FromQt(labelOnly ? PlacesOf(row).label : QRect(0, top, viewport()->width(), metrics.rowHeight));
    return true;
}

VRectangle QtTree::GetClientRectangle() const {
    return FromQt(viewport()->rect());
}

void QtTree::EnsureVisible(TreeItem item) {
    toBeSeen = item;
    Schedule();
}

void QtTree::ScrollRows(int rowCount) {
    Sync();
    verticalScrollBar()->setValue(verticalScrollBar()->value() + rowCount);
}

// Keys, clicks and tips.

bool QtTree::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && events != nullptr) {
        const auto* help = static_cast<QHelpEvent*>(event);
        ShowTip(help->pos(), help->globalPos());
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void QtTree::ShowTip(QPoint point, QPoint onScreen) {
    const TreeHit hit = HitTest(FromQt(point));
    VUnicodeString text;
    const bool isOnText = hit.part == TreePart::kIcon || hit.part == TreePart::kLabel;
    if (!isOnText || !events->OnInfoTip(hit.item, text) || text.IsEmpty()) return QToolTip::hideText();
    QToolTip::showText(onScreen, MakeTip(ToQt(text)), viewport(), PlacesOf(rows.Find(hit.item)).label);
}

void QtTree::keyPressEvent(QKeyEvent* event) {
    const std::uint16_t key = VirtualKeyOf(*event);
    const QString text = event->text();
    const bool isCommand = (FromQt(event->modifiers()) & (Accelerator::kControl | Accelerator::kAlt)) != 0;
    if (key != 0 && events != nullptr) {
        const QtDialogFrame::EventScope scope(&frame);
        events->OnKeyDown(key, FromQt(event->modifiers()));
    }
    if (!isCommand && !text.isEmpty() && text.front().isPrint()) TellText(text);
}

void QtTree::inputMethodEvent(QInputMethodEvent* event) {
    TellText(event->commitString());
}

void QtTree::TellText(const QString& text) {
    // The key itself may have begun to edit a label, or closed the window.
    if (events == nullptr || editor != nullptr || text.isEmpty()) return;
    const QtDialogFrame::EventScope scope(&frame);
    events->OnText(FromQt(text));
}

void QtTree::TellPress(MouseButton button, QPoint point, Qt::KeyboardModifiers modifiers) {
    const TreeHit hit = HitTest(FromQt(point));
    const bool canBeDragged =
        button == MouseButton::kLeft && (hit.part == TreePart::kIcon || hit.part == TreePart::kLabel);
    pressed = canBeDragged ? hit.item : TreeItem::kNone;
    pressPoint = point;
    const QtDialogFrame::EventScope scope(&frame);
    events->OnMouseDown(button, FromQt(point), FromQt(modifiers));
}

void QtTree::mousePressEvent(QMouseEvent* event) {
    const bool isLeft = event->button() == Qt::LeftButton;
    if (events == nullptr || (!isLeft && event->button() != Qt::RightButton)) return;
    TellPress(isLeft ? MouseButton::kLeft : MouseButton::kRight, event->position().toPoint(), event->modifiers());
}

void QtTree::mouseDoubleClickEvent(QMouseEvent* event) {
    const VPoint point = FromQt(event->position().toPoint());
    // Clicks on an expander count one by one, however fast they come.
    if (event->button() != Qt::LeftButton || HitTest(point).part == TreePart::kExpander) return mousePressEvent(event);
    if (events == nullptr) return;
    const QtDialogFrame::EventScope scope(&frame);
    events->OnDoubleClick(point);
}

void QtTree::mouseMoveEvent(QMouseEvent* event) {
    const QPoint way = event->position().toPoint() - pressPoint;
    const bool isFar = way.manhattanLength() >= QApplication::startDragDistance();
    if (events == nullptr || !event->buttons().testFlag(Qt::LeftButton) || pressed == TreeItem::kNone || !isFar) return;
    const TreeItem item = std::exchange(pressed, TreeItem::kNone);
    if (!items->IsValid(item)) return;
    const QtDialogFrame::EventScope scope(&frame);
    events->OnBeginDrag(item, FromQt(pressPoint));
}

void QtTree::mouseReleaseEvent(QMouseEvent*) {
    pressed = TreeItem::kNone;
}

void QtTree::ActOn(TreeItem item, TreePart part) {
    EnsureVisible(item);
    Sync();
    const int row = rows.Find(item);
    if (row < 0 || events == nullptr) return;
    const QtTreeRowPlaces places = PlacesOf(row);
    const QRect& place = part == TreePart::kExpander ? places.expander : places.label;
    TellPress(MouseButton::kLeft, place.center(), Qt::NoModifier);
    pressed = TreeItem::kNone;
}

// The label that is edited.

QtLabelEditor* QtTree::GetEditor() const {
    return editor;
}

void QtTree::BeginLabelEdit(TreeItem item) {
    EndLabelEdit(false);
    if (items == nullptr || !items->IsValid(item)) return;
    {
        const QtDialogFrame::EventScope scope(&frame);
        if (!events->OnBeginLabelEdit(item) || items == nullptr || !items->IsValid(item)) return;
    }
    edited = item;
    const auto end = [this](bool keepText) {
        EndLabelEdit(keepText);
        return editor == nullptr;
    };
    editor = new QtLabelEditor(ToQt(items->GetText(item)), end, viewport());
    editor->setAccessibleName(editor->text());
    EnsureVisible(item);
    Sync();
    const int row = rows.Find(item);
    if (row >= 0 && PlacesOf(row).label.left() < 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + PlacesOf(row).icon.left());
    SyncEditor();
    connect(editor, &QLineEdit::textEdited, this, [this] { SyncEditor(); });
    editor->setFocus();
    Schedule();
}

void QtTree::EndLabelEdit(bool keepText) {
    if (editor == nullptr) return;
    QtLabelEditor& ended = *std::exchange(editor, nullptr);
    const TreeItem item = std::exchange(edited, TreeItem::kNone);
    const VUnicodeString text = FromQt(ended.text());
    ended.Stop();
    if (ended.hasFocus()) setFocus();
    ended.hide();
    ended.deleteLater();
    Schedule();
    const QtDialogFrame::EventScope scope(&frame);
    if (events != nullptr) events->OnEndLabelEdit(item, keepText ? &text : nullptr);
}

}  // namespace connectdialog
