#include "foundation/vunicodestringi.h"

#include <string_view>

namespace connectdialog {

void VUnicodeStringI::StartOver(Str::SensitiveState state) {
    Empty();
    SetState(state);
}

void VUnicodeStringI::Assign(const char16_t* characters, std::size_t count, Str::SensitiveState state) {
    const VUnicodeString old(*this);  // the characters may lie in it
    StartOver(state);
    Append(characters, count);
}
void VUnicodeStringI::Assign(const char* characters, std::size_t count, Str::SensitiveState state) {
    StartOver(state);
    Append(characters, count);
}
void VUnicodeStringI::Assign(const char16_t* characters, Str::SensitiveState state) {
    const VUnicodeString old(*this);
    StartOver(state);
    Append(characters);
}
void VUnicodeStringI::Assign(const char* characters, Str::SensitiveState state) {
    StartOver(state);
    Append(characters);
}

void VUnicodeStringI::CopyTo(IString& other) const {
    other.Assign(GetData(), GetLength(), GetState());
}

void VUnicodeStringI::Append(const char* characters, std::size_t count) {
    if (characters != nullptr) AppendNarrow({characters, count});
}
void VUnicodeStringI::Append(const char16_t* characters, std::size_t count) {
    VUnicodeString::Append(characters, count);
}
void VUnicodeStringI::Append(const char* characters) {
    *this += characters;
}
void VUnicodeStringI::Append(const char16_t* characters) {
    *this += characters;
}

}  // namespace connectdialog
