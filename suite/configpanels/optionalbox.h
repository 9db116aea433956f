// A message box that the user can ask not to see again.
#pragma once

#include "foundation/vunicodestring.h"
#include "profile/vprofile.h"

namespace connectdialog {

class VWindow;

namespace OptionalBoxIds {
inline constexpr int kDialog = 6001;
inline constexpr int kText = 6002;
inline constexpr int kDontShowAgain = 6003;
inline constexpr int kNo = 6004;
}  // namespace OptionalBoxIds

/// See IConfigPanels::ShowOptionalMessageBox. Gives 1 for the button called `buttonText`, else 2. A ticked box sets
/// `suppress` to 1 with the answers OK, Yes and No; who cancels has decided nothing.
int ShowOptionalBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                    VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion, int picture);

}  // namespace connectdialog
