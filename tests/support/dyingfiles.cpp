#include "support/dyingfiles.h"

#include <signal.h>
#include <sqlite3.h>
#include <type_traits>

namespace connectdialog::test {

namespace {

unsigned stepsLeft = 0;
sqlite3_vfs* realSystem = nullptr;

void Step() {
    if (--stepsLeft == 0) ::raise(SIGKILL);
}

/// The system's own file lies behind it in the same block.
struct CountedFile {
    sqlite3_file base;
    sqlite3_file* Real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};
sqlite3_file* Real(sqlite3_file* file) {
    return reinterpret_cast<CountedFile*>(file)->Real();
}

/// Forwards one method of a file, as a step or not.
template <auto method, bool isStep, class Signature>
struct Forward;
template <auto method, bool isStep, class... Arguments>
struct Forward<method, isStep, int (*)(sqlite3_file*, Arguments...)> {
    static int Call(sqlite3_file* file, Arguments... arguments) {
        if constexpr (isStep) Step();
        return (Real(file)->pMethods->*method)(Real(file), arguments...);
    }
};
template <auto method, bool isStep = false>
constexpr auto kForward =
    &Forward<method, isStep, std::remove_reference_t<decltype(sqlite3_io_methods{}.*method)>>::Call;

constexpr sqlite3_io_methods kMethods = {
    1,
    kForward<&sqlite3_io_methods::xClose>,
    kForward<&sqlite3_io_methods::xRead>,
    kForward<&sqlite3_io_methods::xWrite, true>,
    kForward<&sqlite3_io_methods::xTruncate, true>,
    kForward<&sqlite3_io_methods::xSync, true>,
    kForward<&sqlite3_io_methods::xFileSize>,
    kForward<&sqlite3_io_methods::xLock>,
    kForward<&sqlite3_io_methods::xUnlock>,
    kForward<&sqlite3_io_methods::xCheckReservedLock>,
    kForward<&sqlite3_io_methods::xFileControl>,
    kForward<&sqlite3_io_methods::xSectorSize>,
    kForward<&sqlite3_io_methods::xDeviceCharacteristics>,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

int OpenCounted(sqlite3_vfs* /*system*/, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    const int result = realSystem->xOpen(realSystem, name, Real(file), flags, outFlags);
    file->pMethods = Real(file)->pMethods != nullptr ? &kMethods : nullptr;
    return result;
}

int DeleteCounted(sqlite3_vfs* /*system*/, const char* name, int syncFolder) {
    Step();
    return realSystem->xDelete(realSystem, name, syncFolder);
}

}  // namespace

void DieAtFileStep(unsigned step) {
    static sqlite3_vfs counted;
    sqlite3_initialize();
    stepsLeft = step;
    realSystem = sqlite3_vfs_find(nullptr);
    counted = *realSystem;
    counted.zName = "dying";
    counted.szOsFile += static_cast<int>(sizeof(CountedFile));
    counted.xOpen = OpenCounted;
    counted.xDelete = DeleteCounted;
    sqlite3_vfs_register(&counted, 1);
}

}  // namespace connectdialog::test
