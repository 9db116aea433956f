// A host with a stopwatch and a user: runs norhalden as it is, or with "--host NAME" in front another one, and writes
// one line of figures once the connect dialog was painted.
//
//   hostprobe [--folder NAME] [ARGUMENTS OF NORHALDEN]
//   hostprobe --keys "KEY KEY ..." [ARGUMENTS OF NORHALDEN]
//   hostprobe --picture FILE [ARGUMENTS OF NORHALDEN]
//   hostprobe --make URL FOLDERS SESSIONS WIDE
//   hostprobe --dialogs
//
// The second form measures nothing and presses the keys, one after the other, in whatever window is there; after the
// last one windows are closed. The third saves a picture of the dialog instead. The fourth makes a store with so many
// folders of so many whole sessions, and one called "wide". The last measures quick connect and the wizard: see
// dialogtimes.h.
//
// STARTED, in the environment, is when the process was started: nanoseconds since 1970. With --folder that folder of
// the root is opened, walked and scrolled too. Then the dialog is closed; so is a reminder that comes before it. The
// line has, in milliseconds, `start` (to the end of the first paint), `expand` (from the click on the folder's expander
// to the end of the paint), and for `keys`, `type`, `scroll` and `range` (Shift and End) the longest time for which one
// of them kept the window busy, paint included; and `memory`, the most that the process took, in MiB.
#include <QApplication>
#include <cstring>
#include <string>
#include <utility>

#include "hosts/common/host.h"
#include "hosts/common/traylauncher.h"
#include "hosts/probe/dialogtimes.h"
#include "hosts/probe/makestore.h"
#include "hosts/probe/player.h"
#include "hosts/probe/stopwatch.h"

namespace {

struct Options {
    std::string host;
    std::string folder;
    std::string keys;
    std::string picture;
};

}  // namespace

int main(int argc, char** argv) {
    using namespace connectdialog::hosts;
    if (argc == 6 && std::strcmp(argv[1], "--make") == 0)
        return MakeStore(argv[2], std::stoul(argv[3]), std::stoul(argv[4]), std::stoul(argv[5])) ? 0 : 1;
    if (argc == 2 && std::strcmp(argv[1], "--dialogs") == 0) return MeasureDialogs(argc, argv);
    static Options options;  // the routine below takes no arguments
    for (const auto& [option, value] : {std::pair{"--host", &options.host},
                                        {"--folder", &options.folder},
                                        {"--keys", &options.keys},
                                        {"--picture", &options.picture}}) {
        if (argc < 3 || std::strcmp(argv[1], option) != 0) continue;
        *value = argv[2];
        argv += 2;
        argc -= 2;
    }
    qAddPreRoutine([] {
        if (options.keys.empty())
            new Stopwatch(qApp, options.folder, options.picture);
        else
            new Player(qApp, QString::fromStdString(options.keys));
    });
    if (options.host == kWakestone.program) return RunTrayLauncher(argc, argv);
    return RunHost(options.host == kTessaly.program ? kTessaly : kNorHalden, argc, argv);
}
