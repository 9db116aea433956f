// What the operations on the session tree are made of.
#pragma once

#include "config/isessionconfig.h"
#include "foundation/vunknown.h"
#include "profile/vprofilekey.h"
#include "sessiondb/profilefolderdata.h"

namespace connectdialog {

/// A unit of work round the steps of one operation, each of which has stores of its own. `steps` gives false to give
/// up: then, and when the store refuses, the unit is abandoned and the answer is false.
template <class Steps>
bool AsOneUnit(Steps steps) {
    VProfileStore unit(false);
    if (!unit.JoinUnitOfWork()) return false;
    try {
        if (steps()) return unit.Close();
    } catch (...) {
        unit.Abandon();  // before the store closes, which would commit what was done so far
        throw;
    }
    // A unit that failed can only be abandoned, and keeps the cause for the store that was opened round this one.
    if (unit.JoinUnitOfWork()) unit.Abandon();
    return false;
}

/// Brings the lists of a folder up to date, makes the change in the tree, and then the change in the lists: a name that
/// was not there before finds its place, one that was keeps it.
template <class ChangeTree, class ChangeLists>
bool ChangeFolder(const VUnicodeString& path, ChangeTree changeTree, ChangeLists changeLists) {
    ProfileFolderData folder(path, false);
    if (!folder.SaveToStore() || !changeTree()) return false;
    changeLists(folder);
    return folder.SaveToStore();
}

/// Makes the key of a folder, with those above it that are missing. Nothing changes when it is there.
bool CreateFolderKey(VProfileStore& store, const VUnicodeString& path);

/// The session that `key` holds, with that path and leaf name.
VRef<ISessionConfig> LoadSessionFrom(VProfileKey& key, const VUnicodeString& path, const VUnicodeString& leaf);

}  // namespace connectdialog
