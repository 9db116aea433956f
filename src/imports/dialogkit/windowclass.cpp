#include "imports/dialogkit/windowclass.h"

#include <list>

namespace connectdialog {

namespace {
std::list<WindowClass>& Classes() {
    static std::list<WindowClass> classes;
    return classes;
}
}  // namespace

std::uint32_t RegisterWindowClass(const WindowClass& windowClass) {
    if (windowClass.name.IsEmpty()) return 87;
    if (FindWindowClass(windowClass.name) != nullptr) return kClassAlreadyExists;
    Classes().push_back(windowClass);
    return 0;
}

const WindowClass* FindWindowClass(std::u16string_view name) {
    for (const WindowClass& known : Classes())
        if (known.name.EqualsNoCase(name)) return &known;
    return nullptr;
}

}  // namespace connectdialog
