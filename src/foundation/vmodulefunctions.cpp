#include "foundation/vmodulefunctions.h"

#include <algorithm>

#include "platform/lasterror.h"
#include "platform/modules.h"

namespace connectdialog {

namespace {

VReportMessageParams MakeFailure(std::uint32_t code, const VUnicodeString& path) {
    VReportMessageParams failure(code);
    failure.AddInsert(path.GetData());
    failure.AddInsert(VReportMessageParams(platform::GetLastErrorCode()).GetText());
    return failure;
}

}  // namespace

VReportMessageParams LoadModuleFunctions(const VUnicodeString& path, std::span<const ModuleFunction> functions) {
    const ModuleHandle module = platform::LoadModule(path);
    if (module == nullptr) {
        const bool allOptional = std::ranges::all_of(functions, &ModuleFunction::isOptional);
        return allOptional ? VReportMessageParams() : MakeFailure(kReportModuleNotLoaded, path);
    }
    for (const ModuleFunction& function : functions) {
        if (function.keepIfSet && *function.pointer != nullptr) continue;
        if (void* address = platform::FindSymbol(module, function.symbol)) {
            *function.pointer = address;
        } else if (!function.isOptional) {
            VReportMessageParams failure = MakeFailure(kReportSymbolNotFound, path);
            platform::FreeModule(module);
            return failure;
        }
    }
    return {};
}

}  // namespace connectdialog
