// The suite's answer to what the library asks of its configuration neighbour.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "imports/configpanels.h"
#include "suite/configpanels/referenceglobalconfig.h"

namespace connectdialog {

/// One for the process (see suite/hostsetup/hostsetup.h). The global settings are one record for all applications, read
/// at first use. Which of the suite's programs are installed is looked up each time it is asked: beside the running
/// program and in PATH.
class ReferenceConfigPanels : public IConfigPanels {
  public:
    bool GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t kind) override;
    /// The next use reads the settings anew: for another process's message that they changed, and for another store.
    /// Whoever holds the old record keeps it.
    void ReloadGlobalConfig() { global = nullptr; }

    /// The suite has no dialogs that would call back.
    void ConfigPanelsInitGUI(PickSessionsFunction, SessionImageListFunction) override {}
    const ConnectProtocolTable& GetConnectProtocolTable() override;
    AppKind GetCurrentAppProductID() override;
    bool IsIntegrated() override;
    bool IsNorHaldenInstalled() override;
    bool IsNorHaldenOrHaldenInstalled() override;
    bool IsTessalyInstalled() override;
    /// The clients of this suite have no such emulation.
    bool HasKeldaEmulation() override { return false; }
    /// By CheckSessionName. A refusal is told in the words of TranslateSessionNameFault when there is a parent.
    bool ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName, const VUnicodeString& newName,
                             bool isNew, VWindow* parent) override;
    /// Start norhalden or tessaly with the words of ReadLaunchCommand, and tell in a box when it cannot be started;
    /// what it cannot open it tells itself.
    void LaunchTerminalApp(VWindow* parent, const char16_t* commandLine) override;
    void LaunchFileTransferApp(VWindow* parent, const char16_t* commandLine) override;
    /// A `suppress` of the global settings that the box changed is written to the store at once, whether or not the
    /// other settings ever are.
    int ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                               VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion, int picture,
                               unsigned helpId) override;
    char16_t GetApplicationTrademarkSymbol(const VUnicodeString&) override { return u'\u00AE'; }
    bool LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable* parent) override;
    bool LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable* parent) override;

  private:
    static void LaunchSister(VWindow* parent, const char* name, std::u16string_view commandLine);

    VRef<ReferenceGlobalConfig> global;
};

/// The path of a program of the suite; the empty string when it is not installed. `name` is the file's name.
std::string FindSuiteProgram(const char* name);

/// Starts it with these arguments, which are UTF-8; it goes on by itself. What it cannot do it tells itself; that it
/// cannot be started is told in a box over `parent`, which may be null.
void StartSuiteProgram(VWindow* parent, const char* name, std::vector<std::string> words);

/// Takes a launch command apart: `%1 /S "%2"`, where %1 is the application's command line and %2 a session's path. The
/// words of the first are told by SplitCommandLine; the path is everything between the first quote behind them and the
/// last, so that no name can end it early. `words` is UTF-8.
/// On failure: false, for what is no such command.
bool ReadLaunchCommand(std::u16string_view line, std::vector<std::string>& words);

}  // namespace connectdialog
