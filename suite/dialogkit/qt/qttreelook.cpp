#include "suite/dialogkit/qt/qttreelook.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>

#include "suite/dialogkit/qt/qticons.h"

namespace connectdialog {

namespace {

constexpr int kLabelPadding = 3;
constexpr int kRowPadding = 2;
constexpr int kMarkThickness = 2;
constexpr qreal kCutOpacity = 0.5;
constexpr qreal kDragOpacity = 0.8;
constexpr int kWidestDragPicture = 300;

QPalette::ColorGroup GroupOf(const QWidget& tree) {
    if (!tree.isEnabled()) return QPalette::Disabled;
    // A selection without the focus is told from one with it.
    return tree.hasFocus() && tree.isActiveWindow() ? QPalette::Active : QPalette::Inactive;
}

void PaintExpander(QPainter& painter, const QWidget& tree, const QtTreeRowLook& look, const QRect& place) {
    QStyleOption option;
    option.initFrom(&tree);
    option.rect = place;
    option.state = QStyle::State_Item | QStyle::State_Children | QStyle::State_Enabled;
    if (look.isExpanded) option.state |= QStyle::State_Open;
    tree.style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, &painter, &tree);
}

void PaintFocusFrame(QPainter& painter, const QWidget& tree, const QtTreeRowLook& look, const QRect& label) {
    QStyleOptionFocusRect option;
    option.initFrom(&tree);
    option.rect = label;
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = tree.palette().color(look.isHighlighted ? QPalette::Highlight : QPalette::Base);
    tree.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, &tree);
}

}  // namespace

QtTreeMetrics QtTreeMetrics::Of(const QWidget& tree) {
    const QStyle& style = *tree.style();
    QtTreeMetrics metrics;
    metrics.icon = style.pixelMetric(QStyle::PM_SmallIconSize, nullptr, &tree);
    metrics.gap = kLabelPadding;
    metrics.indent = std::max(style.pixelMetric(QStyle::PM_TreeViewIndentation, nullptr, &tree), metrics.icon);
    metrics.rowHeight = std::max(metrics.icon, tree.fontMetrics().height()) + 2 * kRowPadding;
    return metrics;
}

QtTreeRowPlaces::QtTreeRowPlaces(const QtTreeMetrics& metrics, std::int32_t level, int textWidth, QPoint origin)
    : expander(origin.x() + level * metrics.indent, origin.y(), metrics.indent, metrics.rowHeight),
      icon(expander.right() + 1, origin.y(), metrics.icon + metrics.gap, metrics.rowHeight),
      label(icon.right() + 1, origin.y(), textWidth + 2 * kLabelPadding, metrics.rowHeight) {}

int TreeTextWidth(const QWidget& tree, const QString& text) {
    return tree.fontMetrics().horizontalAdvance(text);
}

void PaintTreeRow(QPainter& painter, const QWidget& tree, const QtTreeRowLook& look, const QtTreeRowPlaces& places) {
    const QPalette& palette = tree.palette();
    const QPalette::ColorGroup group = GroupOf(tree);
    if (look.hasExpander) PaintExpander(painter, tree, look, places.expander);
    painter.save();
    if (look.isCut) painter.setOpacity(kCutOpacity);
    const QIcon& icon = TreeIcon(look.image);
    icon.paint(&painter, places.icon.adjusted(0, 0, -kLabelPadding, 0), Qt::AlignCenter);
    if (!look.isEdited) {
        if (look.isHighlighted) painter.fillRect(places.label, palette.brush(group, QPalette::Highlight));
        painter.setPen(palette.color(group, look.isHighlighted ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(places.label.adjusted(kLabelPadding, 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, look.text);
    }
    painter.restore();
    if (look.hasCaret && tree.hasFocus()) PaintFocusFrame(painter, tree, look, places.label);
}

void PaintInsertMark(QPainter& painter, const QWidget& tree, const QRect& row, int left, bool isBehind) {
    const int y = isBehind ? row.bottom() + 1 - kMarkThickness : row.top();
    painter.fillRect(QRect(left, y, std::max(0, row.right() + 1 - left), kMarkThickness),
                     tree.palette().color(QPalette::Active, QPalette::Highlight));
}

QPixmap PaintDragPicture(const QWidget& tree, const QtTreeMetrics& metrics, QtTreeRowLook look) {
    look.hasExpander = look.isCut = look.hasCaret = look.isHighlighted = false;
    const QtTreeRowPlaces places(metrics, 0, TreeTextWidth(tree, look.text), QPoint(-metrics.indent, 0));
    const QSize size(std::min(places.label.right() + 1, kWidestDragPicture), metrics.rowHeight);
    const qreal scale = tree.devicePixelRatioF();
    QPixmap picture(size * scale);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(tree.font());
    painter.setOpacity(kDragOpacity);
    painter.fillRect(QRect(QPoint(), size), tree.palette().color(QPalette::Base));
    PaintTreeRow(painter, tree, look, places);
    return picture;
}

}  // namespace connectdialog
