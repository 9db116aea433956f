// The connect dialog over an empty memory store, with a user who acts on it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "connectdialog/ui/connectdialog.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "support/fakesuite.h"

namespace connectdialog::test {

/// The dialog with its neighbours replaced and its inside open to tests.
class TestConnectDialog : public ConnectDialog {
  public:
    explicit TestConnectDialog(const ConnectDialogOptions& options) : ConnectDialog(u"Title"_v, options, nullptr) {}
    ~TestConnectDialog() override { Destroy(); }

    HeadlessDialog& Window() { return dynamic_cast<HeadlessDialog&>(*GetWindow()); }
    HeadlessTree& Tree() { return *Window().GetTree(ConnectDialogIds::kTree); }
    VTreeItems& Items() { return GetTree().GetItems(); }
    SessionItemData& DataOf(TreeItem item) { return *GetItemData(item); }
    bool CanConnect(bool transferSide) {
        return CanConnectSide(CollectSelection(Collect::kSelectedItems), transferSide);
    }

    /// What is enabled: "C" connect, "c" connect on the toolbar, "P" properties, "X" cut and copy, "D" delete, "V"
    /// paste.
    std::string GetEnabled();

    RunningSessions running;
    /// What the wizard answers; 0: there is no wizard.
    std::int64_t wizardResult = 0;
    bool wizardWanted = true;
    std::int64_t quickConnectResult = kDialogCancelled;
    VUnicodeString quickConnectFolder;
    std::vector<VUnicodeString> shortcuts;  ///< arguments, "|", label
    bool makesShortcuts = true;

  protected:
    void EnableConnect(bool button, bool toolbarButton) override;
    void EnableEditButtons(bool properties, bool cutCopy, bool canDelete) override;
    void PostPasteAvailable(bool isAvailable) override {
        ConnectDialog::PostPasteAvailable(isAvailable);
        canPaste = isAvailable;
    }
    RunningSessions AskRunningSessions() override { return running; }
    bool MakeShortcut(const VUnicodeString& arguments, const VUnicodeString& label) override {
        shortcuts.push_back(arguments + u"|" + label);
        return makesShortcuts;
    }
    bool RunNewSessionWizard(ISessionConfig& config, std::int64_t& result, bool& useWizard) override;
    std::int64_t RunQuickConnect(VRef<ISessionConfig>& config, const VUnicodeString& folder) override;

  private:
    bool canConnect = false;
    bool canConnectOnBar = false;
    bool canEdit = false;
    bool canCut = false;
    bool canDelete = false;
    bool canPaste = false;
};

/// What the host's options dialog does in a test.
struct FakeOptions {
    /// Edits the session; null: the user gives up.
    std::function<void(ISessionConfig& config)> edit;
    std::string calls;  ///< "name mode multi new;" of each call
};

class ConnectDialogTest : public LibraryTest {
  protected:
    ConnectDialogTest();
    ~ConnectDialogTest() override;

    /// A session with a host name for the terminal side; with `transfer` for the transfer side too or alone.
    static void AddSession(const char16_t* path, const char16_t* protocol = u"SSH2", const char16_t* transfer = u"",
                           const char16_t* host = u"host");
    static void AddSessions(std::initializer_list<const char16_t*> paths) {
        for (const char16_t* path : paths) AddSession(path);
    }
    static void SetList(const char16_t* folder, const char16_t* value, const char16_t* list);

    /// Opens the dialog afresh.
    void Open(const ConnectDialogOptions& options = {});
    void Arrange(SessionArrangement value) { panels.global->sessionArrangementMode.Set(static_cast<int>(value)); }

    HeadlessTree& Tree() { return dialog->Tree(); }
    HeadlessDialog& Window() { return dialog->Window(); }
    /// An item that must be there.
    TreeItem At(std::u16string_view path);
    /// Opens the folders above it first, as the user has to.
    void Reveal(std::u16string_view path);
    void Click(std::u16string_view path, KeyModifiers modifiers = 0);
    void Click(std::initializer_list<std::u16string_view> paths);
    void Expand(std::u16string_view path);
    void Command(int command) { EXPECT_TRUE(Window().Choose(command)); }
    void Rename(std::u16string_view path, const VUnicodeString& name);
    void Delete(int answer = kAnswerYes);
    /// Asks for a text in these places: letters of "sfdhc", c for the case.
    void Find(const char16_t* text, std::string_view places, int command = ConnectCommands::kFind);
    static int DelayOf(const VUnicodeString& path);
    static void SetDelay(ISessionConfig& config, int delay);
    static VUnicodeString HostOf(const char16_t* path);
    void CopyTo(std::u16string_view source, std::u16string_view target, bool isCut);
    /// Drags an item to a place of a row: 0 its upper edge, 1 its middle, 2 its lower edge.
    bool DragTo(std::u16string_view source, std::u16string_view target, int zone = 1, KeyModifiers modifiers = 0);
    /// The folder as the store shows it: its folders and then its sessions, in order, "a/ b/ s t"; without the template
    /// of new sessions.
    static std::string StoredIn(const char16_t* folder);
    /// All selected paths, in tree order.
    std::string Selected();

    HeadlessDialogKit kit;
    FakeOptions options;
    std::unique_ptr<TestConnectDialog> dialog;
};

}  // namespace connectdialog::test
