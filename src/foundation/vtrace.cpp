#include "foundation/vtrace.h"

#include <exception>
#include <mutex>
#include <string>

#include "foundation/vfiletime.h"
#include "foundation/vpath.h"
#include "foundation/vtextfile.h"
#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/modules.h"
#include "platform/userfiles.h"

namespace connectdialog {

namespace {

constexpr VFileTime kFileTimePerMillisecond = platform::kFileTimePerSecond / 1000;

/// The executable's name up to the first dot.
std::u16string ProgramName() {
    const std::u16string path = platform::GetExecutablePath();
    const std::u16string leaf = path.substr(path.rfind(u'\\') + 1);
    return leaf.substr(0, leaf.find(u'.'));
}

std::u16string TraceFolder() {
    std::u16string folder;
    if (platform::GetEnvironmentText(u"TEMP", folder) && !folder.empty()) return folder;
    folder = platform::GetKnownFolder(platform::KnownFolder::kState);
    platform::CreateUserFolder(folder);
    return folder;
}

class TraceFile {
  public:
    TraceFile() {
        const std::u16string name = ProgramName() + u".trace.log";
        file.SetEncoding(TextEncoding::kUtf16Le);
        // The folder may be one where others can put a link in the file's place.
        file.SetAttributes(platform::kFileAttributeNormal | platform::kFileFlagOwnOnly);
        file.Open(VJoinPath(TraceFolder().c_str(), name.c_str()), platform::kFileAppendData, platform::kCreateAlways);
    }

    void WriteLine(const VUnicodeString& text) {
        const std::lock_guard guard(threads);
        if (file.IsOpen()) file.WriteLine(text);
    }

  private:
    VTextFile file;
    std::mutex threads;
};

/// Made at the first line, and never destroyed: there may be something to trace until the process ends.
TraceFile& TheTraceFile() {
    static TraceFile& file = *new TraceFile();
    return file;
}

VUnicodeString LineOf(const char16_t* messageTemplate, const FormatArgument* arguments, std::size_t count) {
    const VFileTime now = platform::GetFileTimeNow();
    const int milliseconds = static_cast<int>(now / kFileTimePerMillisecond % 1000);
    VUnicodeString line;
    line.Format(u"%1!s!.%2!03d! : ", VFormatLocalTime(now), milliseconds);
    VUnicodeString text;
    text.FormatList(messageTemplate, arguments, count);
    return line + text;
}

}  // namespace

void VTraceList(const char16_t* messageTemplate, const FormatArgument* arguments, std::size_t count) noexcept {
    const std::uint32_t lastError = platform::GetLastErrorCode();
    try {
        TheTraceFile().WriteLine(LineOf(messageTemplate, arguments, count));
    } catch (const std::exception&) {
        // Out of memory: the line is lost, and the caller is not.
    }
    platform::SetLastErrorCode(lastError);
}

}  // namespace connectdialog
