// Kills this process in the middle of a database's work on its files.
#pragma once

namespace connectdialog::test {

/// From now on files of SQLite count their steps (each write, truncation, sync and deletion of a file), and before the
/// step of this number the process kills itself. Requires: no database is open yet; called once.
void DieAtFileStep(unsigned step);

}  // namespace connectdialog::test
