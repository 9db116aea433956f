#include "platform/environment.h"

#include <cstdlib>

#include "platform/codepage.h"
#include "platform/lasterror.h"

namespace connectdialog::platform {

bool GetEnvironmentText(std::u16string_view name, std::u16string& value) {
    const bool valid = !name.empty() && name.find(u'=') == name.npos && name.find(u'\0') == name.npos;
    const char* found = valid ? std::getenv(ToNarrow(name).c_str()) : nullptr;
    if (found == nullptr) return FailWith(kVariableNotFound);
    value = ToWide(found);
    return true;
}

}  // namespace connectdialog::platform
