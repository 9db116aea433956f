// The help of the windows: a box with their keys.
#pragma once

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vpopupmenu.h"

namespace connectdialog {
class VWindow;
}

namespace connectdialog::hosts {

/// Shows the text, which tells what keys do, and where more is told: on the running application's manual page. `parent`
/// may be null.
void ShowKeys(VWindow* parent, const VUnicodeString& text);

/// The help of the connect dialog, as a HelpFunction. The numbers mean nothing to it.
void ShowConnectKeys(VWindow* parent, unsigned, unsigned long);

/// The shortcuts that a menu and its sub-menus show, each before what it is for, three a line.
VUnicodeString DescribeShortcuts(const VPopupMenu& menu);

}  // namespace connectdialog::hosts
