// What the library asks of its neighbour that holds the global settings and knows the installed products.
//
// The functions keep their names and forward to the implementation that was installed; tests install one of their own.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"
#include "imports/connectprotocoltable.h"
#include "imports/globalconfig.h"

namespace connectdialog {

class IParentable;
class IString;
class VImageList;
class VWindow;

/// Lets the user pick sessions: ShowConnectDialogMultiSelectBrowseMode.
using PickSessionsFunction = std::int64_t (*)(const char16_t* title, VArray<VUnicodeString>& paths, VWindow* parent);
/// Makes the image list of the session tree; the caller owns it.
using SessionImageListFunction = VImageList* (*)();

/// The neighbour itself.
class IConfigPanels {
  public:
    virtual ~IConfigPanels() = default;

    /// The global settings for an application kind (-1: the running one). False when there are none, and then `config`
    /// stays.
    virtual bool GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t kind) = 0;
    /// Told once by the library at its start. Either may be null.
    virtual void ConfigPanelsInitGUI(PickSessionsFunction pick, SessionImageListFunction images) = 0;
    /// Requires: the table never changes and outlives every session.
    virtual const ConnectProtocolTable& GetConnectProtocolTable() = 0;
    /// The kind of the running application.
    virtual AppKind GetCurrentAppProductID() = 0;
    /// Whether the terminal and the transfer application work as a pair.
    virtual bool IsIntegrated() = 0;
    virtual bool IsNorHaldenInstalled() = 0;
    virtual bool IsNorHaldenOrHaldenInstalled() = 0;
    virtual bool IsTessalyInstalled() = 0;
    /// Whether the terminal of this installation has the Kelda emulation.
    virtual bool HasKeldaEmulation() = 0;
    /// Whether `newName` may be the name of the entry at `path`, whose name is `oldName`; of a session that `isNew` and
    /// in no store yet, `path` is the folder where it will stand, and `oldName` the name that was offered for it.
    /// Refuses names that the store cannot hold and names that exist in the folder, with a message of its own over
    /// `parent` when that is not null.
    virtual bool ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName,
                                     const VUnicodeString& newName, bool isNew, VWindow* parent) = 0;
    /// Starts the sister application of that side with the command line, which names a session. What fails is told by
    /// the neighbour.
    virtual void LaunchTerminalApp(VWindow* parent, const char16_t* commandLine) = 0;
    virtual void LaunchFileTransferApp(VWindow* parent, const char16_t* commandLine) = 0;
    /// Shows a text with a check box that asks for no such box any more, and waits. The box writes `suppress`: 1 when
    /// it was answered with the check box ticked. `checkText` empty stands for the neighbour's own words, `buttonText`
    /// is that of the button for 1. With `isQuestion` the other button says No and not Cancel. `picture` is 1 for a
    /// notice, 2 for a question; `helpId` is the all-ones number for none. Gives 1 for the positive answer.
    virtual int ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                                       VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion,
                                       int picture, unsigned helpId) = 0;
    /// The sign behind an application's name where it is named as a product.
    virtual char16_t GetApplicationTrademarkSymbol(const VUnicodeString& appName) = 0;
    /// Asks the user for the user name or the password that a firewall wants, and whether to save it. False when the
    /// user gave up; `answer` is empty then. `parent` may be null.
    virtual bool LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable* parent) = 0;
    virtual bool LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable* parent) = 0;
};

/// Installs the neighbour, which stays the caller's; null removes it. Requires: installed before a function below is
/// called.
void InstallConfigPanels(IConfigPanels* panels);

bool GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t kind);
void ConfigPanelsInitGUI(PickSessionsFunction pick, SessionImageListFunction images);
const ConnectProtocolTable& GetConnectProtocolTable();
AppKind GetCurrentAppProductID();
bool IsIntegrated();
bool IsNorHaldenInstalled();
bool IsNorHaldenOrHaldenInstalled();
bool IsTessalyInstalled();
bool HasKeldaEmulation();
bool ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName, const VUnicodeString& newName,
                         bool isNew, VWindow* parent);
void LaunchTerminalApp(VWindow* parent, const char16_t* commandLine);
void LaunchFileTransferApp(VWindow* parent, const char16_t* commandLine);
int ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                           VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion, int picture,
                           unsigned helpId);
char16_t GetApplicationTrademarkSymbol(const VUnicodeString& appName);
bool LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable* parent);
bool LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable* parent);

}  // namespace connectdialog
