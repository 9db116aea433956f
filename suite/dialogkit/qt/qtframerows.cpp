#include "suite/dialogkit/qt/qtframerows.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "suite/dialogkit/qt/qttext.h"

namespace connectdialog {

void QtFrameRows::SetColumns(std::span<const VUnicodeString> headings) {
    beginResetModel();
    columns.assign(headings.begin(), headings.end());
    endResetModel();
}

void QtFrameRows::SetRows(std::span<const FrameRow> shown) {
    const int before = static_cast<int>(rows.size());
    const int after = static_cast<int>(shown.size());
    if (after > before) beginInsertRows({}, before, after - 1);
    if (after < before) beginRemoveRows({}, after, before - 1);
    rows.assign(shown.begin(), shown.end());
    if (after > before) endInsertRows();
    if (after < before) endRemoveRows();
    const int kept = std::min(before, after);
    if (kept > 0) emit dataChanged(index(0, 0), index(kept - 1, columnCount({}) - 1));
}

int QtFrameRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int QtFrameRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant QtFrameRows::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const auto& texts = rows[static_cast<std::size_t>(index.row())].texts;
    const auto column = static_cast<std::size_t>(index.column());
    if (column >= texts.size()) return {};
    // A tip is read as rich text where it looks like it.
    return role == Qt::DisplayRole ? ToQt(texts[column]) : ToQt(texts[column]).toHtmlEscaped();
}

QVariant QtFrameRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return ToQt(columns[static_cast<std::size_t>(section)]);
}

QtFrameList::QtFrameList(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setSectionsMovable(false);
}

/// At the row with the focus.
void QtFrameList::AskForMenu() {
    const QModelIndex row = currentIndex().siblingAtColumn(0);
    const QPoint point = row.isValid() ? visualRect(row).intersected(viewport()->rect()).center() : QPoint();
    menuWanted(viewport()->mapToGlobal(point));
}

void QtFrameList::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = event->modifiers().testFlag(Qt::KeypadModifier) || event->modifiers() == Qt::NoModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool isMenu =
        event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier);
    if (isMenu) return AskForMenu();
    if (!isReturn || !isPlain) return QTreeView::keyPressEvent(event);
    if (currentIndex().isValid()) activated(currentIndex().row());
}

void QtFrameList::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::RightButton) menuWanted(event->globalPosition().toPoint());
}

void QtFrameList::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) activated(index.row());
}

}  // namespace connectdialog
