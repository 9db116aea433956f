#include "connectdialog/desktopshortcut.h"

#include "foundation/commandline.h"
#include "foundation/textchecks.h"
#include "foundation/vpath.h"
#include "imports/hostcallbacks.h"
#include "platform/codepage.h"
#include "platform/desktopshortcut.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

namespace {

constexpr char16_t kSessionOption[] = u"/S";
constexpr char16_t kFolderOption[] = u"/SESSION_FOLDER";
constexpr char16_t kRootArgument[] = u"\\";

}  // namespace

VUnicodeString BuildShortcutArguments(const VStringArray& sessionPaths, const VStringArray& folderPaths) {
    VUnicodeString arguments;
    for (const VUnicodeString& path : sessionPaths) arguments += kSessionOption + u" \""_v + path + u"\" ";
    for (const VUnicodeString& path : folderPaths) {
        arguments += kFolderOption + u" "_v;
        arguments += path.IsEmpty() ? kRootArgument + u" "_v : u"\""_v + path + u"\" ";
    }
    return arguments;
}

bool NamesExactly(const VUnicodeString& arguments, const VStringArray& sessionPaths, const VStringArray& folderPaths) {
    VStringArray meant;
    for (const VUnicodeString& path : sessionPaths) {
        meant.Add(kSessionOption);
        meant.Add(path);
    }
    for (const VUnicodeString& path : folderPaths) {
        meant.Add(kFolderOption);
        meant.Add(path.IsEmpty() ? VUnicodeString(kRootArgument) : path);
    }
    VStringArray words;
    return SplitCommandLine(arguments, words) && words == meant;
}

VUnicodeString OfferShortcutLabel(const VUnicodeString& path, bool isMultiple, const VUnicodeString& appName) {
    if (!isMultiple && !path.IsEmpty()) return GetEntryLeaf(path);
    VUnicodeString label;
    label.Format(u"%1 sessions", appName);
    return label;
}

bool CreateDesktopShortcut(const VUnicodeString& arguments, const VUnicodeString& label, VWindow* /*window*/) {
    const HostCallbacks& host = GetHostCallbacks();
    return CreateShortcutTo({VGetModulePath(), host.needsTerminal, host.shortcutOptions}, arguments, label);
}

bool CreateShortcutTo(const ShortcutHost& host, const VUnicodeString& arguments, const VUnicodeString& label) {
    VStringArray words;
    // Half a character would name another session.
    if (!SplitCommandLine(arguments, words) || HasHalfCharacter(arguments)) {
        platform::SetLastErrorCode(platform::kInvalidParameter);
        return false;
    }
    platform::ShortcutCommand command;
    command.needsTerminal = host.needsTerminal;
    command.arguments.push_back(platform::ToNativePath(host.program));
    for (const VStringArray* part : {&host.options, static_cast<const VStringArray*>(&words)})
        for (const VUnicodeString& word : *part) command.arguments.push_back(platform::ToNarrow(word));
    return platform::MakeDesktopShortcut(label, command);
}

}  // namespace connectdialog
