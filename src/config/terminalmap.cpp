#include "config/terminalmap.h"

#include <cstdlib>
#include <limits>
#include <string_view>

#include "foundation/vfiletemplate.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vtextfile.h"

namespace connectdialog {

namespace {

/// Empty lines are passed over however many there are, and a line may be long: without a bound a session could keep
/// whoever opens it waiting.
constexpr std::uint64_t kLargestFile = std::uint64_t{4} << 20;

bool OpenMap(VTextFile& file, const VUnicodeString& name) {
    file.SetShareMode(platform::kShareRead);
    if (!file.Open(name, platform::kGenericRead, platform::kOpenExisting)) return false;
    std::uint64_t size = 0;
    return file.Seek(0, platform::SeekOrigin::kEnd) && file.GetPosition(size) && size <= kLargestFile &&
           file.Seek(0, platform::SeekOrigin::kBegin);
}

std::uint16_t ReadCode(VUnicodeString& line) {
    line.TrimLeft();
    line.TrimRight();
    const VNarrowString text(line);
    char* end = nullptr;
    const unsigned long code = std::strtoul(text.GetData(), &end, 16);
    const std::string_view converted(text.GetData(), static_cast<std::size_t>(end - text.GetData()));
    const bool isCode = converted.find('-') == converted.npos && code <= std::numeric_limits<std::uint16_t>::max();
    return isCode ? static_cast<std::uint16_t>(code) : 0;
}

}  // namespace

std::shared_ptr<const TerminalMap> ReadTerminalMap(const VUnicodeString& fileTemplate) {
    VReportMessageParams report;
    const VUnicodeString name = VExpandFileTemplate(fileTemplate, report);
    VTextFile file;
    if (name.IsEmpty() || !OpenMap(file, name)) {
        report.Fail(kReportBadTerminalMap, (name.IsEmpty() ? fileTemplate : name).GetData());
        RouteReport(&report);
        return nullptr;
    }
    auto map = std::make_shared<TerminalMap>();
    VUnicodeString line;
    for (auto entry = map->begin(); entry != map->end() && file.ReadLine(line);)
        if (!line.IsEmpty()) *entry++ = ReadCode(line);
    return map;
}

}  // namespace connectdialog
