#include "hosts/common/hostusage.h"

#include <cstdio>
#include <string>
#include <utility>

#include "foundation/vunicodestring.h"
#include "hosts/common/tell.h"

namespace connectdialog::hosts {

namespace {

constexpr char kUsage[] =
    "usage: HOST [--store URL] [--main]\n"
    "       HOST [--store URL] --quick ADDRESS | --link ADDRESS\n"
    "       HOST [--store URL] [--window] /S \"PATH\" ... /SESSION_FOLDER \"PATH\" ...\n"
    "       HOST --terminal COMMAND\n"
    "       HOST --help | --version\n"
    "\n"
    "PURPOSE\n"
    "Without a session it shows the connect dialog, or quick connect where the user wants that at the start, and\n"
    "opens what is chosen there; without a terminal, its main window with that dialog over it.\n"
    "\n"
    "  /S PATH               open the session, in this terminal; several one after the other. The names of\n"
    "                        a path are separated by \"\\\"\n"
    "  /SESSION_FOLDER PATH  open all sessions in the folder; \"\\\" is the root\n"
    "  --quick ADDRESS       show quick connect with the address: [USER@]NAME[:PORT], an IPv6 address with a port in\n"
    "                        brackets, or ssh://, telnet:// or sftp:// before it\n"
    "  --link ADDRESS        the same for a link of another program; a window tells what is wrong with it\n"
    "  --window              open each session in a window of a terminal emulator instead\n"
    "  --main                show the main window, also from a terminal\n"
    "  --wait                when a client failed, wait for the Return key before ending\n"
    "  --encoded             what follows options from here on is percent-encoded\n"
    "  --terminal COMMAND    remember the command for such windows, as \"gnome-terminal --tab --\"; the empty\n"
    "                        one stands for the system's: x-terminal-emulator, or another that is installed\n";

constexpr char kLauncherUsage[] =
    "usage: HOST [--store URL]\n"
    "       HOST --help | --version\n"
    "\n"
    "PURPOSE\n"
    "\n";

/// Behind each of them.
constexpr char kStoreUsage[] =
    "  --store URL           the store of the sessions, as sqlite:FILE; without it the one that\n"
    "                        BRENNMARK_STORE names, or else the user's own, whose folder is asked for at the\n"
    "                        first run\n";

std::string UsageOf(const HostKind& kind) {
    std::string usage = kind.opensSessions ? kUsage : kLauncherUsage;
    usage += kStoreUsage;
    for (const auto& [word, text] :
         {std::pair<std::string_view, const char*>{"HOST", kind.program}, {"PURPOSE", kind.purpose}})
        for (std::size_t at = usage.find(word); at != std::string::npos; at = usage.find(word, at))
            usage.replace(at, word.size(), text);
    return usage;
}

}  // namespace

int Fail(const HostKind& kind, std::u16string_view text, int exitCode) {
    Tell(kind, text);
    return exitCode;
}

int RefuseUsage(const HostKind& kind, std::u16string_view fault) {
    std::fputs(UsageOf(kind).c_str(), stderr);
    return Fail(kind, fault, kWrongUsage);
}

bool TakeCommandLine(const HostKind& kind, std::span<const char* const> arguments, HostOptions& options,
                     int& exitCode) {
    std::string fault;
    if (!ReadHostOptions(arguments, options, fault)) {
        exitCode = RefuseUsage(kind, VUnicodeString(fault.c_str()));
        return false;
    }
    int printed = 0;
    if (options.action == HostAction::kHelp)
        printed = std::fputs(UsageOf(kind).c_str(), stdout);
    else if (options.action == HostAction::kVersion)
        printed = std::printf("%s %s\n", kind.program, HOST_VERSION);
    else
        return true;
    exitCode = printed < 0 ? kFailed : 0;
    return false;
}

}  // namespace connectdialog::hosts
