#include "wizard/newsessionwizardbase.h"

#include <algorithm>
#include <utility>

#include "imports/configpanels.h"
#include "imports/protocolpagefault.h"
#include "wizard/newsessionwizardpage.h"

namespace connectdialog {

namespace {
constexpr std::u16string_view kOldSshName = u"ssh1.new";
}  // namespace

VUnicodeString CurrentSshName(const VUnicodeString& protocolName) {
    return protocolName.EqualsNoCase(kOldSshName) ? u"SSH2"_v : protocolName;
}

NewSessionWizardBase::NewSessionWizardBase(ISessionConfig* config, int applicationKind)
    : config(VRef<SessionConfig>::Share(dynamic_cast<SessionConfig*>(config))),
      applicationKind(applicationKind),
      protocolPages(GetConnectProtocolTable().GetCount(), nullptr) {}

NewSessionWizardBase::~NewSessionWizardBase() {
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    for (std::size_t row = 0; row < protocolPages.size() && row < table.GetCount(); ++row)
        if (table[row].destroyPage != nullptr) table[row].destroyPage(protocolPages[row]);
}

void NewSessionWizardBase::SetPreviousID(std::int64_t id) {
    history.push_back(id);
}

std::int64_t NewSessionWizardBase::GetPreviousID() {
    currentPreviousId = 0;
    if (history.empty()) return currentPreviousId;
    currentPreviousId = history.back();
    history.pop_back();
    return currentPreviousId;
}

void NewSessionWizardBase::HandleOnKillActive(bool ok) {
    // Only what the Back at hand took off: a refused Finish must leave the way back as it is.
    const std::int64_t takenOff = std::exchange(currentPreviousId, 0);
    if (!ok && takenOff != 0) history.push_back(takenOff);
}

int NewSessionWizardBase::GetNextProtocolResourceID(const VUnicodeString& protocolName) {
    return HasPage(protocolName) ? *pageIdsByProtocol.Find(protocolName) : GetFinishPageID();
}

bool NewSessionWizardBase::HasPage(const VUnicodeString& protocolName) const {
    const int* id = pageIdsByProtocol.Find(protocolName);
    return id != nullptr && *id != kNoPage;
}

bool NewSessionWizardBase::HasFailedPage(const VUnicodeString& protocolName) const {
    return !HasPage(protocolName) && std::ranges::count(failedProtocols, protocolName) > 0;
}

VUnicodeString NewSessionWizardBase::GetProtocolOf(const VPropertyPage& page) const {
    const auto found = std::ranges::find(protocolPages, &page);
    if (found == protocolPages.end()) return {};
    return GetConnectProtocolTable()[static_cast<std::uint64_t>(found - protocolPages.begin())].name;
}

int NewSessionWizardBase::GetNextID() {
    return hasTransferPage ? GetTransferPageID() : GetFinishPageID();
}

AppKind NewSessionWizardBase::GetSecondKind() const {
    const auto own = static_cast<AppKind>(applicationKind);
    if (!hasTransferPage) return AppKind{0};
    if (own == AppKind::kNorHalden || own == AppKind::kHalden) return AppKind::kTessaly;
    return IsNorHaldenInstalled() ? AppKind::kNorHalden : AppKind::kHalden;
}

int NewSessionWizardBase::AddAndRecord(NewSessionWizardPage& page) {
    int id = kNoPage;
    page.SetWizard(this);
    AddPage(&page, id);
    return id;
}

void NewSessionWizardBase::InitPages(NewSessionWizardPage& single, NewSessionWizardPage& terminal,
                                     NewSessionWizardPage& transfer, NewSessionWizardPage& finish) {
    // Asked once: an application that comes or goes while the wizard shows changes no page of it.
    hasTransferPage = IsNorHaldenOrHaldenInstalled() && IsTessalyInstalled();
    if (hasTransferPage) {
        AddAndRecord(terminal);
        AddAndRecord(transfer);
    } else {
        AddAndRecord(single);
    }
    const AppKind secondKind = GetSecondKind();
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    for (std::size_t row = 0; row < table.GetCount(); ++row)
        if (table[row].kind == static_cast<AppKind>(applicationKind) || table[row].kind == secondKind)
            AddWizardPage(row);
    finishPageId = AddAndRecord(finish);
}

NewSessionWizardPage* NewSessionWizardBase::MakePage(const ConnectProtocolTableElement& row) {
    if (row.createPage == nullptr) return nullptr;
    try {
        return row.createPage(config.Get());
    } catch (...) {
        lastError.Fail(kNoProtocolPage, row.name.GetData());
        failedProtocols.push_back(CurrentSshName(row.name));
        return nullptr;
    }
}

void NewSessionWizardBase::AddWizardPage(std::size_t row) {
    const ConnectProtocolTableElement& protocol = GetConnectProtocolTable()[row];
    const VUnicodeString name = CurrentSshName(protocol.name);
    if (name == u"SSH2" && HasPage(name)) return;
    protocolPages[row] = MakePage(protocol);
    int id = kNoPage;
    if (NewSessionWizardPage* page = protocolPages[row]) {
        id = AddAndRecord(*page);
        const VReportMessageParams error = page->GetLastError();
        if (error.GetCode() != 0) lastError = error;
    }
    pageIdsByProtocol[name] = id;
}

}  // namespace connectdialog
