#include "tools/connectctl/userfile.h"

#include "foundation/vfile.h"
#include "foundation/vreportmessageparams.h"
#include "platform/files.h"
#include "platform/lasterror.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

Failure FileFailure(const VUnicodeString& name, std::uint32_t code) {
    VReportMessageParams report(code);
    return Quoted(name) + ": " + ReportText(report);
}

std::uint32_t ProbeFile(const VUnicodeString& name) {
    VFile file;
    file.SetShareMode(platform::kShareRead);
    return file.Open(name, platform::kGenericRead, platform::kOpenExisting) ? platform::kSuccess
                                                                            : platform::GetLastErrorCode();
}

}  // namespace connectdialog::connectctl
