// norhalden: opens saved sessions in terminals, with the system's own clients.
#include "hosts/common/host.h"

int main(int argc, char** argv) {
    return connectdialog::hosts::RunHost(connectdialog::hosts::kNorHalden, argc, argv);
}
