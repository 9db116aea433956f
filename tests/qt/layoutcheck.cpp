#include "layoutcheck.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace connectdialog::test {

namespace {

/// What the widget needs to show all of its text; the widget's own size where that does not depend on a text.
QSize NeededBy(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text().isEmpty() ? QSize() : QSize(0, label->heightForWidth(label->width()));
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr) return {widget.sizeHint().width(), 0};
    if (qobject_cast<const QComboBox*>(&widget) != nullptr) return widget.sizeHint();
    return qobject_cast<const QLineEdit*>(&widget) != nullptr ? QSize(0, widget.sizeHint().height()) : QSize();
}

}  // namespace

void CheckLayout(const QWidget& shown, const std::string& what) {
    QList<QWidget*> controls = shown.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    controls.removeIf([&](const QWidget* control) { return !control->isVisibleTo(&shown); });
    for (qsizetype i = 0; i < controls.size(); ++i) {
        const QWidget& control = *controls[i];
        const std::string name = what + " " + control.accessibleName().toStdString();
        EXPECT_LE(NeededBy(control).width(), control.width()) << name;
        EXPECT_LE(NeededBy(control).height(), control.height()) << name;
        EXPECT_TRUE(shown.rect().contains(control.geometry()) || control.size().isEmpty()) << name;
        for (qsizetype k = i + 1; k < controls.size(); ++k) {
            if (control.inherits("QGroupBox") || controls[k]->inherits("QGroupBox")) continue;
            EXPECT_FALSE(control.geometry().intersects(controls[k]->geometry())) << name;
        }
    }
}

}  // namespace connectdialog::test
