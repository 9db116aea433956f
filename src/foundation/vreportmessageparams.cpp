#include "foundation/vreportmessageparams.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>
#include <vector>

#include "foundation/messageformat.h"
#include "foundation/messagetable.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

/// Codes with this bit are never the system's.
constexpr std::uint32_t kCustomerBit = 0x20000000;

constexpr char16_t kTextNotFound[] =
    u"Could not retrieve the error text for error code 0x%1!08x!.\r\n"
    u"Status codes from FormatMessage were %2:%3!d! and %4!d!.";

}  // namespace

VReportMessageParams::VReportMessageParams() : VReportMessageParams(0) {}
VReportMessageParams::VReportMessageParams(std::uint32_t code, ModuleHandle module)
    : code(code), module(module != nullptr ? module : platform::GetLibraryModule()) {}
VReportMessageParams::VReportMessageParams(const VReportMessageParams& other) : VReportMessageParams() {
    *this = other;
}
VReportMessageParams::~VReportMessageParams() {
    DropInserts();
}

VReportMessageParams& VReportMessageParams::operator=(const VReportMessageParams& other) {
    if (this == &other) return *this;
    Clear();
    code = other.code;
    module = other.module;
    userData = other.userData;
    for (const char16_t* insert : other.inserts) AddInsert(insert);
    return *this;
}

std::uint32_t VReportMessageParams::QueryInterface(const void* /*interfaceId*/, void** out) {
    if (out != nullptr) *out = nullptr;
    return kNoInterface;
}

std::int32_t VReportMessageParams::AddRef() {
    return references.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::int32_t VReportMessageParams::Release() {
    const std::int32_t left = references.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) Destroy();
    return left;
}

void VReportMessageParams::SetMessage(std::uint32_t newCode) {
    *this = VReportMessageParams(newCode);
}

IReportMessageParams* VReportMessageParams::Assign(const IReportMessageParams* other) {
    const auto* report = dynamic_cast<const VReportMessageParams*>(other);
    if (report == nullptr) return nullptr;
    *this = *report;
    return this;
}

void VReportMessageParams::AddInsert(const char16_t* insert) {
    const std::u16string_view source = insert != nullptr ? insert : u"";
    char16_t* copy = new char16_t[source.size() + 1];
    *std::copy(source.begin(), source.end(), copy) = 0;
    inserts.Add(copy);
}

void VReportMessageParams::AddInsert(const char* insert) {
    AddInsert(VUnicodeString(insert).GetData());
}

void VReportMessageParams::AddInsertFormatted(const char16_t* messageTemplate, const FormatArgument* arguments,
                                              std::size_t count) {
    VUnicodeString insert;
    insert.FormatList(messageTemplate, arguments, count);
    AddInsert(insert.GetData());
}

const char16_t* VReportMessageParams::GetText() {
    return MakeText(kMessagePlain);
}
const char16_t* VReportMessageParams::GetTextOneLine() {
    return MakeText(kMessageOneLine);
}
std::size_t VReportMessageParams::GetTextLength() const {
    return text.GetLength();
}

const char16_t* VReportMessageParams::MakeText(std::uint32_t flags) {
    if (!hasText) {
        LookUpText(flags);
        hasText = true;
    }
    return text.GetData();
}

void VReportMessageParams::LookUpText(std::uint32_t flags) {
    if ((code & kCustomerBit) == 0 && TryTemplate(FindSystemMessage(code), flags)) return;
    if (TryTemplate(FindMessage(module, code), flags)) return;
    const std::uint32_t firstStatus = platform::GetLastErrorCode();
    if (TryTemplate(FindMessage(GetFallbackMessageModule(), code), flags)) return;
    const std::uint32_t secondStatus = platform::GetLastErrorCode();

    const std::u16string file = platform::GetModuleFile(module);
    const std::u16string_view name = file.empty() ? u"<Unknown Module>" : std::u16string_view(file);
    const FormatArgument arguments[] = {FormatArgument(code), FormatArgument(name), FormatArgument(firstStatus),
                                        FormatArgument(secondStatus)};
    ExpandMessageInto(text, kTextNotFound, arguments, std::size(arguments), flags);
}

bool VReportMessageParams::TryTemplate(const char16_t* messageTemplate, std::uint32_t flags) {
    const std::vector<FormatArgument> arguments(inserts.begin(), inserts.end());
    const bool found = messageTemplate != nullptr &&
                       ExpandMessageInto(text, messageTemplate, arguments.data(), arguments.size(), flags);
    return found || platform::FailWith(platform::kMessageNotFound);
}

void VReportMessageParams::Clear() {
    DropText();
    DropInserts();
    code = 0;
    module = platform::GetLibraryModule();
}

bool VReportMessageParams::Fail(std::uint32_t failure, const char16_t* insert) {
    const VUnicodeString kept(insert);  // it may be one of the inserts that go
    Clear();
    code = failure;
    if (insert != nullptr) AddInsert(kept.GetData());
    return false;
}

void VReportMessageParams::DropText() {
    if (!hasText) return;
    text.Empty();
    hasText = false;
}

void VReportMessageParams::DropInserts() {
    for (const char16_t* insert : inserts) delete[] insert;
    inserts.Clear();
}

IReportMessageParams* MakeReport(std::uint32_t code, ModuleHandle module) {
    return new (std::nothrow) VReportMessageParams(code, module);
}

namespace {
VReportMessageRouter* (*routerGetter)() = nullptr;
ReportFactory reportFactory = MakeReport;
}  // namespace

void SetReportRouterGetter(VReportMessageRouter* (*getter)()) {
    routerGetter = getter;
}
VReportMessageRouter* GetReportRouter() {
    return routerGetter != nullptr ? routerGetter() : nullptr;
}
void SetReportFactory(ReportFactory factory) {
    reportFactory = factory != nullptr ? factory : MakeReport;
}

std::uint32_t RouteReport(IReportMessageParams* report) {
    report->SetSeverity(0);
    VReportMessageRouter* router = GetReportRouter();
    return router != nullptr ? router->HandleReport(report) : report->GetCode();
}

std::uint32_t RouteReportCopy(const IReportMessageParams* report) {
    const auto copy = VRef<IReportMessageParams>::Adopt(reportFactory(report->GetCode(), report->GetModule()));
    if (!copy) return report->GetCode();
    copy->Assign(report);
    return RouteReport(copy.Get());
}

}  // namespace connectdialog
