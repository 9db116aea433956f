#include "profile/vprofiledata.h"

#include "foundation/vreportmessageparams.h"

namespace connectdialog {

bool VProfileData::ReportFailure(VReportMessageParams& report, std::uint32_t code) const {
    report.SetMessage(code);
    report.AddInsert(name.GetData());
    return false;
}

bool VProfileData::Load(const char*, IProfileTextDecoder&, VReportMessageParams&) {
    return false;
}

bool VProfileData::GetVariantFrom(VVariant&, const void*, std::size_t, VReportMessageParams& report) const {
    return ReportFailure(report, kReportNotSupported);
}
bool VProfileData::PutValueFrom(IProfileValueExchange&, const void*, std::size_t, const char16_t*) const {
    return false;
}
bool VProfileData::GetVariant(VVariant&, VReportMessageParams& report) const {
    return ReportFailure(report, kReportNotSupported);
}
bool VProfileData::PutValue(IProfileValueExchange&, const char16_t*) const {
    return false;
}
bool VProfileData::SetVariantInto(const VVariant&, void*, std::size_t, VReportMessageParams& report) const {
    return ReportFailure(report, kReportNotSupported);
}
bool VProfileData::GetValueInto(IProfileValueExchange&, void*, std::size_t, const char16_t*) const {
    return false;
}
bool VProfileData::SetVariant(const VVariant&, VReportMessageParams& report) {
    return ReportFailure(report, kReportNotSupported);
}
bool VProfileData::GetValue(IProfileValueExchange&, const char16_t*) {
    return false;
}

void VProfileData::Lock(VProfileKey&, bool) {}
void VProfileData::Unlock(VProfileKey&, bool) {}

}  // namespace connectdialog
