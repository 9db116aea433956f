// What a user's hands send to widgets, by way of the window system where that is possible.
#pragma once

#include <QPoint>
#include <cstdint>
#include <functional>

#include "imports/dialogkit/idialogwindow.h"

class QString;
class QWidget;

namespace connectdialog::test {

// Points are pixels of the widget.

void ClickWidget(QWidget& widget, QPoint point, KeyModifiers modifiers = 0, Qt::MouseButton button = Qt::LeftButton);
void DoubleClickWidget(QWidget& widget, QPoint point);
/// To whatever has the focus in the window. The key is a virtual one.
void SendKey(QWidget& window, std::uint16_t key, KeyModifiers modifiers);
/// Replaces the text, by keys where they exist, else as an input method does.
/// Requires: an edit control or a memo.
void TypeInto(QWidget& edit, const QString& text);
/// The pointer rests there for as long as tips take.
void RestPointer(QWidget& widget, QPoint point);

/// Presses the left button and pulls; `play` runs while a drag does, or when none came of it.
void PullWidget(QWidget& widget, QPoint point, const std::function<void()>& play);
void MoveDrag(QWidget& widget, QPoint point, KeyModifiers modifiers);
void LetGo(QWidget& widget, QPoint point, KeyModifiers modifiers);

}  // namespace connectdialog::test
