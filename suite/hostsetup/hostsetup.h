// What every program of the suite does once at its start.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ReferenceConfigPanels;
class VProfileStoreFactory;

/// Makes the library ready for a host or a tool: the application's name, the reference global settings and protocols,
/// the store, and the library's start-up calls in their order (so stored data of older versions is brought up to date).
///
/// `appName` decides the side on which sessions are opened: "NorHalden" and "Wakestone" are terminal applications,
/// "Tessaly" transfers files; any other name is a tool without a side. It may be called again with another store (tests
/// do): nothing that was read from the former one is kept.
/// Requires: `factory` stays the caller's and outlives every use of the library.
void InstallReferenceSuite(const VUnicodeString& appName, VProfileStoreFactory& factory);

/// The panels that InstallReferenceSuite installs. Live as long as the process.
ReferenceConfigPanels& GetReferenceConfigPanels();

}  // namespace connectdialog
