// Asks for the host of a session that was saved without one.
#pragma once

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

class ConnectConfig;
class IString;

class HostnamePromptDialog : public VPluginDialog {
  public:
    /// `sessionName` may be empty.
    HostnamePromptDialog(const VUnicodeString& sessionName, VWindow* parent);

    /// What the user typed; empty when there was nothing.
    VUnicodeString GetHostname() const { return hostname; }

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    void OnControlChanged(int id) override;

  private:
    VUnicodeString sessionNameText;
    VUnicodeString hostname;
};

/// Asks when nothing but the host name is missing, and puts the answer into the settings; `wasAsked` tells whether it
/// did both. False only when the user cancelled, and then the settings stay.
bool FillInHostname(ConnectConfig& config, const VUnicodeString& sessionName, VWindow* parent, bool& wasAsked);
/// The same over no window, where nobody wants to know. `sessionName` may be null.
bool UpdateHostnameForConfig(ConnectConfig* config, const char16_t* sessionName);

/// Asks for the host of the session called `sessionName` (may be null). Gives the dialog's result; on kDialogAccepted
/// `hostname` is the answer, else it stays.
std::int64_t LaunchHostnamePromptDialog(const char16_t* sessionName, IString* hostname, VWindow* parent);

}  // namespace connectdialog
