#include "support/fakesuite.h"

#include "config/sessiondbhooks.h"
#include "foundation/istring.h"
#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/appname.h"
#include "sessiondb/sessionpaths.h"
#include "stores/openstore.h"
#include "suite/configpanels/sessionname.h"

namespace connectdialog::test {

namespace {
VProfileStoreFactory* currentFactory = nullptr;
}  // namespace

FakeGlobalConfig::FakeGlobalConfig() {
    configUpgradeMarker.Load(nullptr, u"Config Upgrade Marker"_v, VUnicodeString());
    sessionArrangementMode.Load(nullptr, u"Session Arrangement Mode"_v, 0);
    hideDotEntries.Load(nullptr, u"Hide Dot Entries"_v, false);
    lineSendDelay.Load(nullptr, u"Line Send Delay"_v, 7);
    characterSendDelay.Load(nullptr, u"Character Send Delay"_v, 3);
    maximumCols.Load(nullptr, u"Maximum Cols"_v, 200);
    maximumScrollback.Load(nullptr, u"Maximum Scrollback"_v, 10000);
    VWindowPlacement placement;
    placement.normal = {1, 2, 3, 4};
    remoteFramePlacement.Load(nullptr, u"RemoteFrame Window Placement"_v, placement);
    remoteExplorerFrameState.Load(nullptr, u"Remote ExplorerFrame State"_v, u"0,10,20");
    remoteListViewState.Load(nullptr, u"Remote ListView State"_v, u"0,2,3,0,1,100,1,0");
    remoteTabState.Load(nullptr, u"Tessaly Remote Tab State"_v, u"0,30,40");
}

FakeProtocol::FakeProtocol(VProfileKey* key, const ConnectProtocolTableElement& row) {
    host.Load(key, row.name + u" Host", VUnicodeString());
}

void FakeProtocol::ImportShared(const SharedSettings& settings) {
    if (const VUnicodeString* shared = settings.Find(u"host"_v)) host.Set(*shared);
}

bool FakeProtocol::IsComplete(std::uint32_t& state) const {
    if (host.Get().IsEmpty()) state = kHostNameMissing;
    return !host.Get().IsEmpty();
}

ConnectProtocolTableElement MakeRow(AppKind kind, const char16_t* name, bool hasConfig) {
    ConnectProtocolTableElement row;
    row.name = name;
    row.kind = kind;
    if (hasConfig)
        row.createConfig = [](VProfileKey* key, ICommonConfig*, const ConnectProtocolTableElement& element) {
            return static_cast<ConnectConfig*>(new FakeProtocol(key, element));
        };
    return row;
}

bool FakeConfigPanels::GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t) {
    if (!global) return false;
    config = VRef<GlobalConfig>::Share(global.Get());
    return true;
}

bool FakeConfigPanels::ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName,
                                           const VUnicodeString& newName, bool isNew, VWindow*) {
    const VUnicodeString currentName = isNew ? VUnicodeString() : oldName;
    if (CheckSessionName(isNew ? path : GetEntryParent(path), currentName, newName) == SessionNameFault::kNone)
        return true;
    refusedNames.push_back(newName);
    return false;
}

bool FakeConfigPanels::Ask(IString* answer, bool& save) {
    save = promptSaves;
    if (promptAnswer != nullptr) answer->Assign(promptAnswer, Str::SensitiveState::kPlain);
    return promptAnswer != nullptr;
}

void FakeConfigPanels::ConfigPanelsInitGUI(PickSessionsFunction pickSessions, SessionImageListFunction) {
    ++initCalls;
    pick = pickSessions;
}

LibraryTest::LibraryTest() {
    VReportMessageParams report;
    factory = stores::OpenProfileStoreFactory(u"memory:", report);
    currentFactory = factory.get();
    SetProfileFactoryGetter([] { return currentFactory; });
    InstallConfigPanels(&panels);
    SetAppName(u"NorHalden");
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"SSH2"));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Telnet"));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"TAPI"));
    panels.table.Add(MakeRow(AppKind::kNorHalden, u"Serial"));
    panels.table.Add(MakeRow(AppKind::kTessaly, u"SFTP"));
    panels.table.Add(MakeRow(AppKind::kTessaly, u"FTP"));
}

LibraryTest::~LibraryTest() {
    InstallConfigPanels(nullptr);
    InstallSessionDbHooks(nullptr);
    SetProfileFactoryGetter(nullptr);
}

void LibraryTest::UseStore(VProfileStoreFactory& store) {
    currentFactory = &store;
}

void LibraryTest::MakeSession(const char16_t* sessionPath) {
    WithKey(BuildSessionKeyPath(sessionPath).GetData(), [](VProfileKey& key) { key.WriteDword(kIsSessionValue, 1); });
}

void LibraryTest::MakeFolder(const char16_t* sessionPath) {
    WithKey(u"", [&](VProfileKey& root) { VProfileKey(&root, BuildSessionKeyPath(sessionPath).GetData(), 1); });
}

VUnicodeString LibraryTest::TextAt(const VUnicodeString& keyPath, const char16_t* name) {
    VUnicodeString text = u"(none)";
    WithKey(keyPath.GetData(), [&](VProfileKey& key) { key.ReadString(name, text); });
    return text;
}

}  // namespace connectdialog::test
