// The store that a run of the tool works on.
#pragma once

#include <functional>
#include <string>

#include "foundation/vunicodestring.h"
#include "tools/connectctl/command.h"

namespace connectdialog {
class VReportMessageParams;
}

namespace connectdialog::connectctl {

/// Opens the store and makes the library ready; once a run. An empty URL is the user's own store.
Failure OpenToolStore(const std::string& url);
/// The URL that it was opened by.
VUnicodeString GetToolStoreUrl();
/// Closes it. Before another program takes this one's place, and at the end.
void CloseToolStore();

/// Makes a change of several steps one unit of work: when `change` fails nothing of it stays. A store that refused
/// tells why, in place of the change's own words. In a dry run nothing stays of a change that went well either.
Failure ChangeStore(const std::function<Failure()>& change, bool isDryRun = false);
/// ChangeStore where `check` finds nothing against it. It is asked twice: first without the store's lock, so that a
/// mistake costs none, and again in the unit, for what another process changed in between. It finds anew what `change`
/// works on.
Failure CheckAndChange(const std::function<Failure()>& check, const std::function<Failure()>& change,
                       bool isDryRun = false);

/// DescribeReport of suite/hostsetup, as UTF-8.
std::string ReportText(VReportMessageParams& report);

}  // namespace connectdialog::connectctl
