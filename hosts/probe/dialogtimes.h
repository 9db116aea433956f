// How long the dialogs for one new session keep the user waiting.
#pragma once

namespace connectdialog::hosts {

/// Opens the new session wizard and quick connect, each twice, over an empty store, and picks each protocol in quick
/// connect. Prints one line, in milliseconds: `wizard` and `quick`, from the call to the end of the first paint, the
/// first time and again; `switch`, the longest from the choice of a protocol to the end of the paint. Gives the exit
/// code.
int MeasureDialogs(int argc, char** argv);

}  // namespace connectdialog::hosts
