// An invented protocol with a port, and its pages for quick connect and the new session wizard.
#pragma once

#include "support/fakesuite.h"
#include "wizard/newsessionwizardbase.h"
#include "wizard/newsessionwizardpage.h"

namespace connectdialog::test {

inline constexpr int kFakeHost = 6900;
inline constexpr int kFakePort = 6901;
inline constexpr ControlTemplate kFakePageControls[] = {
    {ControlKind::kEdit, kFakeHost, u"", {0, 0, 50, 14}},
    {ControlKind::kEdit, kFakePort, u"", {0, 20, 50, 14}},
};
inline constexpr DialogTemplate kFakeQuickTemplate{6902, 60, 40, u"", kFakePageControls};
/// Wizard pages from this number on belong to the transfer side.
inline constexpr unsigned kFirstFakeTransferPage = 6920;
inline constexpr DialogTemplate kFakeSshPage{6911, 60, 40, u"", kFakePageControls};
inline constexpr DialogTemplate kFakeTelnetPage{6912, 60, 40, u"", kFakePageControls};
inline constexpr DialogTemplate kFakeSftpPage{6921, 60, 40, u"", kFakePageControls};

class PortProtocol : public FakeProtocol {
  public:
    using FakeProtocol::FakeProtocol;
    ConnectConfig* Clone(ICommonConfig*) const override { return new PortProtocol(*this); }
    std::uint16_t GetPort() const override { return port; }

    std::uint16_t port = 22;
};

/// A host of "bad" is refused.
inline void ExchangeFake(VDataExchange& exchange, ISessionConfig& session) {
    auto* config = dynamic_cast<FakeProtocol*>(session.GetConnectConfig());
    if (config == nullptr) return;
    VUnicodeString host = config->host.Get();
    DDX_Text(exchange, kFakeHost, host);
    if (exchange.IsSaving() && host == u"bad") return exchange.Refuse(kFakeHost);
    if (exchange.IsSaving()) config->host.Set(host);
}

class FakeQuickPage : public VPluginDialog {
  public:
    explicit FakeQuickPage(ISessionConfig& session) : VPluginDialog(kFakeQuickTemplate, nullptr), session(session) {}

  protected:
    void DoDataExchange(VDataExchange& exchange) override { ExchangeFake(exchange, session); }
    void OnControlChanged(int id) override {
        const VUnicodeString text = GetControlText(id);
        if (id == kFakeHost) session.GetConnectConfig()->SetHostName(text);
        if (id == kFakePort) dynamic_cast<PortProtocol&>(*session.GetConnectConfig()).port = 2222;
        TellHostnameChanged();
    }

  private:
    ISessionConfig& session;
};

/// The protocol's page in the wizard, of whichever template.
class FakeWizardPage : public NewSessionWizardPage {
  public:
    FakeWizardPage(ISessionConfig* session, const DialogTemplate& dialog) : NewSessionWizardPage(session, dialog) {
        ++alive;
    }
    ~FakeWizardPage() override { --alive; }
    void OnSetActive() override {
        UpdateData(false);
        GetWizard().SetButtons(kWizardBack | kWizardNext, kWizardBack | kWizardNext);
    }
    /// Its data are taken when it is left.
    std::int64_t OnWizardNext() override {
        GetWizard().SetPreviousID(GetResourceID());
        return GetResourceID() < kFirstFakeTransferPage ? GetWizard().GetNextID() : GetWizard().GetFinishPageID();
    }
    VReportMessageParams GetLastError() const override { return error; }

    VReportMessageParams error;
    static inline int alive = 0;

  protected:
    void DoDataExchange(VDataExchange& exchange) override { ExchangeFake(exchange, GetConfig()); }
};

/// A page that cannot be shown.
template <class Page>
class BrokenPage : public Page {
  public:
    using Page::Page;

  protected:
    void OnInitDialog() override { throw 1; }
};

/// A row with a settings object and both pages; the wizard's page has that template.
template <const DialogTemplate& dialog>
ConnectProtocolTableElement MakePagedRow(AppKind kind, const char16_t* name) {
    ConnectProtocolTableElement row = MakeRow(kind, name);
    row.createConfig = [](VProfileKey* key, ICommonConfig*, const ConnectProtocolTableElement& element) {
        return static_cast<ConnectConfig*>(new PortProtocol(key, element));
    };
    row.createQuickPage = [](VWindow*, ISessionConfig* session) {
        return static_cast<VPluginDialog*>(new FakeQuickPage(*session));
    };
    row.createPage = [](ISessionConfig* session) {
        return static_cast<NewSessionWizardPage*>(new FakeWizardPage(session, dialog));
    };
    row.destroyPage = [](NewSessionWizardPage* page) { delete page; };
    return row;
}

}  // namespace connectdialog::test
