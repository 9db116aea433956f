// The pages of the new session wizard that the library brings: which protocols, and what the session is called.
#pragma once

#include <string_view>
#include <vector>

#include "wizard/newsessionwizardpage.h"

namespace connectdialog {

/// A page with the combo box of protocols and what its three kinds share.
class NewSessionWizardProtocolPage : public NewSessionWizardPage {
  protected:
    using NewSessionWizardPage::NewSessionWizardPage;

    /// Offers the protocols and selects that of `protocolText`, or the first; then that is the text.
    void OfferProtocols(std::vector<VUnicodeString> names);
    /// Rows of the kind, "None" included unless `withNone` is not set.
    static std::vector<VUnicodeString> ListRows(AppKind kind, bool withNone);
    /// Tells what went wrong when the page of TAPI was made, if that is chosen. A position in the combo box is taken
    /// for a row of the protocol table. `row` becomes it, or -1 when nothing is chosen. False when there was something
    /// to tell. Throws VArray's OutOfRange for a position behind the table.
    bool CheckChosenRow(int& row);
    /// The number of the page behind the choice of that protocol. Tells it when there should be one and is none.
    std::int64_t GoOnWith(const VUnicodeString& protocolName);

    VUnicodeString protocolText;

  private:
    std::vector<VUnicodeString> choices;
};

/// A first page, where the user may decline the wizard.
class NewSessionWizardFirstPage : public NewSessionWizardProtocolPage {
  public:
    void OnSetActive() override { FitButtons(); }

  protected:
    using NewSessionWizardProtocolPage::NewSessionWizardProtocolPage;
    void DoDataExchange(VDataExchange& exchange) override;
    bool OnCommand(int command) override;
    virtual void StoreProtocol() = 0;

    bool declinesWizard = false;

  private:
    void FitButtons();
};

/// Where one application is installed.
class NewSessionWizardProtocolSinglePage : public NewSessionWizardFirstPage {
  public:
    NewSessionWizardProtocolSinglePage(ISessionConfig* config, int applicationKind);
    std::int64_t OnWizardNext() override;

  protected:
    void OnInitDialog() override;
    void OnControlChanged(int id) override;
    void StoreProtocol() override { GetConfig().SetActiveProtocolName(protocolText); }

  private:
    int applicationKind;
};

/// The terminal side where both applications are there.
class NewSessionWizardTerminalPage : public NewSessionWizardFirstPage {
  public:
    explicit NewSessionWizardTerminalPage(ISessionConfig* config);
    std::int64_t OnWizardNext() override;

  protected:
    void OnInitDialog() override;
    void OnControlChanged(int id) override;
    void StoreProtocol() override { GetConfig().SetProtocolName(protocolText); }
};

/// The transfer side.
class NewSessionWizardTransferPage : public NewSessionWizardProtocolPage {
  public:
    explicit NewSessionWizardTransferPage(ISessionConfig* config);
    void OnSetActive() override;
    std::int64_t OnWizardNext() override;

  protected:
    void DoDataExchange(VDataExchange& exchange) override;
};

/// The session's name and description.
class NewSessionWizardFinishPage : public NewSessionWizardPage {
  public:
    explicit NewSessionWizardFinishPage(ISessionConfig* config);
    void OnSetActive() override;
    std::int64_t OnWizardBack() override;

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    void OnControlChanged(int id) override;

  private:
    void FitButtons(const VUnicodeString& shownName);
    void StoreTexts();

    VUnicodeString name;
    VUnicodeString description;
    bool validatesName = false;
};

}  // namespace connectdialog
