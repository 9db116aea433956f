// Which application runs, by the name that the host gave.
#pragma once

#include "imports/connectprotocoltable.h"

namespace connectdialog {

/// "Halden", "NorHalden", "Wakestone" (a NorHalden) or "Tessaly", case ignored; anything else is kUnknown.
AppKind GetAppKind();

}  // namespace connectdialog
