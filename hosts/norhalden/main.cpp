// norhalden: opens saved sessions in terminals, with the system's own clients.
#include "hosts/common/hostkind.h"
#include "sessiondb/runningsessions.h"

int main(int argc, char** argv) {
    using namespace connectdialog;
    constexpr hosts::HostKind kKind{"norhalden", u"NorHalden", kNorHaldenFrameClass, u"NorHalden - 连接",
                                    "Opens saved sessions in a terminal, each with its protocol's client."};
    return hosts::RunHost(kKind, argc, argv);
}
