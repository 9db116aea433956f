// tessaly: opens saved sessions for the transfer of files, with the system's own clients.
#include "hosts/common/hostkind.h"
#include "sessiondb/runningsessions.h"

int main(int argc, char** argv) {
    using namespace connectdialog;
    constexpr hosts::HostKind kKind{"tessaly", u"Tessaly", kTessalyFrameClass, u"Tessaly - 连接",
                                    "Opens saved sessions for the transfer of files, each with its protocol's client."};
    return hosts::RunHost(kKind, argc, argv);
}
