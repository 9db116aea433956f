// Boxes with a text and a few buttons, under the name of the application.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class IReportMessageParams;
class VWindow;

// Which buttons, and which picture: one of each, joined.
inline constexpr unsigned kBoxOk = 0;
inline constexpr unsigned kBoxOkCancel = 1;
inline constexpr unsigned kBoxYesNo = 4;
inline constexpr unsigned kBoxError = 16;
inline constexpr unsigned kBoxQuestion = 32;
inline constexpr unsigned kBoxWarning = 48;
inline constexpr unsigned kBoxInformation = 64;

// What was answered. Closing the box by other means is Cancel where there is such a button, else OK or No.
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

/// Shows the box and gives the answer; kAnswerCancel when there is no back end to ask with. `parent` may be null.
int VMessageBox(VWindow* parent, const VUnicodeString& text, unsigned flags);
/// The text of a report, with an OK button and the picture of the severity that its code tells.
int VMessageBox(VWindow* parent, IReportMessageParams& report);

}  // namespace connectdialog
