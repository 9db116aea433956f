#include "support/dyingfiles.h"

#include <csignal>
#include <sqlite3.h>
#include <unistd.h>

namespace connectdialog::test {

namespace {

unsigned stepsLeft = 0;

void Step() {
    if (--stepsLeft == 0) ::raise(SIGKILL);
}

ssize_t Write(int file, const void* bytes, std::size_t count) {
    Step();
    return ::write(file, bytes, count);
}
ssize_t WriteAt(int file, const void* bytes, std::size_t count, off_t offset) {
    Step();
    return ::pwrite(file, bytes, count, offset);
}
int Truncate(int file, off_t size) {
    Step();
    return ::ftruncate(file, size);
}
int Unlink(const char* path) {
    Step();
    return ::unlink(path);
}

}  // namespace

void DieAtFileStep(unsigned step) {
    sqlite3_initialize();
    stepsLeft = step;
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const auto replace = [files](const char* name, auto function) {
        files->xSetSystemCall(files, name, reinterpret_cast<sqlite3_syscall_ptr>(function));
    };
    replace("write", Write);
    replace("pwrite", WriteAt);
    replace("pwrite64", WriteAt);
    replace("ftruncate", Truncate);
    replace("unlink", Unlink);
}

}  // namespace connectdialog::test
