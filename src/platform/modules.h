// Modules: the units that code, resources and message tables belong to.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog {

/// Names a module while it is loaded. Null names none.
using ModuleHandle = void*;

namespace platform {

/// The library's own module. Never null.
ModuleHandle GetLibraryModule();

/// Loads the module at `path` (names joined by `\`).
/// On failure: null, and the platform's last error tells why (see platform/lasterror.h).
ModuleHandle LoadModule(std::u16string_view path);
/// Gives a module back that LoadModule loaded. Null does nothing.
void FreeModule(ModuleHandle module);

/// The address of an exported function or variable, or null with the last error set. `symbol` is ASCII.
void* FindSymbol(ModuleHandle module, const char* symbol);

/// The file that the module was loaded from, names joined by `\`. On failure: the empty string.
std::u16string GetModuleFile(ModuleHandle module);

/// The executable of this process, names joined by `\`. On failure: the empty string.
std::u16string GetExecutablePath();

}  // namespace platform
}  // namespace connectdialog
