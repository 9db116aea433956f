#include "quickconnect/quickconnect.h"

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

std::int64_t ShowQuickConnectDialog(ISessionConfig**, const VUnicodeString&, unsigned, VWindow*) {
    return kDialogCancelled;
}
void GetQuickConnectConfig(ISessionConfig** config, unsigned) {
    *config = nullptr;
}
void CleanupQuickConnectDialog() {}

}  // namespace connectdialog
