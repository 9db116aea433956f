// wakestone: the saved sessions in a menu of the desktop's tray.
#include "hosts/common/traylauncher.h"

int main(int argc, char** argv) {
    return connectdialog::hosts::RunTrayLauncher(argc, argv);
}
