// All or nothing: writes to the store, each perhaps through a store of its own, as one unit of work.
#pragma once

#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

/// Runs `steps` within a unit of work of `unit`, an open store, and closes it. `steps` gives false to give up. When it
/// does, when it throws, and when the store refuses, nothing of what was written in the unit stays.
/// On failure: false, and the last report of `unit` tells why, where it does: see TellsCause.
template <class Steps>
bool RunAsUnit(VProfileStore& unit, Steps steps) {
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

/// Whether the report of a unit that failed tells the cause. It does not when the steps gave up by themselves (code 0),
/// nor when one of them dropped the unit, who knows the cause better.
inline bool TellsCause(const IReportMessageParams& report) {
    return report.GetCode() != platform::kSuccess && report.GetCode() != platform::kCancelled;
}

/// RunAsUnit with a store of its own, where nobody asks why.
template <class Steps>
bool AsOneUnit(Steps steps) {
    VProfileStore unit(false);
    return RunAsUnit(unit, steps);
}

/// Opens the key at `path` in a store of its own, lets `write` write to it, and closes both. A store is asked for its
/// lock by the first write, not before. False when a write or the commit was refused: then none of the writes stays.
template <class Write>
bool WriteToKey(const char16_t* path, Write write) {
    VProfileStore store(false);
    bool isWritten = false;
    try {
        VProfileKey key(store.GetRootKey(), path, 0);
        write(key);
        isWritten = key.AllWritten();
        if (key.IsHalfWritten() && store.JoinUnitOfWork()) store.Abandon();
    } catch (...) {
        store.Abandon();
        throw;
    }
    return store.Close() && isWritten;
}

}  // namespace connectdialog
