// The main window of a host: what was opened in this run, and the way to all that the host does.
//
// What the user can choose there is a command of hosts/common/hostcommands.h, or another number that menus bring:
// OnFrameCommand looks it up in a table. Menus, bars and keys are those of hosts/common/mainmenus.h.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/common/hostrun.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/openedsessions.h"
#include "imports/dialogkit/iframewindow.h"

namespace connectdialog {
class ISessionConfig;
class VIcon;
}  // namespace connectdialog

namespace connectdialog::hosts {

class TerminalEmulator;

/// Requires: the store is open, and the dialogs' back end is installed, as long as it lives.
class MainWindow : private IFrameEvents {
  public:
    explicit MainWindow(const HostRun& run) : run(run), opened(run) {}
    ~MainWindow() override;

    /// Makes the window, where it stood last. On failure: false, and nothing else may be called.
    bool Create(const VIcon* icon);
    /// Shows the window until it is closed; calls `begin` once it shows.
    void Run(std::function<void()> begin);

    // What the commands do. Each ends with its dialogs, over this window.

    /// Lets the user choose sessions, and opens them.
    void ShowConnect();
    /// Lets the user fill in a connection, and opens it.
    void AskQuickConnect();
    /// The wizard; the new session is selected in the connect dialog then.
    void CreateSession();
    /// The same, and what to find there is asked first.
    void Find();
    /// Those of the Default session, with which new ones begin.
    void ShowOptions();
    void ShowProperties();
    void OpenAgain();
    void RemoveSelected();
    void RemoveEnded();
    void ShowHelp();
    void Exit();

    /// Opens the session at a path in a window, or in a tab where that is wanted and possible. What fails is told.
    void OpenAt(const VUnicodeString& path, bool isInTab);
    bool IsEnabled(int command) const;
    /// For dialogs to stand over.
    IFrameWindow& GetWindow() { return *window; }
    const OpenedSessions& GetSessions() const { return opened; }
    void SetStatus(const VUnicodeString& text) { window->SetStatus(text); }

  private:
    void OnFrameCommand(int command) override;
    void OnRowActivated(std::size_t row) override;
    void OnListMenu(VPoint point) override;
    void OnSelectionChanged() override { ShowEnabled(); }
    bool OnFrameClose() override;
    void OnFrameWoken() override;

    /// On failure: false, and `fault` tells why; else the windows are being opened.
    bool Open(const std::vector<HostSession>& sessions, bool isInTab, VUnicodeString& fault);
    void LetUserChoose(bool isToFind);
    bool OpenConfig(const ISessionConfig& config, VUnicodeString& fault);
    void OpenRowAgain(std::size_t row);
    void ShowFault(const VUnicodeString& fault);
    void ShowRows();
    /// Hands the menus over anew where another command can be chosen now.
    void ShowEnabled();
    void SavePlacement();

    const HostRun& run;
    std::unique_ptr<IFrameWindow> window;
    OpenedSessions opened;  // wakes the window, so it goes earlier
    std::function<void()> begin;
    std::vector<bool> enabled;
};

}  // namespace connectdialog::hosts
