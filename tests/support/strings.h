// Arrays of strings in one expression.
#pragma once

#include <initializer_list>

#include "foundation/vstringarray.h"

namespace connectdialog::test {

inline VStringArray Strings(std::initializer_list<const char16_t*> texts) {
    VStringArray array;
    for (const char16_t* text : texts) array.Add(text);
    return array;
}

}  // namespace connectdialog::test
