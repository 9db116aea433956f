#include "hosts/common/hosttray.h"

namespace connectdialog::hosts {

bool HasTray(VUnicodeString& fault) {
    fault = u"this program was built without windows"_v;
    return false;
}

std::unique_ptr<HostTray> OpenHostTray(const HostKind&, ITrayEvents&) {
    return nullptr;
}

}  // namespace connectdialog::hosts
