// What every program of the suite does once at its start.
#pragma once

#include <memory>

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "imports/hostcallbacks.h"

namespace connectdialog {

class ReferenceConfigPanels;
class VIcon;
class VProfileStoreFactory;
class VReportMessageParams;

/// What a host has that a tool has not.
struct HostParts {
    /// The words with which the programs of the suite start each other, as a command line: what stands before the
    /// session in a launch command.
    VUnicodeString commandLine;
    /// The host's; outlives every dialog; may be null.
    VIcon* icon = nullptr;
    /// The host's; outlives every dialog; may be null.
    HelpFunction help = nullptr;
    /// Whether it opens sessions in the terminal that it was started from.
    bool needsTerminal = false;
    /// Words that a shortcut to it has before its arguments.
    VStringArray shortcutOptions;
};

/// Makes the library ready for a host or a tool: the application's name, the reference global settings and protocols,
/// the store, and the library's start-up calls in their order (so stored data of older versions is brought up to date).
///
/// `appName` decides the side on which sessions are opened: "NorHalden" and "Wakestone" are terminal applications,
/// "Tessaly" transfers files; any other name is a tool without a side. It may be called again with another store (tests
/// do): nothing that was read from the former one is kept.
/// Requires: `factory` stays the caller's and outlives every use of the library.
void InstallReferenceSuite(const VUnicodeString& appName, VProfileStoreFactory& factory,
                           const HostParts& parts = HostParts());

/// Opens the store that `url` names, or the user's own when it is empty, and installs the suite over it. `notice` is
/// what the user should know, on one line: why it failed, or that a damaged store was set aside; else empty.
/// On failure: null, and nothing is installed.
std::unique_ptr<VProfileStoreFactory> OpenReferenceStore(const VUnicodeString& appName, const VUnicodeString& url,
                                                         VUnicodeString& notice, const HostParts& parts = HostParts());

/// The words that tell a program of the suite which store it is about: `--store URL`, or none for the user's own.
VStringArray GetStoreOptions(const VUnicodeString& url);

/// A report for the user, on one line without a full stop: its text and, in brackets, what it is about and the cause,
/// where the text does not name them itself.
VUnicodeString DescribeReport(VReportMessageParams& report);

/// The panels that InstallReferenceSuite installs. Live as long as the process.
ReferenceConfigPanels& GetReferenceConfigPanels();

}  // namespace connectdialog
