#include "suite/protocols/pages.h"

#include <utility>
#include <vector>

#include "imports/dialogkit/vmessagebox.h"
#include "suite/protocols/fieldfaults.h"
#include "suite/protocols/protocolconfig.h"
#include "suite/protocols/protocoltraits.h"
#include "wizard/newsessionwizardbase.h"

namespace connectdialog {

namespace {

constexpr int kLastPort = 65535;

std::u16string_view NameOf(std::u16string_view label) {
    return label.substr(0, label.find(u"(&"));
}

VUnicodeString TextOf(int number) {
    VUnicodeString text;
    text.Format(u"%1!d!", number);
    return text;
}

VUnicodeString TrimmedText(const IDialogWindow& window, int id) {
    VUnicodeString text = window.GetText(id);
    text.TrimLeft();
    text.TrimRight();
    return text;
}

VUnicodeString PortText(const ProtocolConfig& config) {
    return config.GetPort() == kNoPort ? VUnicodeString() : TextOf(config.GetPort());
}

/// A port that stays what it was is not set: it may have been released.
void SetPort(ProtocolConfig& config, int port) {
    if (config.GetPort() != port) config.SetPort(static_cast<std::uint16_t>(port));
}

/// What the field's text is kept in; `text` is the present one.
void GetFieldText(const PageField& field, ProtocolConfig& config, VUnicodeString& text) {
    if (field.kind == PageFieldKind::kTarget) config.GetHostName(text);
    if (field.kind == PageFieldKind::kUser) config.GetRemoteHost().GetUsername(text);
    if (field.kind == PageFieldKind::kText) text = (config.GetSettings().*field.text).Get();
}
void SetFieldText(const PageField& field, ProtocolConfig& config, const VUnicodeString& text) {
    if (field.kind == PageFieldKind::kTarget) config.SetHostName(text);
    if (field.kind == PageFieldKind::kUser) config.GetRemoteHost().SetUsername(text);
    if (field.kind == PageFieldKind::kText) (config.EditSettings().*field.text).Set(text);
}

bool TakeText(const PageField& field, ProtocolConfig& config, const VUnicodeString& text, VUnicodeString& refusal) {
    const LaunchFault fault = text.IsEmpty() ? kLaunchFine : field.check(text);
    refusal = WordPageFault(fault, field.label);
    if (fault == kLaunchFine) SetFieldText(field, config, text);
    return fault == kLaunchFine;
}

/// An empty field is the usual number.
bool TakeNumber(const PageField& field, const VUnicodeString& text, const NumberRange& range, int& number,
                VUnicodeString& refusal) {
    number = range.usual;
    if (text.IsEmpty() || ReadPageNumber(text, range.least, range.most, number)) return true;
    refusal.Format(u"“%1”必须是 %2!d! 到 %3!d! 之间的数字。", NameOf(field.label), range.least, range.most);
    return false;
}

std::vector<VUnicodeString> ChoicesOf(const PageField& field) {
    return {field.choices.begin(), field.choices.end()};
}

}  // namespace

bool ReadPageNumber(const VUnicodeString& text, int least, int most, int& number) {
    std::int64_t read = 0;
    if (text.IsEmpty()) return false;
    for (const char16_t digit : text.View()) {
        if (digit < u'0' || digit > u'9') return false;
        read = read * 10 + (digit - u'0');
        if (read > most) return false;
    }
    if (read < least) return false;
    number = static_cast<int>(read);
    return true;
}

VUnicodeString WordPageFault(LaunchFault fault, std::u16string_view label) {
    return DescribeFieldFault(fault, NameOf(label));
}

ProtocolConfig* ProtocolPageFields::FindConfig(ISessionConfig& session) const {
    ConnectConfig* const selected =
        page.side == ProtocolSide::kTransfer ? session.GetTransferConnectConfig() : session.GetConnectConfig();
    auto* config = dynamic_cast<ProtocolConfig*>(selected);
    return config != nullptr && config->GetTraits().name == page.protocol ? config : nullptr;
}

void ProtocolPageFields::Attach() {
    int id = kFirstPageField;
    for (const PageField& field : page.fields) {
        if (field.kind == PageFieldKind::kChoice) dialog.SetControlChoices(id, ChoicesOf(field));
        ++id;
    }
}

const PageField* ProtocolPageFields::FindField(int id) const {
    const auto index = static_cast<std::size_t>(id - kFirstPageField);
    return id >= kFirstPageField && index < page.fields.size() ? &page.fields[index] : nullptr;
}

void ProtocolPageFields::Show(IDialogWindow& window, int id, const PageField& field, ProtocolConfig& config) {
    VUnicodeString text;
    GetFieldText(field, config, text);
    switch (field.kind) {
        case PageFieldKind::kNote:
            return;
        case PageFieldKind::kSwitch:
            return window.SetChecked(id, (config.GetSettings().*field.flag).Get());
        case PageFieldKind::kPort:
            text = PortText(config);
            break;
        case PageFieldKind::kNumber:
            text = TextOf((config.GetSettings().*field.number).Get());
            break;
        case PageFieldKind::kChoice:
            text = field.choices[static_cast<std::size_t>((config.GetSettings().*field.number).Get())];
            break;
        default:
            break;
    }
    window.SetText(id, text);
}

bool ProtocolPageFields::Take(const IDialogWindow& window, int id, const PageField& field, ProtocolConfig& config,
                              VUnicodeString& refusal) {
    const VUnicodeString text = TrimmedText(window, id);
    int number = 0;
    switch (field.kind) {
        case PageFieldKind::kNote:
            return true;
        case PageFieldKind::kSwitch:
            (config.EditSettings().*field.flag).Set(window.IsChecked(id));
            return true;
        case PageFieldKind::kPort:
            if (!TakeNumber(field, text, {config.GetTraits().defaultPort, 1, kLastPort}, number, refusal)) return false;
            SetPort(config, number);
            return true;
        case PageFieldKind::kNumber:
            if (!TakeNumber(field, text, field.range, number, refusal)) return false;
            (config.EditSettings().*field.number).Set(number);
            return true;
        case PageFieldKind::kChoice:
            for (std::size_t i = 0; i < field.choices.size(); ++i)
                if (text == field.choices[i]) (config.EditSettings().*field.number).Set(static_cast<int>(i));
            return true;
        default:
            return TakeText(field, config, text, refusal);
    }
}

void ProtocolPageFields::Exchange(VDataExchange& exchange, ProtocolConfig& config) {
    int id = kFirstPageField;
    for (const PageField& field : page.fields) {
        VUnicodeString refusal;
        if (!exchange.IsSaving()) {
            Show(exchange.GetWindow(), id, field, config);
        } else if (!Take(exchange.GetWindow(), id, field, config, refusal)) {
            VMessageBox(&dialog, refusal, kBoxWarning);
            return exchange.Refuse(id);
        }
        ++id;
    }
}

bool ProtocolPageFields::TakeTyped(int id, ProtocolConfig& config) {
    const PageField* field = FindField(id);
    if (field == nullptr || (field->kind != PageFieldKind::kTarget && field->kind != PageFieldKind::kPort))
        return false;
    const VUnicodeString text = TrimmedText(*dialog.GetWindow(), id);
    int port = config.GetTraits().defaultPort;
    if (field->kind == PageFieldKind::kTarget)
        config.SetHostName(text);
    else if (text.IsEmpty() || ReadPageNumber(text, 1, kLastPort, port))
        SetPort(config, port);
    return true;
}

namespace {

class QuickProtocolPage : public VPluginDialog {
  public:
    QuickProtocolPage(const ProtocolPage& page, ISessionConfig& session)
        : VPluginDialog(page.dialog, nullptr), session(session), fields(*this, page) {}

  protected:
    void OnInitDialog() override {
        fields.Attach();
        VPluginDialog::OnInitDialog();
    }
    void DoDataExchange(VDataExchange& exchange) override {
        if (ProtocolConfig* config = fields.FindConfig(session)) fields.Exchange(exchange, *config);
    }
    void OnControlChanged(int id) override {
        ProtocolConfig* const config = fields.FindConfig(session);
        if (config != nullptr && fields.TakeTyped(id, *config)) TellHostnameChanged();
    }

  private:
    ISessionConfig& session;
    ProtocolPageFields fields;
};

class WizardProtocolPage : public NewSessionWizardPage {
  public:
    WizardProtocolPage(const ProtocolPage& page, ISessionConfig* session)
        : NewSessionWizardPage(session, page.dialog), page(page), fields(*this, page) {}

    void OnSetActive() override {
        UpdateData(false);
        GetWizard().SetButtons(kWizardBack | kWizardNext, kWizardBack | kWizardNext);
    }
    std::int64_t OnWizardNext() override {
        if (!LeaveForNext()) return kStay;
        return page.side == ProtocolSide::kTerminal ? GetWizard().GetNextID() : GetWizard().GetFinishPageID();
    }

  protected:
    void OnInitDialog() override { fields.Attach(); }
    void DoDataExchange(VDataExchange& exchange) override {
        if (ProtocolConfig* config = fields.FindConfig(GetConfig())) fields.Exchange(exchange, *config);
    }

  private:
    const ProtocolPage& page;
    ProtocolPageFields fields;
};

/// The protocol table knows functions and no objects: one for each page.
template <std::size_t index>
NewSessionWizardPage* MakeWizardPageOf(ISessionConfig* config) {
    return new WizardProtocolPage(GetProtocolPages()[index], config);
}
constexpr auto kWizardPageMakers = []<std::size_t... index>(std::index_sequence<index...>) {
    return std::array<MakeWizardPage, kProtocolPageCount>{MakeWizardPageOf<index>...};
}
(std::make_index_sequence<kProtocolPageCount>());

}  // namespace

MakeWizardPage FindWizardPageMaker(std::u16string_view protocol) {
    const ProtocolPage* page = FindProtocolPage(protocol);
    return page != nullptr ? kWizardPageMakers.at(static_cast<std::size_t>(page - GetProtocolPages().data())) : nullptr;
}

void DestroyWizardPage(NewSessionWizardPage* page) {
    delete page;
}

VPluginDialog* MakeQuickPage(VWindow*, ISessionConfig* config) {
    auto* session = dynamic_cast<SessionConfig*>(config);
    if (session == nullptr) return nullptr;
    VUnicodeString protocol;
    session->GetActiveProtocolName(protocol);
    const ProtocolPage* page = FindProtocolPage(protocol);
    return page != nullptr ? new QuickProtocolPage(*page, *session) : nullptr;
}

}  // namespace connectdialog
