#include "imports/hostcallbacks.h"

namespace connectdialog {

HostCallbacks& GetHostCallbacks() {
    static HostCallbacks callbacks;
    return callbacks;
}

VUnicodeString MakeLaunchCommand(const VUnicodeString& path) {
    VUnicodeString command;
    command.Format(u"%1 /S \"%2\"", GetHostCallbacks().applicationCommandLine, path);
    return command;
}

}  // namespace connectdialog
