// tessaly: opens saved sessions for the transfer of files, with the system's own clients.
#include "hosts/common/host.h"

int main(int argc, char** argv) {
    return connectdialog::hosts::RunHost(connectdialog::hosts::kTessaly, argc, argv);
}
