// Modules: the units that code, resources and message tables belong to.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog {

/// Names a module while it is loaded. Null names none.
using ModuleHandle = void*;

namespace platform {

// A handle stays valid from the LoadModule that gave it to the FreeModule that belongs to it. Another value than such a
// handle is no module: the functions below fail with the last error 6 and never follow it. They may be called from any
// thread.

/// The library's own module, or the executable's when it is linked into that. Never null; need not be freed.
ModuleHandle GetLibraryModule();

/// Loads the module at `path` (names joined by `\`); a name alone is looked up where the system keeps its libraries.
/// All its symbols are bound at once, and they are seen through the handle only. On failure: null, and the platform's
/// last error tells why (see platform/lasterror.h): 126 when it or something it needs is not found, 193 when the file
/// is no module.
ModuleHandle LoadModule(std::u16string_view path);
/// Gives a module back that LoadModule loaded; each call undoes one. Null does nothing.
void FreeModule(ModuleHandle module);

/// The address of an exported function or variable, or null with the last error 127. `symbol` is ASCII.
void* FindSymbol(ModuleHandle module, const char* symbol);

/// The file that the module was loaded from, names joined by `\`. On failure: the empty string.
std::u16string GetModuleFile(ModuleHandle module);

/// The executable of this process, names joined by `\`. On failure: the empty string.
std::u16string GetExecutablePath();

}  // namespace platform
}  // namespace connectdialog
