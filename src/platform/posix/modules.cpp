#include "platform/modules.h"

#include <algorithm>
#include <climits>
#include <dlfcn.h>
#include <link.h>
#include <mutex>
#include <unistd.h>
#include <vector>

#include "platform/lasterror.h"
#include "platform/paths.h"

namespace connectdialog::platform {

namespace {

struct LoadedModule {
    ModuleHandle handle;
    std::u16string file;
    int references;
};

/// The modules whose handles were given out. A handle that does not stand here is not passed on to the system, which
/// would follow it whatever it is.
class ModuleList {
  public:
    void Add(ModuleHandle handle, std::u16string file) {
        const std::lock_guard lock(mutex);
        if (LoadedModule* module = Find(handle)) {
            ++module->references;
        } else {
            modules.push_back({handle, std::move(file), 1});
        }
    }
    bool Remove(ModuleHandle handle) {
        const std::lock_guard lock(mutex);
        LoadedModule* module = Find(handle);
        if (module == nullptr) return FailWith(kInvalidHandle);
        if (--module->references == 0) modules.erase(modules.begin() + (module - modules.data()));
        return true;
    }
    bool GetFile(ModuleHandle handle, std::u16string& file) {
        const std::lock_guard lock(mutex);
        const LoadedModule* module = Find(handle);
        if (module == nullptr) return FailWith(kInvalidHandle);
        file = module->file;
        return true;
    }

  private:
    LoadedModule* Find(ModuleHandle handle) {
        const auto found = std::find_if(modules.begin(), modules.end(),
                                        [handle](const LoadedModule& module) { return module.handle == handle; });
        return found != modules.end() ? &*found : nullptr;
    }

    std::mutex mutex;
    std::vector<LoadedModule> modules;
};

/// Never destroyed: modules may be asked for until the process ends.
ModuleList& Modules() {
    static ModuleList& list = *new ModuleList();
    return list;
}

std::u16string FileOf(void* handle) {
    link_map* map = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, static_cast<void*>(&map)) != 0 || map->l_name[0] == '\0') return {};
    return FromNativePath(map->l_name);
}

/// Null when this code is part of the executable.
void* OpenOwnLibrary() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&GetLibraryModule), &info) == 0 || info.dli_fname == nullptr) return nullptr;
    return dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
}

ModuleHandle RegisterLibraryModule() {
    void* handle = OpenOwnLibrary();
    std::u16string file = handle != nullptr ? FileOf(handle) : std::u16string();
    if (handle == nullptr) handle = dlopen(nullptr, RTLD_LAZY);
    if (file.empty()) file = GetExecutablePath();
    Modules().Add(handle, std::move(file));
    return handle;
}

}  // namespace

ModuleHandle GetLibraryModule() {
    static const ModuleHandle module = RegisterLibraryModule();
    return module;
}

ModuleHandle LoadModule(std::u16string_view path) {
    const std::string nativePath = ToNativePath(path);
    // An empty name would stand for the executable.
    void* handle = nativePath.empty() ? nullptr : dlopen(nativePath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const bool isFile = nativePath.find('/') != nativePath.npos && access(nativePath.c_str(), F_OK) == 0;
        SetLastErrorCode(isFile ? kBadExecutable : kModuleNotFound);
        return nullptr;
    }
    Modules().Add(handle, FileOf(handle));
    return handle;
}

void FreeModule(ModuleHandle module) {
    if (module != nullptr && module != GetLibraryModule() && Modules().Remove(module)) dlclose(module);
}

void* FindSymbol(ModuleHandle module, const char* symbol) {
    std::u16string file;
    if (!Modules().GetFile(module, file)) return nullptr;
    void* address = dlsym(module, symbol);
    if (address == nullptr) SetLastErrorCode(kSymbolNotFound);
    return address;
}

std::u16string GetModuleFile(ModuleHandle module) {
    std::u16string file;
    Modules().GetFile(module, file);
    return file;
}

std::u16string GetExecutablePath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    if (length < 0) {
        FailFromErrno();
        return {};
    }
    const std::string found(path, static_cast<std::size_t>(length));
    // What the kernel adds once the file was replaced or removed, as an update does while the program runs.
    constexpr std::string_view kRemoved = " (deleted)";
    const bool isRemoved = found.ends_with(kRemoved) && access(found.c_str(), F_OK) != 0;
    return FromNativePath(isRemoved ? found.substr(0, found.size() - kRemoved.size()) : found);
}

}  // namespace connectdialog::platform
