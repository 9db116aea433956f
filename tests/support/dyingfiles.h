// Kills this process in the middle of a database's work on its files.
#pragma once

namespace connectdialog::test {

/// From now on SQLite counts its steps on files (each write, truncation and removal), and before the step of this
/// number the process kills itself. A sync is no step: what was written outlives a killed process without it.
void DieAtFileStep(unsigned step);

}  // namespace connectdialog::test
