// The widgets that the controls of a template become.
#pragma once

#include <QSize>
#include <QSizeF>
#include <functional>

#include "resources/dialogtemplate.h"

class QIcon;
class QLabel;
class QObject;
class QString;
class QToolBar;
class QWidget;

namespace connectdialog {

class QtDialogFrame;
class VToolbarState;

/// Owned by the frame, hidden like it, without a label.
QWidget* MakeControlWidget(ControlKind kind, QtDialogFrame& frame);

/// Requires: the widget was made for that kind, which holds no input.
void ShowLabel(ControlKind kind, QWidget& widget, const QString& label);

/// In the size of the system's pictures; an icon without a picture leaves the label as it is.
void ShowIcon(QLabel& label, const QIcon& icon);

/// What the user typed or chose; the label of a kind that holds no input is not told.
QString GetInput(const QWidget& widget);
/// Sets it without an event.
void SetInput(QWidget& widget, const QString& text);
/// Calls `tell` whenever the user changes it, as long as `listener` lives.
void WatchInput(QWidget& widget, const QObject& listener, const std::function<void()>& tell);
/// Overwrites what a password edit holds.
void WipeInput(QWidget& widget);

/// The size below which the widget is cut off, pixels; 0 where any size will do.
QSize NeededSize(ControlKind kind, const QWidget& widget);

/// The size of an average character of the widget's font, pixels: four dialog units across and eight down.
QSizeF AverageCharacter(const QWidget& widget);

/// A bar with small pictures, owned by the window.
QToolBar* MakeToolBar(QWidget& window);
/// Its buttons tell their commands as long as `listener` lives. Buttons that are there already are kept.
void FillToolBar(QToolBar& bar, const VToolbarState& state, const QObject& listener,
                 const std::function<void(int command)>& tell);

}  // namespace connectdialog
