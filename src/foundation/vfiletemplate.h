// Names of log files and of other files that users write as templates.
#pragma once

#include <cstdint>

#include "foundation/vreportmessageparams.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The template has a `%` before something that is no token; the insert shows it.
inline constexpr std::uint32_t kReportUnknownTemplateToken = 0xE1040065;
/// The template ends with a lone `%`.
inline constexpr std::uint32_t kReportTemplateEndsInToken = 0xE1040066;

/// Makes a file name from a template. First the variables of the environment are put in, then, on a portable drive, its
/// folders (see foundation/venvironment.h), and then the time of now, UTC:
///
///     %Y year, four digits   %M month, two    %D day, two           %% a percent sign
///     %h hour, two           %m minute, two   %s second, two        %t milliseconds, three
///
/// Other text stays as it is. On success the report's code is 0.
/// On failure: the empty string, and the report takes one of the codes above.
VUnicodeString VExpandFileTemplate(const VUnicodeString& fileTemplate, IReportMessageParams& report);

}  // namespace connectdialog
