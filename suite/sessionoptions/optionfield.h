// The binding between a setting of a session and the text of the control that shows it.
#pragma once

#include <vector>

#include "foundation/vunicodestring.h"
#include "suite/sessionoptions/optionpages.h"

namespace connectdialog {

class ISessionConfig;
class VProfileData;

/// What the setting is on the page of all settings: its field on another page, or one that follows from its type. A
/// font is one line there.
OptionField GetFieldOf(VProfileData& setting);

/// The text that the user sees; empty for a secret. Requires: the field is that of the setting.
VUnicodeString ShowField(const OptionField& field, VProfileData& setting);

/// What a combo box offers for the field, with what is shown now among them; empty for a field that is typed.
std::vector<VUnicodeString> ListChoices(const OptionField& field, ISessionConfig& session, VProfileData& setting);

/// Sets the setting from what the user typed or chose. A text that is the one shown changes nothing, whatever it is.
/// On failure: false with a sentence for the user that names the field, and the setting stays.
bool TakeField(const OptionField& field, ISessionConfig& session, VProfileData& setting, const VUnicodeString& shown,
               VUnicodeString& refusal);

/// What a text for the field must look like, for the user; empty where any text will do.
VUnicodeString DescribeField(const OptionField& field, VProfileData& setting);

}  // namespace connectdialog
