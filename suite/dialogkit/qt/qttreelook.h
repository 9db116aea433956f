// How a row of the tree looks: where its parts stand and how they are painted.
#pragma once

#include <QRect>
#include <QString>
#include <cstdint>

class QPainter;
class QPixmap;
class QPoint;
class QWidget;

namespace connectdialog {

/// Sizes that follow from the tree's font and style, pixels.
struct QtTreeMetrics {
    int rowHeight = 0;
    int indent = 0;  ///< a level's, and the width of an expander
    int icon = 0;
    int gap = 0;  ///< round an icon, and before and behind a label

    static QtTreeMetrics Of(const QWidget& tree);
};

struct QtTreeRowLook {
    QString text;
    std::uint8_t image = 0;
    std::int32_t level = 0;
    bool hasExpander = false;
    bool isExpanded = false;
    bool isHighlighted = false;  ///< selected, or what a drop would go into
    bool isCut = false;
    bool hasCaret = false;
    bool isEdited = false;  ///< the edit box lies over the label
};

/// The parts of a row whose upper left corner is `origin`.
struct QtTreeRowPlaces {
    QRect expander;
    QRect icon;
    QRect label;

    QtTreeRowPlaces(const QtTreeMetrics& metrics, std::int32_t level, int textWidth, QPoint origin);
};

int TreeTextWidth(const QWidget& tree, const QString& text);

void PaintTreeRow(QPainter& painter, const QWidget& tree, const QtTreeRowLook& look, const QtTreeRowPlaces& places);
/// The line where a drop would insert, before or behind a row.
void PaintInsertMark(QPainter& painter, const QWidget& tree, const QRect& row, int left, bool isBehind);
/// What hangs on the pointer while the row is dragged.
QPixmap PaintDragPicture(const QWidget& tree, const QtTreeMetrics& metrics, QtTreeRowLook look);

}  // namespace connectdialog
