// The main window of a host: what was opened in this run, and the way to all that the host does.
//
// What the user can choose there is a command of hosts/common/hostcommands.h, or another number that menus bring:
// OnFrameCommand looks it up in a table. Menus, bars and keys are those of hosts/common/hostmenus.h, and the user's
// buttons those of hosts/common/hostbuttons.h.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/common/hostbuttons.h"
#include "hosts/common/hostmenus.h"
#include "hosts/common/hostrun.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/openedsessions.h"
#include "imports/dialogkit/iframewindow.h"

namespace connectdialog {
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

    /// Lets the user choose sessions, and opens them.
    void ShowConnect();
    /// Lets the user fill in a connection, and opens it.
    void AskQuickConnect();
    /// Opens the session at a path, which may begin with `\` and be in any case, in a window, or in a tab where that is
    /// wanted and possible; in a row that is over where one is given, else in a row of its own. A host that it has not
    /// is asked for and kept. One that only the sister application can open is opened there. What fails is told.
    void OpenAt(const VUnicodeString& path, bool isInTab, std::optional<std::size_t> row = {});
    /// Opens the rows that are selected and over once more.
    void OpenAgain();
    /// Ends Run.
    void Exit();
    /// Whether the user can choose the command now.
    bool IsEnabled(int command) const;
    /// For dialogs to stand over.
    IFrameWindow& GetWindow() { return *window; }

  private:
    /// What a command does. Each ends with its dialogs, over this window.
    struct CommandRow {
        int command;
        void (MainWindow::*act)();
    };
    static const CommandRow kCommands[];

    /// As ShowConnect, and what to find there is asked first.
    void Find();
    /// The wizard; the new session is selected in the connect dialog then.
    void CreateSession();
    /// Those of the Default session, with which new ones begin.
    void ShowOptions();
    void ShowProperties();
    void RemoveSelected();
    void RemoveEnded();
    void ShowHelp();
    void ToggleToolbar();
    void ToggleButtonBar();
    void EditButtons();

    void OnFrameCommand(int command) override;
    void OnRowActivated(std::size_t row) override;
    void OnListMenu(VPoint point) override;
    void OnSelectionChanged() override { ShowEnabled(); }
    bool OnFrameClose() override;
    void OnFrameWoken() override;

    /// Opens sessions in rows at the end, or one in a row that is over. On failure: false, and `fault` tells why; else
    /// the windows are being opened.
    bool Open(const std::vector<HostSession>& sessions, bool isInTab, VUnicodeString& fault,
              std::optional<std::size_t> row = {});
    void LetUserChoose(bool isToFind);
    /// Asks for the host that a saved session has not, and keeps it. False when the user gave up, or it cannot be kept.
    bool AskMissingHost(ISessionConfig& session);
    /// Has the sister application open the session where only that one can. False when it need not, or is not there.
    bool OpenInSister(const ISessionConfig& session, const VUnicodeString& path);
    void OpenRowAgain(std::size_t row);
    void ShowFault(const VUnicodeString& fault);
    void ShowRows();
    /// Hands menus and buttons over anew where another command can be chosen now, or another bar is wanted.
    void ShowEnabled();
    void ShowMenus();
    /// Reads the button bar that the selection asks for, where that is another one or `again` is set.
    void ShowButtons(bool again);
    void SavePlacement();

    /// Whether the command is one of the window's.
    static bool IsOwnCommand(int command);
    /// Whether the command is a function with an argument, or a button.
    bool DoesFunction(int command) const;
    /// A command that is none of the window's. What it cannot do is told.
    void DoFunction(int command);
    void PressButton(const UserButton& button);
    void PressFunction(std::uint32_t function);
    void SaveButtons(UserButtonBar& edited);

    const HostRun& run;
    std::unique_ptr<IFrameWindow> window;
    OpenedSessions opened;  // wakes the window, so it goes earlier
    std::function<void()> begin;
    std::vector<bool> enabled;
    HostMenus menus;
    HostButtons buttons;
    VUnicodeString buttonsPath;  ///< of the session whose bar is shown
    VUnicodeString notice;       ///< what was wrong with the menus, until it is told
};

}  // namespace connectdialog::hosts
