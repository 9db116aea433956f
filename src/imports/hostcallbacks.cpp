#include "imports/hostcallbacks.h"

namespace connectdialog {

HostCallbacks& GetHostCallbacks() {
    static HostCallbacks callbacks;
    return callbacks;
}

}  // namespace connectdialog
