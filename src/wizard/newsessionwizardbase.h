// The new session wizard without its sheet: which pages there are, and which one comes next.
#pragma once

#include <cstdint>
#include <vector>

#include "config/sessionconfig.h"
#include "foundation/vmap.h"
#include "foundation/vreportmessageparams.h"
#include "imports/connectprotocoltable.h"

namespace connectdialog {

class NewSessionWizardPage;
class VPropertyPage;

// Bits of SetButtons.
inline constexpr unsigned kWizardBack = 1;
inline constexpr unsigned kWizardNext = 2;
inline constexpr unsigned kWizardFinish = 4;

/// An application's sheet derives from it and from its toolkit's. Pages are known by the numbers of their templates.
class NewSessionWizardBase {
  public:
    /// `applicationKind` is an AppKind. Requires: `config` is a SessionConfig; a reference is kept.
    NewSessionWizardBase(ISessionConfig* config, int applicationKind);
    NewSessionWizardBase(const NewSessionWizardBase&) = delete;
    NewSessionWizardBase& operator=(const NewSessionWizardBase&) = delete;
    /// The pages of the protocols go with it.
    virtual ~NewSessionWizardBase();
    virtual int GetFinishPageID() = 0;
    virtual int GetTransferPageID() = 0;
    /// Shows the buttons of `mask` and hides the others; those of `enabled` can be pressed.
    virtual void SetButtons(unsigned mask, unsigned enabled) = 0;
    /// Adds the page to the sheet; `id` becomes its number.
    virtual void AddPage(NewSessionWizardPage* page, int& id) = 0;

    /// False once the user declined the wizard for sessions to come.
    bool GetUseWizard() const { return useWizard; }
    void SetUseWizard(bool isUsed) { useWizard = isUsed; }
    /// Whether the terminal side's protocol is "None": the transfer side's must not be then.
    bool GetIsHaldenProtocolNone() const { return isHaldenProtocolNone; }
    void SetIsHaldenProtocolNone(bool isNone) { isHaldenProtocolNone = isNone; }

    // The pages visited: Next pushes the page that is left, Back takes it off again.

    void SetPreviousID(std::int64_t id);
    /// The page that Back goes to; 0 when there is none.
    std::int64_t GetPreviousID();
    /// Told by a page whether it could be left: what Back took off is put back when it could not.
    void HandleOnKillActive(bool ok);

    /// The number of the protocol's page, or of the finish page where it has none.
    int GetNextProtocolResourceID(const VUnicodeString& protocolName);
    /// Whether the protocol has no page because its plug-in failed to make it.
    bool HasFailedPage(const VUnicodeString& protocolName) const;
    /// The page behind that of a terminal protocol: the transfer page where the wizard has it, else the last.
    int GetNextID();
    /// The latest that a protocol's page reported when it was made.
    VReportMessageParams GetLastError() const { return lastError; }

  protected:
    /// Adds the pages in their order. Requires: the pages outlive the wizard; called once.
    void InitPages(NewSessionWizardPage& single, NewSessionWizardPage& terminal, NewSessionWizardPage& transfer,
                   NewSessionWizardPage& finish);
    /// `row` is an index into the protocol table. What a plug-in throws is told as its last error, and the row then has
    /// no page.
    void AddWizardPage(std::size_t row);
    /// Whose page it is; empty where it is no protocol's.
    VUnicodeString GetProtocolOf(const VPropertyPage& page) const;

  private:
    static constexpr int kNoPage = -1;

    AppKind GetSecondKind() const;
    int AddAndRecord(NewSessionWizardPage& page);
    NewSessionWizardPage* MakePage(const ConnectProtocolTableElement& row);
    bool HasPage(const VUnicodeString& protocolName) const;

    VRef<SessionConfig> config;
    std::int64_t currentPreviousId = 0;
    int finishPageId = 0;
    int applicationKind;
    bool useWizard = true;
    bool isHaldenProtocolNone = false;
    bool hasTransferPage = false;
    std::vector<std::int64_t> history;
    VMap<VUnicodeString, int> pageIdsByProtocol;
    std::vector<NewSessionWizardPage*> protocolPages;  ///< one for each row of the table; null: none
    std::vector<VUnicodeString> failedProtocols;
    VReportMessageParams lastError;
};

/// "ssh1.new" is an older name of the second version of the protocol.
VUnicodeString CurrentSshName(const VUnicodeString& protocolName);

}  // namespace connectdialog
