#include "hosts/common/hostsession.h"

#include <chrono>

#include "config/appkind.h"
#include "config/isessionconfig.h"
#include "foundation/messagetable.h"
#include "foundation/percenttext.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/hostoptions.h"
#include "hosts/common/sessionreport.h"
#include "hosts/common/tell.h"
#include "hosts/common/terminalemulator.h"
#include "imports/connectconfig.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/modules.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"
#include "profile/vprofilekey.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

/// Exit codes of clients that did not end by themselves: the user wants no more of this.
constexpr int kEndedBySignal = 128;

/// Names the session, of perhaps a hundred, where the report does not.
VUnicodeString DescribeFault(const VUnicodeString& path, VReportMessageParams& report) {
    const bool isNamed = report.GetInsertCount() > 0 && path == report.GetInserts()[0];
    const VUnicodeString text = DescribeReport(report);
    return isNamed ? text : u"the session \""_v + path + u"\": " + text;
}

}  // namespace

HostSession MakeClientSession(const VUnicodeString& path, const VUnicodeString& protocol, const VUnicodeString& host,
                              const std::vector<std::string>& client) {
    return {path, protocol, host, {client, {}, {}}, false};
}

bool AddSession(const ISessionConfig& session, std::vector<HostSession>& sessions, VUnicodeString& fault) {
    HostSession added;
    added.path = session.GetPath();
    added.isStored = session.IsStored();
    VReportMessageParams report;
    if (!BuildLaunchCommand(session, added.command, report)) {
        fault = DescribeFault(added.path, report);
        return false;
    }
    const bool isTransfer = GetAppKind() == AppKind::kTessaly;
    if (isTransfer)
        session.GetTransferProtocolName(added.protocol);
    else
        session.GetProtocolName(added.protocol);
    const ConnectConfig* config = isTransfer ? session.GetTransferConnectConfig() : session.GetConnectConfig();
    if (config != nullptr) config->GetHostName(added.host);
    if (!added.isStored) added.path = added.host;
    sessions.push_back(std::move(added));
    return true;
}

bool AddSessionAt(const VUnicodeString& path, std::vector<HostSession>& sessions, VUnicodeString& fault) {
    const VRef<ISessionConfig> session = OpenSession(path);
    if (session) return AddSession(*session, sessions, fault);
    fault = u"the session \"" + path + (SessionKeyExists(path) ? u"\" is a folder"_v : u"\" does not exist"_v);
    return false;
}

bool AddSessionsIn(const VUnicodeString& folder, std::vector<HostSession>& sessions, VUnicodeString& fault) {
    const bool isRoot = folder.IsEmpty();
    if (!isRoot && (!SessionKeyExists(folder) || !IsFolderPath(folder))) {
        fault = u"there is no folder \"" + folder + u"\"";
        return false;
    }
    VStringArray paths;
    {
        VProfileStore store(true);
        const VUnicodeString keyPath = BuildSessionKeyPath(folder);
        VProfileKey key(store.GetRootKey(), keyPath.GetData(), 0);
        const auto collect = [](VProfileKey&, const VUnicodeString& path, const VUnicodeString&, void* found) {
            static_cast<VStringArray*>(found)->Add(path);
        };
        WalkSessions(key, folder, collect, &paths);
    }
    const std::size_t before = sessions.size();
    for (const VUnicodeString& path : paths) {
        if (!SessionHasProtocol(GetAppKind(), path)) continue;
        if (AddSessionAt(path, sessions, fault)) continue;
        sessions.resize(before);
        return false;
    }
    if (sessions.size() > before) return true;
    fault = u"no session in \"" + (isRoot ? u"\\"_v : folder) + u"\" is one that this program opens";
    return false;
}

bool HaveClients(const std::vector<HostSession>& sessions, VUnicodeString& fault) {
    for (const HostSession& session : sessions) {
        VReportMessageParams report;
        if (FindClient(session.command, report)) continue;
        fault = DescribeFault(session.path, report);
        return false;
    }
    return true;
}

bool TakeChosenSessions(std::vector<HostSession>& sessions, VUnicodeString& fault) {
    bool isUsable = GetConnectDialogSessionConfigCount() > 0;
    if (!isUsable) fault = u"no chosen session is one that this program opens"_v;
    for (unsigned i = 0; isUsable && i < GetConnectDialogSessionConfigCount(); ++i) {
        const VRef<ISessionConfig> session = VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(i));
        isUsable = AddSession(*session, sessions, fault);
    }
    CleanupConnectDialogSessionConfigs();
    isUsable = isUsable && HaveClients(sessions, fault);
    if (!isUsable) sessions.clear();
    return isUsable;
}

int RunHere(const HostKind& kind, const std::vector<HostSession>& sessions, SessionReport& told) {
    RunningSessionsHost host(kind.frameClass);
    if (host.GetError() != 0) {
        VReportMessageParams report(host.GetError());
        Tell(kind, u"other programs cannot learn which sessions are open here: " + DescribeReport(report));
    }
    int exitCode = 0;
    for (std::size_t i = 0; i < sessions.size(); ++i) {
        const LaunchCommand& command = sessions[i].command;
        VStringArray open;
        for (std::size_t rest = i; rest < sessions.size(); ++rest)
            if (sessions[rest].isStored) open.Add(sessions[rest].path);
        host.SetPaths(open);
        if (!command.note.empty()) Tell(kind, command.note);
        told.Open();
        if (!platform::RunAndWait(command.arguments, exitCode)) {
            told.Fail();
            // What could not be started cannot be become either, and is told in full then.
            VReportMessageParams report;
            BecomeClient(command, report);
            Tell(kind, DescribeReport(report));
            return 1;
        }
        if (exitCode >= kEndedBySignal || platform::WasAskedToEnd()) break;
    }
    told.End(exitCode);
    return exitCode;
}

bool FindHostTerminal(const HostRun& run, TerminalEmulator& terminal, VUnicodeString& fault) {
    const VRef<ReferenceGlobalConfig> global = FetchReferenceGlobalConfig();
    const bool mayName = run.isOwnStore && global;
    return TerminalEmulator::Find(mayName ? global->terminalCommand.Get() : VUnicodeString(), terminal, fault);
}

std::vector<std::string> MakeWindowCommand(const TerminalEmulator& terminal, bool isInTab, const std::string& storeUrl,
                                           const HostSession& session, const std::string& reportWord) {
    const std::vector<std::string> client = session.isStored ? std::vector<std::string>() : session.command.arguments;
    std::vector<std::string> words = MakeHostArguments(storeUrl, platform::ToNarrow(session.path), client);
    words.insert(words.begin(), {platform::ToNativePath(platform::GetExecutablePath()), "--wait"});
    if (!reportWord.empty()) words.insert(words.end(), {"--report", PercentEncode(reportWord)});
    return terminal.MakeCommand(words, isInTab);
}

bool StartWindow(const std::vector<std::string>& command, std::chrono::milliseconds patience, VUnicodeString& fault) {
    if (platform::StartProgram(command, patience)) return true;
    fault.Format(u"the terminal emulator %1 cannot open a window: %2", VUnicodeString(command.front().c_str()),
                 FindSystemMessage(platform::GetLastErrorCode()));
    return false;
}

bool OpenInWindows(const TerminalEmulator& terminal, bool isInTab, const std::string& storeUrl,
                   const std::vector<HostSession>& sessions, VUnicodeString& fault) {
    std::chrono::milliseconds patience = kWindowPatience;
    bool areOpen = true;
    for (const HostSession& session : sessions) {
        if (StartWindow(MakeWindowCommand(terminal, isInTab, storeUrl, session, {}), patience, fault))
            patience = {};
        else
            areOpen = false;
    }
    return areOpen;
}

}  // namespace connectdialog::hosts
