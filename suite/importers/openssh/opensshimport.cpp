#include "suite/importers/openssh/opensshimport.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/casefold.h"
#include "foundation/messagetable.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "platform/environment.h"
#include "platform/knownfolders.h"
#include "platform/paths.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "suite/configpanels/sessionname.h"
#include "suite/importers/openssh/importmessages.h"
#include "suite/importers/openssh/sshconfigfile.h"
#include "suite/importers/openssh/sshfiles.h"
#include "suite/importers/openssh/sshsession.h"
#include "suite/protocols/protocolconfig.h"

namespace connectdialog {

namespace {

constexpr char16_t kProtocol[] = u"SSH2";

/// The names of a folder's entries, folded.
std::unordered_set<std::u16string> ReadNames(const VUnicodeString& folder) {
    std::unordered_set<std::u16string> names;
    VProfileStore store(true);
    const VUnicodeString keyPath = BuildSessionKeyPath(folder);
    if (!store.GetRootKey()->KeyExists(keyPath.GetData())) return names;
    VProfileKey key(store.GetRootKey(), keyPath.GetData(), 0);
    VProfileKeyIterator children(key, false);
    VUnicodeString name;
    while (children.Next(name)) names.insert(FoldText(name));
    return names;
}

/// Whether `isFine` holds for the paths of a folder and of those round it, from the root's side; ends at the first for
/// which it does not.
template <class Predicate>
bool HoldsDownTo(const VUnicodeString& folder, Predicate isFine) {
    const std::u16string_view path = folder;
    for (std::size_t end = 0; !path.empty() && end != path.npos;) {
        end = path.find(u'\\', end);
        if (!isFine(VUnicodeString(path.substr(0, end)))) return false;
        if (end != path.npos) ++end;
    }
    return true;
}

/// Whether `folder` is there, or could be made: each of its names must be fit for one that is not there.
bool CheckFolder(const VUnicodeString& folder, VReportMessageParams& report) {
    return HoldsDownTo(folder, [&](const VUnicodeString& path) {
        const VUnicodeString name = GetEntryLeaf(path);
        const bool canBeThere = !name.IsEmpty() && !name.EqualsNoCase(kFolderDataKey);
        if (canBeThere && SessionKeyExists(path)) {
            return IsFolderPath(path) || report.Fail(kImportNoFolder, path.GetData());
        }
        const SessionNameFault fault = CheckSessionName(GetEntryParent(path), VUnicodeString(), name);
        if (fault == SessionNameFault::kNone) return true;
        report.Fail(kImportFolderName, path.GetData());
        report.AddInsert(DescribeSessionNameFault(fault, name).GetData());
        return false;
    });
}

bool MakeFolder(const VUnicodeString& folder) {
    return HoldsDownTo(folder, [](const VUnicodeString& path) {
        return SessionKeyExists(path) ||
               AddFolderEntry(GetEntryParent(path), GetEntryLeaf(path), VUnicodeString(), true);
    });
}

/// A host that may become a session.
struct Candidate {
    std::size_t entry;  ///< In the result.
    SshSession session;
};

/// One import: the hosts first, then the sessions, as often as needed.
class Import {
  public:
    Import(const SshImportRequest& request, SshImportResult& result) : request(request), result(result) {}

    void TakeHosts(const std::vector<SshHost>& hosts) {
        result.entries.reserve(hosts.size());
        candidates.reserve(hosts.size());
        for (const SshHost& host : hosts) TakeHost(host);
    }

    /// Tells what becomes of each host, and with `isWriting` does it. False when the store refuses.
    bool Go(bool isWriting);

  private:
    const SshImportRequest& request;
    SshImportResult& result;
    std::vector<Candidate> candidates;
    std::unordered_set<std::u16string> takenNames;  ///< Folded.
    bool hasSeveralIdentityFiles = false;
    std::vector<const Candidate*> newSessions;

    void Add(SshSeverity severity, const SshHost& host, const std::string& text) {
        result.diagnostics.Add(severity, host.file, host.line, QuoteForMessage(host.alias) + ": " + text);
    }

    void TakeHost(const SshHost& host);
    void NoteLosses(const SshHost& host, const std::string& problem);
    VUnicodeString PathFor(const SshHost& host);
    bool Update(const Candidate& candidate, bool isWriting);
    bool StoreNewSessions();
};

void Import::TakeHost(const SshHost& host) {
    SshImportEntry entry;
    entry.alias = host.alias;
    entry.file = host.file;
    entry.line = host.line;
    Candidate candidate{result.entries.size(), {}};
    std::string problem;
    if (MakeSshSession(host, candidate.session, problem)) {
        entry.path = PathFor(host);
        const SessionNameFault fault = CheckSessionNameText(GetEntryLeaf(entry.path));
        if (fault == SessionNameFault::kNone) {
            NoteLosses(host, problem);
            candidates.push_back(std::move(candidate));
        } else {
            entry.path.Empty();
            entry.text = "its name does not fit a session";
        }
    } else {
        entry.text = problem;
    }
    result.entries.push_back(std::move(entry));
}

void Import::NoteLosses(const SshHost& host, const std::string& problem) {
    if (!problem.empty()) Add(SshSeverity::kNote, host, problem);
    if (!host.proxyCommand.empty()) {
        Add(SshSeverity::kSkipped, host, "ProxyCommand is not taken over; the session connects without it");
    }
    if (host.identityFiles.size() > 1 && !std::exchange(hasSeveralIdentityFiles, true)) {
        Add(SshSeverity::kSkipped, host, "of several identity files the first is taken, for other hosts too");
    }
}

VUnicodeString Import::PathFor(const SshHost& host) {
    const std::u16string name = MakeSshSessionName(platform::ToWide(host.alias), request.folder.IsEmpty());
    std::u16string unique = name;
    for (int number = 2; !takenNames.insert(FoldText(unique)).second; ++number) {
        unique = name + u" (" + platform::ToWide(std::to_string(number)) + u")";
    }
    return JoinEntryPath(request.folder, VUnicodeString(unique));
}

bool Import::Go(bool isWriting) {
    const auto present = ReadNames(request.folder);
    for (const Candidate& candidate : candidates) {
        SshImportEntry& entry = result.entries[candidate.entry];
        entry.outcome = SshImportOutcome::kMade;
        entry.text.clear();
        if (present.contains(FoldText(GetEntryLeaf(entry.path)))) {
            if (!Update(candidate, isWriting)) return false;
        } else if (isWriting) {
            newSessions.push_back(&candidate);
        }
    }
    return StoreNewSessions();
}

bool Import::Update(const Candidate& candidate, bool isWriting) {
    SshImportEntry& entry = result.entries[candidate.entry];
    const VRef<ISessionConfig> session = OpenSession(entry.path);
    VUnicodeString protocol;
    if (session) session->GetProtocolName(protocol);
    auto* const config = protocol == kProtocol ? dynamic_cast<ProtocolConfig*>(session->GetConnectConfig()) : nullptr;
    if (config == nullptr) {
        entry.outcome = SshImportOutcome::kSkipped;
        entry.text = session ? "there is a session of that name with the protocol " +
                                   QuoteForMessage(platform::ToNarrow(protocol))
                             : "there is a folder of that name";
        return true;
    }
    for (const std::u16string_view name : ApplySshSession(candidate.session, *config))
        entry.text += (entry.text.empty() ? "" : ", ") + platform::ToNarrow(name);
    entry.outcome = entry.text.empty() ? SshImportOutcome::kLeftAlone : SshImportOutcome::kUpdated;
    return !isWriting || entry.text.empty() || SaveSession(*session);
}

/// All are one session: they differ in what the configuration tells and in nothing else.
bool Import::StoreNewSessions() {
    if (newSessions.empty()) return true;
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    session->SetProtocolName(kProtocol);
    const auto fill = [&](std::size_t index) {
        const Candidate& candidate = *newSessions[index];
        const VUnicodeString& path = result.entries[candidate.entry].path;
        session->SetName(GetEntryLeaf(path));
        session->SetPath(path);
        ApplySshSession(candidate.session, dynamic_cast<ProtocolConfig&>(*session->GetConnectConfig()));
        return true;
    };
    return MakeFolder(request.folder) && StoreSessionEntries(request.folder, *session, newSessions.size(), fill);
}

/// Does what Go told before, inside one unit of work. What another process changed meanwhile is told anew.
bool Write(Import& import, const VUnicodeString& folder, VReportMessageParams& report) {
    VProfileStore unit(false);
    bool hasPlace = true;
    const auto write = [&] {
        hasPlace = CheckFolder(folder, report);
        return hasPlace && import.Go(true);
    };
    if (RunAsUnit(unit, write)) return true;
    if (!hasPlace) return false;
    if (!TellsCause(*unit.GetLastReport())) return report.Fail(kImportRefused);
    report.Assign(unit.GetLastReport());
    return false;
}

}  // namespace

std::size_t SshImportResult::Count(SshImportOutcome outcome) const {
    return static_cast<std::size_t>(std::ranges::count(entries, outcome, &SshImportEntry::outcome));
}

bool ImportOpenSshConfig(ISshFiles& files, const SshImportRequest& request, SshImportResult& result,
                         VReportMessageParams& report) {
    RegisterMessageTable(GetFallbackMessageModule(), kImportMessages);
    result = {};
    if (!CheckFolder(request.folder, report)) return false;
    const SshConfig config = ReadSshConfig(files, request.file, request.user.home, result.diagnostics);
    if (!config.root) {
        report.Fail(kImportUnreadable, VUnicodeString(platform::ToWide(request.file)).GetData());
        report.AddInsert(result.diagnostics.All().back().text.c_str());
        result = {};
        return false;
    }
    Import import(request, result);
    import.TakeHosts(EvaluateSshConfig(config, request.user, result.diagnostics));
    import.Go(false);
    const bool hasWork = result.Count(SshImportOutcome::kMade) + result.Count(SshImportOutcome::kUpdated) != 0;
    if (request.isDryRun || !hasWork || Write(import, request.folder, report)) return true;
    result.entries.clear();
    return false;
}

SshUser GetCurrentSshUser() {
    SshUser user;
    user.home = platform::ToNativePath(platform::GetKnownFolder(platform::KnownFolder::kHome));
    while (user.home.ends_with('/')) user.home.pop_back();
    std::u16string name;
    if (platform::GetEnvironmentText(u"LOGNAME", name) || platform::GetEnvironmentText(u"USER", name)) {
        user.name = platform::ToNarrow(name);
    } else {
        user.name = user.home.substr(user.home.rfind('/') + 1);
    }
    return user;
}

}  // namespace connectdialog
