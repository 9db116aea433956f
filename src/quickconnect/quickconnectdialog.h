// The quick connect dialog: a protocol, that protocol's own page, and Connect.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "config/sessionconfig.h"
#include "imports/dialogkit/vdialog.h"
#include "imports/globalconfig.h"

namespace connectdialog {

/// The dialog's data: the working copy of a session, and what becomes of it.
class QuickConnectDialogBase : public VDialog, public IHostnameChanged {
  public:
    /// Begins with the last quick connect's settings, or with the Default session when there was none.
    /// Throws VArray's OutOfRange when no protocol was ever chosen and the protocol table is empty.
    QuickConnectDialogBase(const VUnicodeString& targetFolder, AppKind appKind, VWindow* parent);
    ~QuickConnectDialogBase() override;

    /// Runs the dialog. On kDialogAccepted its settings are those of the last quick connect, and saved when the user
    /// wants that; a store that refuses is told, and the connection goes on without.
    std::int64_t Run();

    /// The working copy; owned by the dialog.
    SessionConfig& GetConfig() const { return *config; }

    /// What quick connect begins with next; null: nothing yet. One for the process.
    static VRef<SessionConfig>& LastQuickConnectConfig();

  protected:
    /// The settings of the selected protocol on this application's side, or null.
    ConnectConfig* GetCurrentConfig() const;
    void SetNotToBeSaved(bool isNotToBeSaved);
    /// Run while the protocol of the row `oldRow` is still the active one: a default port of the old protocol shall not
    /// go over to the new one. Fires at most once.
    void ApplyPortRule(std::size_t oldRow, std::size_t newRow);
    VRef<GlobalConfig> Settings() const { return FetchGlobalConfig(static_cast<std::int32_t>(appKind)); }
    bool IsTabForced() const;

    AppKind appKind;
    std::unique_ptr<VPluginDialog> page;
    VUnicodeString protocolName;
    bool saveSession = false;
    bool openInTab = false;
    static constexpr int kNoRow = -1;
    int protocolIndex = kNoRow;  ///< a row of the protocol table

  private:
    void OpenWorkingConfig();
    void Accept();
    bool StoreSession();
    VUnicodeString MakeStorableName() const;

    VUnicodeString targetFolder;
    bool wasShown = false;
    VRef<SessionConfig> config;
    std::uint16_t initialPort = 0;
    bool isPortDefaultPending = true;
};

/// The same with its controls.
class QuickConnectDialog : public QuickConnectDialogBase {
  public:
    using QuickConnectDialogBase::QuickConnectDialogBase;

    /// Connect can be pressed exactly when the settings are complete.
    void OnHostnameChanged() override;

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    bool OnCommand(int command) override;
    void OnControlChanged(int id) override;
    void OnDestroy() override;

  private:
    void ListProtocols();
    void LayOut();
    void SelectChoice(int index);
    void ChangeProtocol();
    void ShowPageOf(std::size_t row);
    std::unique_ptr<VPluginDialog> MakePage(std::size_t row);

    VUnicodeString comboText;
    /// What the combo box offers. A position in it is taken for a row of the protocol table: rows of the application's
    /// own kind stand first there.
    std::vector<VUnicodeString> choices;
    int placeholder = kNoId;
    bool isChangingProtocol = false;
};

}  // namespace connectdialog
