// Pictures of the dialogs, for people to look at.
#pragma once

class QString;

namespace connectdialog::test {

/// Saves a PNG of each dialog into the folder. False when one could not be shown or saved; the reason goes to the
/// standard error output. Requires: the QApplication exists, and the folder.
bool TakeScreenshots(const QString& folder);

/// Makes all widgets dark, as a desktop at night.
void GoDark();

}  // namespace connectdialog::test
