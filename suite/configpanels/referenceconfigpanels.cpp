#include "suite/configpanels/referenceconfigpanels.h"

#include <chrono>
#include <utility>

#include "config/appkind.h"
#include "foundation/commandline.h"
#include "foundation/messagetable.h"
#include "foundation/textchecks.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/hostcallbacks.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "sessiondb/sessionpaths.h"
#include "suite/configpanels/firewallprompt.h"
#include "suite/configpanels/optionalbox.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/configpanels/sessionname.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

std::string FindSuiteProgram(const char* name) {
    const std::string own = platform::ToNativePath(platform::GetExecutablePath());
    const std::string beside = platform::FindProgram(own.substr(0, own.rfind('/') + 1) + name);
    return beside.empty() ? platform::FindProgram(name) : beside;
}

void StartSuiteProgram(VWindow* parent, const char* name, std::vector<std::string> words) {
    words.insert(words.begin(), FindSuiteProgram(name));
    if (platform::StartProgram(words, std::chrono::milliseconds(0))) return;
    VUnicodeString text;
    text.Format(u"无法启动 %1：%2", VUnicodeString(name), FindSystemMessage(platform::GetLastErrorCode()));
    VMessageBox(parent, text, kBoxWarning);
}

bool ReadLaunchCommand(std::u16string_view line, std::vector<std::string>& words) {
    constexpr std::u16string_view kOption = u" /S \"";
    const VUnicodeString& shared = GetHostCallbacks().applicationCommandLine;
    if (!line.starts_with(shared.View())) return false;
    line.remove_prefix(shared.GetLength());
    if (!line.starts_with(kOption) || line.size() == kOption.size() || !line.ends_with(u'"')) return false;
    const std::u16string_view path = line.substr(kOption.size(), line.size() - kOption.size() - 1);
    VStringArray sharedWords;
    if (path.empty() || HasHalfCharacter(path) || !SplitCommandLine(shared, sharedWords)) return false;
    words.clear();
    for (const VUnicodeString& word : sharedWords) words.push_back(platform::ToNarrow(word));
    words.emplace_back("/S");
    words.push_back(platform::ToNarrow(path));
    return true;
}

bool ReferenceConfigPanels::GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t) {
    if (!global) global = VRef<ReferenceGlobalConfig>::Adopt(new ReferenceGlobalConfig);
    config = VRef<GlobalConfig>::Share(global.Get());
    return true;
}

const ConnectProtocolTable& ReferenceConfigPanels::GetConnectProtocolTable() {
    return GetReferenceProtocolTable();
}

AppKind ReferenceConfigPanels::GetCurrentAppProductID() {
    return GetAppKind();
}

bool ReferenceConfigPanels::IsIntegrated() {
    return IsNorHaldenOrHaldenInstalled() && IsTessalyInstalled();
}

bool ReferenceConfigPanels::IsNorHaldenInstalled() {
    return !FindSuiteProgram("norhalden").empty();
}

bool ReferenceConfigPanels::IsNorHaldenOrHaldenInstalled() {
    return IsNorHaldenInstalled() || !FindSuiteProgram("halden").empty();
}

bool ReferenceConfigPanels::IsTessalyInstalled() {
    return !FindSuiteProgram("tessaly").empty();
}

bool ReferenceConfigPanels::ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName,
                                                const VUnicodeString& newName, bool isNew, VWindow* parent) {
    const VUnicodeString currentName = isNew ? VUnicodeString() : oldName;
    const SessionNameFault fault = CheckSessionName(isNew ? path : GetEntryParent(path), currentName, newName);
    if (fault != SessionNameFault::kNone && parent != nullptr)
        VMessageBox(parent, TranslateSessionNameFault(fault, newName), kBoxWarning);
    return fault == SessionNameFault::kNone;
}

void ReferenceConfigPanels::LaunchSister(VWindow* parent, const char* name, std::u16string_view commandLine) {
    std::vector<std::string> words;
    if (!ReadLaunchCommand(commandLine, words))
        return (void)VMessageBox(parent, u"该会话不能交给另一个程序。"_v, kBoxWarning);
    StartSuiteProgram(parent, name, std::move(words));
}

void ReferenceConfigPanels::LaunchTerminalApp(VWindow* parent, const char16_t* commandLine) {
    LaunchSister(parent, "norhalden", commandLine);
}

void ReferenceConfigPanels::LaunchFileTransferApp(VWindow* parent, const char16_t* commandLine) {
    LaunchSister(parent, "tessaly", commandLine);
}

int ReferenceConfigPanels::ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text,
                                                  const VUnicodeString& checkText, VProfile<int>& suppress,
                                                  const VUnicodeString& buttonText, bool isQuestion, int picture,
                                                  unsigned) {
    const int answer = ShowOptionalBox(parent, text, checkText, suppress, buttonText, isQuestion, picture);
    if (global && suppress.IsChanged()) global->SaveOne(suppress);
    return answer;
}

bool ReferenceConfigPanels::LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable*) {
    return AskForFirewall(FirewallQuestion::kUsername, *answer, save, nullptr);
}
bool ReferenceConfigPanels::LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable*) {
    return AskForFirewall(FirewallQuestion::kPassword, *answer, save, nullptr);
}

}  // namespace connectdialog
