// trace: what a template of a log file's name comes to now.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "foundation/vfiletemplate.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

constexpr char kFormatHelp[] =
    "The template: %Y %M %D %h %m %s %t are year, month, day, hour, minute, second and millisecond (UTC), %% a percent "
    "sign, %NAME% a variable of the environment";

Failure FailureOf(VReportMessageParams& report) {
    switch (report.GetCode()) {
        case kReportUnknownTemplateToken:
            return Quoted(report.GetInserts()[0]) +
                   " is neither a token nor a variable that is set; %% is a percent sign";
        case kReportTemplateEndsInToken:
            return "the template ends with a lone %; %% is a percent sign";
        default:
            return ReportText(report);
    }
}

Failure PrintExpanded(const std::string& format) {
    VUnicodeString fileTemplate;
    if (Failure failure = DecodeArgument(format, fileTemplate)) return failure;
    VReportMessageParams report;
    const VUnicodeString name = VExpandFileTemplate(fileTemplate, report);
    if (report.GetCode() != 0) return FailureOf(report);
    PrintLine(Printable(name));
    return kDone;
}

}  // namespace

CommandBody DeclareTrace(CLI::App& parser) {
    auto format = std::make_shared<std::string>();
    parser.add_option("FORMAT", *format, kFormatHelp)->required();
    return [format]() { return PrintExpanded(*format); };
}

}  // namespace connectdialog::connectctl
