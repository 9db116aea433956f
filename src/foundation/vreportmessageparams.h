// A failure or a notice as an object: a code, the module that owns its text, and insert strings.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "foundation/varray.h"
#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "platform/modules.h"

namespace connectdialog {

/// A report as it travels. Text is made only when somebody asks for it.
class IReportMessageParams : public IUnknownBase {
  public:
    /// Starts over with this code and the default module: inserts and text go.
    virtual void SetMessage(std::uint32_t code) = 0;
    /// Takes over another report (all but the severity); gives this report, or null when `other` is null or of another
    /// class, and then nothing changes.
    virtual IReportMessageParams* Assign(const IReportMessageParams* other) = 0;
    /// 0 is success; otherwise a platform error or a message id.
    virtual std::uint32_t GetCode() const = 0;
    /// Only the code: inserts and the text made so far stay.
    virtual void SetCode(std::uint32_t code) = 0;
    virtual std::int32_t GetSeverity() const = 0;
    virtual void SetSeverity(std::int32_t severity) = 0;
    virtual std::uint64_t GetUserData() const = 0;
    virtual void SetUserData(std::uint64_t userData) = 0;
    /// Appends a copy. Null counts as the empty text.
    virtual void AddInsert(const char16_t* text) = 0;
    virtual void AddInsert(const char* text) = 0;
    /// VUnicodeString::Format, then AddInsert.
    virtual void AddInsertFormatted(const char16_t* messageTemplate, const FormatArgument* arguments,
                                    std::size_t count) = 0;
    virtual ModuleHandle GetModule() const = 0;
    /// The message as its table has it, line breaks included. The first call fixes the text: later calls give the same
    /// pointer, until SetMessage or Assign. Never null; owned by the report.
    virtual const char16_t* GetText() = 0;
    /// The same with the line breaks of the template dropped. Shares the text that the first call made.
    virtual const char16_t* GetTextOneLine() = 0;
    /// Characters of the text; 0 before it was made.
    virtual std::size_t GetTextLength() const = 0;
    /// The first of GetInsertCount() inserts, owned by the report.
    virtual const char16_t* const* GetInserts() const = 0;
    virtual std::size_t GetInsertCount() const = 0;

  protected:
    ~IReportMessageParams() override = default;
};

/// On the stack a value (copies are deep), on the heap a counted object whose count starts at 1.
class VReportMessageParams : public IReportMessageParams {
  public:
    VReportMessageParams();
    explicit VReportMessageParams(std::uint32_t code, ModuleHandle module = nullptr);
    VReportMessageParams(const VReportMessageParams& other);
    VReportMessageParams& operator=(const VReportMessageParams& other);
    ~VReportMessageParams() override;

    std::uint32_t QueryInterface(const void* interfaceId, void** out) override;
    std::int32_t AddRef() override;
    std::int32_t Release() override;
    void SetMessage(std::uint32_t code) override;
    IReportMessageParams* Assign(const IReportMessageParams* other) override;
    std::uint32_t GetCode() const override { return code; }
    void SetCode(std::uint32_t newCode) override { code = newCode; }
    std::int32_t GetSeverity() const override { return severity; }
    void SetSeverity(std::int32_t newSeverity) override { severity = newSeverity; }
    std::uint64_t GetUserData() const override { return userData; }
    void SetUserData(std::uint64_t newUserData) override { userData = newUserData; }
    void AddInsert(const char16_t* insert) override;
    void AddInsert(const char* insert) override;
    void AddInsertFormatted(const char16_t* messageTemplate, const FormatArgument* arguments,
                            std::size_t count) override;
    ModuleHandle GetModule() const override { return module; }
    const char16_t* GetText() override;
    const char16_t* GetTextOneLine() override;
    std::size_t GetTextLength() const override;
    const char16_t* const* GetInserts() const override { return inserts.GetData(); }
    std::size_t GetInsertCount() const override { return inserts.GetCount(); }

    /// Success: code 0 with no inserts. Cheap when the report holds nothing, which is the usual case.
    void Clear();
    /// Fails with `failure` and one insert; gives false, so that a caller can return it.
    bool Fail(std::uint32_t failure, const char16_t* insert = nullptr);

  private:
    const char16_t* MakeText(std::uint32_t flags);
    /// The order: the system's table (unless the code is marked as a customer's), the own module, the fallback module;
    /// failing all of them, a text that names the code and the module.
    void LookUpText(std::uint32_t flags);
    /// Makes the text from a template. On failure: false with the last error 317; null is one.
    bool TryTemplate(const char16_t* messageTemplate, std::uint32_t flags);
    void DropText();
    void DropInserts();

    std::int32_t severity = -1;
    VArray<const char16_t*> inserts;
    std::uint32_t code = 0;
    ModuleHandle module;
    VUnicodeString text;
    bool hasText = false;
    std::atomic<std::int32_t> references{1};
    std::uint64_t userData = 0;
};

/// The host's receiver of reports, reached through the getter given to ConnectDialogDllInit.
class VReportMessageRouter {
  public:
    virtual ~VReportMessageRouter() = default;
    /// Handles the report, which stays the caller's; the result is the host's own.
    virtual std::uint32_t HandleReport(IReportMessageParams* report) = 0;
};

/// Tells RouteReport where the router is; null, or a getter that gives null, means that no report is shown.
void SetReportRouterGetter(VReportMessageRouter* (*getter)());
VReportMessageRouter* GetReportRouter();

/// Sets the severity to 0 and hands the report to the host's router. Gives the router's result, or the report's code
/// when there is no router.
std::uint32_t RouteReport(IReportMessageParams* report);
/// The same with a copy on the heap, made by the report factory.
std::uint32_t RouteReportCopy(const IReportMessageParams* report);

/// Makes a report on the heap with one reference for the caller; null when memory runs out.
IReportMessageParams* MakeReport(std::uint32_t code, ModuleHandle module);
using ReportFactory = IReportMessageParams* (*)(std::uint32_t code, ModuleHandle module);
/// Replaces the factory of RouteReportCopy; null puts MakeReport back.
void SetReportFactory(ReportFactory factory);

}  // namespace connectdialog
