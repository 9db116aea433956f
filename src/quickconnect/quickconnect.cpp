#include "quickconnect/quickconnect.h"

#include "imports/dialogkit/vmessagebox.h"
#include "quickconnect/quickconnectdialog.h"

namespace connectdialog {

namespace {
using LastConfig = VRef<SessionConfig>;
using OutOfRange = VArray<ConnectProtocolTableElement>::OutOfRange;
}  // namespace

std::int64_t ShowQuickConnectDialog(ISessionConfig** config, const VUnicodeString& targetFolder, unsigned appKind,
                                    VWindow* parent) try {
    QuickConnectDialog dialog(targetFolder, static_cast<AppKind>(appKind), parent);
    const std::int64_t result = dialog.Run();
    if (result == kDialogAccepted) *config = VRef<ISessionConfig>::Share(&dialog.GetConfig()).Detach();
    return result;
} catch (const OutOfRange&) {
    VMessageBox(parent, u"没有可用的协议。"_v, kBoxError);
    return kDialogCancelled;
}

void GetQuickConnectConfig(ISessionConfig** config, unsigned appKind) try {
    const QuickConnectDialog dialog(VUnicodeString(), static_cast<AppKind>(appKind), nullptr);
    *config = dialog.GetConfig().Clone();
} catch (const OutOfRange&) {
    *config = nullptr;
}

void SetQuickConnectConfig(const ISessionConfig& config) {
    const VRef<ISessionConfig> copy = VRef<ISessionConfig>::Adopt(config.Clone());
    if (auto* session = dynamic_cast<SessionConfig*>(copy.Get()))
        QuickConnectDialogBase::LastQuickConnectConfig() = LastConfig::Share(session);
}

void CleanupQuickConnectDialog() {
    // Emptied first: whatever its end brings about finds none.
    const LastConfig last = std::move(QuickConnectDialogBase::LastQuickConnectConfig());
}

}  // namespace connectdialog
