#include "hosts/common/userprogram.h"

#include <filesystem>
#include <string>
#include <vector>

#include "foundation/commandline.h"
#include "foundation/messagetable.h"
#include "foundation/vpath.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/processlaunch.h"

namespace connectdialog::hosts {

namespace {

bool Start(const std::vector<std::string>& words, const VUnicodeString& shown, VUnicodeString& fault) {
    if (platform::StartProgram(words, {})) return true;
    fault.Format(u"无法运行“%1”：%2", shown, FindSystemMessage(platform::GetLastErrorCode()));
    return false;
}

}  // namespace

bool StartUserProgram(const VUnicodeString& program, const VUnicodeString& arguments, VUnicodeString& fault) {
    VStringArray words;
    if (!SplitCommandLine(arguments, words)) {
        fault = u"参数中的引号没有配对："_v + arguments;
        return false;
    }
    std::vector<std::string> command{platform::ToNarrow(program)};
    for (const VUnicodeString& word : words) command.push_back(platform::ToNarrow(word));
    return Start(command, program, fault);
}

bool StartScript(const VUnicodeString& file, VUnicodeString& fault) {
    // With its folder, or it would be looked up in PATH.
    const std::filesystem::path path = platform::ToNativePath(VResolveDotPath(file));
    std::error_code error;
    return Start({std::filesystem::absolute(path, error).string()}, file, fault);
}

}  // namespace connectdialog::hosts
