#include "hosts/common/hostwindow.h"

namespace connectdialog::hosts {

std::unique_ptr<HostWindow> OpenHostWindow(const HostKind&, VUnicodeString& fault) {
    fault = u"this program was built without windows"_v;
    return nullptr;
}

}  // namespace connectdialog::hosts
