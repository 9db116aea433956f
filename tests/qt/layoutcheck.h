// Whether a user can read what a dialog shows.
#pragma once

#include <string>

class QWidget;

namespace connectdialog::test {

/// Expects that none of the widget's controls is cut off or lies on another one. `what` names it in a failure.
void CheckLayout(const QWidget& shown, const std::string& what);

}  // namespace connectdialog::test
