// Finding the functions that an optional module exports.
#pragma once

#include <span>

#include "foundation/vreportmessageparams.h"

namespace connectdialog {

/// One function that is looked for in a module.
struct ModuleFunction {
    void** pointer;      ///< where its address goes; keeps its value when the function is not found
    const char* symbol;  ///< ASCII
    bool isOptional;     ///< a module without it is good all the same
    bool keepIfSet;      ///< a pointer that is set already stays
};

inline constexpr std::uint32_t kReportModuleNotLoaded = 0xE104003E;
inline constexpr std::uint32_t kReportSymbolNotFound = 0xE104003F;

/// Loads the module at `path`, fills the pointers from its exports and leaves it loaded for the life of the process.
/// Gives code 0 when all is well, also when the module does not load but every function is optional.
/// On failure: kReportModuleNotLoaded, or kReportSymbolNotFound for the first function that is missing and not optional
/// (and then the module is freed; pointers set before it keep what they got); the inserts are the path and the system's
/// error text.
VReportMessageParams LoadModuleFunctions(const VUnicodeString& path, std::span<const ModuleFunction> functions);

}  // namespace connectdialog
