// The tree control as the source and as the target of drags.
#include <QDrag>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimerEvent>

#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/dialogkit/qt/qtmimedata.h"
#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog {

namespace {

/// While the pointer rests, a drag is told on so that folders open and the tree scrolls under it.
constexpr int kRepeatMilliseconds = 100;

DropEffect EffectOf(Qt::DropAction action) {
    if (action == Qt::CopyAction) return DropEffect::kCopy;
    return action == Qt::MoveAction ? DropEffect::kMove : DropEffect::kNone;
}

}  // namespace

DropEffect QtTree::RunDrag(TreeItem item, const VDragData& data) {
    const int row = GetRows().Find(item);
    auto* drag = new QDrag(this);  // destroyed by the toolkit when it is over
    drag->setMimeData(MakeMimeData(data.GetFormat(), data.GetBytes()).release());
    if (row >= 0) drag->setPixmap(PaintDragPicture(*this, metrics, LookOf(row)));
    drag->setHotSpot({0, 0});
    const QPointer<QtTree> self = this;
    isDragging = true;
    const Qt::DropAction done = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    if (self != nullptr) isDragging = false;
    return EffectOf(done);
}

void QtTree::GiveUpDrag() {
    if (isDragging) QDrag::cancel();
}

void QtTree::TellDragOver(QPoint point, Qt::KeyboardModifiers modifiers) {
    dragPoint = point;
    const QtDialogFrame::EventScope scope(&frame);
    dropEffect = events->OnDragOver(dragData, FromQt(point), FromQt(modifiers));
}

void QtTree::Answer(QDropEvent& event) const {
    if (dropEffect == DropEffect::kNone) return event.ignore();
    event.setDropAction(dropEffect == DropEffect::kCopy ? Qt::CopyAction : Qt::MoveAction);
    event.accept();
}

void QtTree::dragEnterEvent(QDragEnterEvent* event) {
    dragData = FindDragData(event->mimeData());
    if (events == nullptr || dragData.GetFormat().IsEmpty()) return event->ignore();
    dragPoint = event->position().toPoint();
    dragRepeat.start(kRepeatMilliseconds, this);
    {
        const QtDialogFrame::EventScope scope(&frame);
        dropEffect = events->OnDragEnter(dragData, FromQt(dragPoint), FromQt(event->modifiers()));
    }
    // Taken even where a drop would do nothing: without it no moves are told.
    event->acceptProposedAction();
}

void QtTree::dragMoveEvent(QDragMoveEvent* event) {
    if (events == nullptr) return event->ignore();
    TellDragOver(event->position().toPoint(), event->modifiers());
    Answer(*event);
}

void QtTree::timerEvent(QTimerEvent* event) {
    if (event->timerId() != dragRepeat.timerId()) return QAbstractScrollArea::timerEvent(event);
    if (events != nullptr) TellDragOver(dragPoint, QGuiApplication::keyboardModifiers());
}

void QtTree::dragLeaveEvent(QDragLeaveEvent*) {
    dragRepeat.stop();
    dropEffect = DropEffect::kNone;
    if (events == nullptr) return;
    const QtDialogFrame::EventScope scope(&frame);
    events->OnDragLeave();
}

void QtTree::dropEvent(QDropEvent* event) {
    dragRepeat.stop();
    Answer(*event);
    const DropEffect effect = std::exchange(dropEffect, DropEffect::kNone);
    if (events == nullptr) return event->ignore();
    const QtDialogFrame::EventScope scope(&frame);
    if (effect == DropEffect::kNone) {
        // Where a drop does nothing, letting go is leaving.
        event->ignore();
        return events->OnDragLeave();
    }
    if (events->OnDrop(dragData, FromQt(event->position().toPoint()), effect)) return;
    event->setDropAction(Qt::IgnoreAction);
    event->ignore();
}

}  // namespace connectdialog
