#include "support/connectdialogtest.h"

#include "config/sessionconfig.h"
#include "imports/hostcallbacks.h"
#include "platform/codepage.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog::test {

namespace {

FakeOptions* currentOptions = nullptr;

std::int64_t RunFakeOptions(ISessionConfig* config, int pageMode, bool multiEdit, bool isNew, VWindow*) {
    currentOptions->calls += platform::ToNarrow(config->GetName()) + ' ' + std::to_string(pageMode) + ' ' +
                             (multiEdit ? '1' : '0') + ' ' + (isNew ? '1' : '0') + ';';
    if (!currentOptions->edit) return kDialogCancelled;
    currentOptions->edit(*config);
    return kDialogAccepted;
}

constexpr std::int32_t kZoneHeights[] = {1, 10, 19};

}  // namespace

std::string TestConnectDialog::GetEnabled() {
    std::string text;
    const auto add = [&](bool isEnabled, char letter) {
        if (isEnabled) text += letter;
    };
    add(canConnect && Window().IsEnabled(ConnectDialogIds::kConnect), 'C');
    add(canConnectOnBar, 'c');
    add(canEdit, 'P');
    add(canCut, 'X');
    add(canDelete, 'D');
    add(canPaste, 'V');
    return text;
}

void TestConnectDialog::EnableConnect(bool button, bool toolbarButton) {
    ConnectDialog::EnableConnect(button, toolbarButton);
    canConnect = button;
    canConnectOnBar = toolbarButton;
}

void TestConnectDialog::EnableEditButtons(bool properties, bool cutCopy, bool canDeleteNow) {
    ConnectDialog::EnableEditButtons(properties, cutCopy, canDeleteNow);
    canEdit = properties;
    canCut = cutCopy;
    canDelete = canDeleteNow;
}

bool TestConnectDialog::RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard) {
    if (wizardResult == 0) return false;
    config.SetName(u"by wizard"_v);
    result = wizardResult;
    useWizard = wizardWanted;
    return true;
}

std::int64_t TestConnectDialog::RunQuickConnect(VRef<ISessionConfig>& config, const VUnicodeString& folder) {
    quickConnectFolder = folder;
    if (quickConnectResult == kDialogAccepted)
        config = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"quick", nullptr));
    return quickConnectResult;
}

ConnectDialogTest::ConnectDialogTest() {
    currentOptions = &options;
    GetHostCallbacks() = {};
    GetHostCallbacks().applicationCommandLine = u"app"_v;
    GetHostCallbacks().sessionOptions = RunFakeOptions;
    panels.global->showTerminalSessions.Set(true);
    panels.global->showTransferSessions.Set(true);
    panels.global->rememberFolderExpansion.Set(true);
    panels.global->saveConfigOnClose.Set(true);
    panels.global->showDescriptions.Set(true);
}

ConnectDialogTest::~ConnectDialogTest() {
    dialog.reset();
    EXPECT_EQ(kit.TakeFaults(), "");
    EXPECT_FALSE(kit.ShowsWaitCursor());
    GetHostCallbacks() = {};
}

void ConnectDialogTest::AddSession(const char16_t* path, const char16_t* protocol, const char16_t* transfer,
                                   const char16_t* host) {
    WithKey(BuildSessionKeyPath(path).GetData(), [&](VProfileKey& key) {
        key.WriteDword(kIsSessionValue, 1);
        key.WriteString(u"Protocol Name", protocol);
        key.WriteString(u"Transfer Protocol Name", transfer);
        key.WriteString(u"SSH2 Host", host);
        key.WriteString(u"SFTP Host", host);
    });
}

void ConnectDialogTest::SetList(const char16_t* folder, const char16_t* value, const char16_t* list) {
    WithKey(BuildFolderDataKeyPath(folder).GetData(), [&](VProfileKey& key) { key.WriteString(value, list); });
}

void ConnectDialogTest::Open(const ConnectDialogOptions& dialogOptions) {
    dialog.reset();
    dialog = std::make_unique<TestConnectDialog>(dialogOptions);
    ASSERT_TRUE(dialog->Create());
}

TreeItem ConnectDialogTest::At(std::u16string_view path) {
    const TreeItem item = FindItemByPath(dialog->Items(), path);
    EXPECT_NE(item, TreeItem::kNone) << Escape(path);
    return item;
}

void ConnectDialogTest::Reveal(std::u16string_view path) {
    if (path.empty()) return;
    const std::size_t cut = path.rfind(u'\\');
    Expand(path.substr(0, cut == path.npos ? 0 : cut));
}

void ConnectDialogTest::Expand(std::u16string_view path) {
    Reveal(path);
    const bool isOpen = dialog->Items().HasState(At(path), kTreeExpanded);
    EXPECT_TRUE(isOpen || Tree().ClickExpander(At(path))) << Escape(path);
}

void ConnectDialogTest::Click(std::u16string_view path, KeyModifiers modifiers) {
    Reveal(path);
    EXPECT_TRUE(Tree().Click(At(path), modifiers)) << Escape(path);
}

void ConnectDialogTest::Click(std::initializer_list<std::u16string_view> paths) {
    for (const std::u16string_view& path : paths) Click(path, &path == paths.begin() ? 0 : Accelerator::kControl);
}

void ConnectDialogTest::Delete(int answer) {
    kit.ExpectBox(u"确定删除选中项？"_v, answer);
    Command(ConnectCommands::kDelete);
}

void ConnectDialogTest::Find(const char16_t* text, std::string_view places, int command) {
    kit.ExpectDialog(FindSessionIds::kDialog, [=](HeadlessDialog& find) {
        using namespace FindSessionIds;
        const std::pair<int, char> boxes[] = {
            {kSessionNames, 's'}, {kFolderNames, 'f'}, {kDescriptions, 'd'}, {kHostnames, 'h'}, {kMatchCase, 'c'}};
        for (const auto& [id, letter] : boxes) find.Tick(id, places.find(letter) != places.npos);
        find.Type(kText, text);
        EXPECT_TRUE(find.Press(kIdOk));
    });
    Command(command);
}

int ConnectDialogTest::DelayOf(const VUnicodeString& path) {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(path).GetData(), 0);
    std::uint32_t delay = 0;
    return key.ReadDword(u"Line Send Delay", delay) ? static_cast<int>(delay) : -1;
}

void ConnectDialogTest::SetDelay(ISessionConfig& config, int delay) {
    dynamic_cast<VProfile<int>&>(*config.FindValue(u"Line Send Delay")).Set(delay);
}

VUnicodeString ConnectDialogTest::HostOf(const char16_t* path) {
    VUnicodeString host;
    if (const VRef<ISessionConfig> config = OpenSession(path)) config->GetConnectConfig()->GetHostName(host);
    return host;
}

void ConnectDialogTest::Rename(std::u16string_view path, const VUnicodeString& name) {
    Click(path);
    Command(ConnectCommands::kRename);
    EXPECT_TRUE(Tree().TypeLabel(name));
}

void ConnectDialogTest::CopyTo(std::u16string_view source, std::u16string_view target, bool isCut) {
    Click(source);
    Command(isCut ? ConnectCommands::kCut : ConnectCommands::kCopy);
    Click(target);
    Command(ConnectCommands::kPaste);
}

bool ConnectDialogTest::DragTo(std::u16string_view source, std::u16string_view target, int zone,
                               KeyModifiers modifiers) {
    bool isDropped = false;
    Reveal(source);
    Reveal(target);
    Tree().Drag(At(source), [&](HeadlessDrag& drag) {
        // Over something else first: a drag that never left its item has not begun to mean anything.
        drag.MoveTo(Tree().PointOn(At(u"")), modifiers);
        drag.MoveTo(Tree().PointOn(At(target), kZoneHeights[zone]), modifiers);
        isDropped = drag.Drop();
    });
    return isDropped;
}

std::string ConnectDialogTest::StoredIn(const char16_t* folder) {
    const ProfileFolderData data(folder, true);
    std::string text;
    for (const VUnicodeString& name : data.GetShownFolders()) text += platform::ToNarrow(name) + "/ ";
    for (const VUnicodeString& name : data.GetShownSessions())
        if (*folder != 0 || name != kDefaultSession) text += platform::ToNarrow(name) + ' ';
    if (!text.empty()) text.pop_back();
    return text;
}

std::string ConnectDialogTest::Selected() {
    std::string text;
    for (TreeItem item = dialog->Items().GetFirstChild(TreeItem::kNone); item != TreeItem::kNone;
         item = dialog->Items().GetNextVisible(item)) {
        if (dialog->Items().HasState(item, kTreeSelected))
            text += (text.empty() ? "" : " ") + platform::ToNarrow(dialog->Items().GetText(item));
    }
    return text;
}

}  // namespace connectdialog::test
