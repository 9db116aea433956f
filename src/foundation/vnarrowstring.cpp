#include "foundation/vnarrowstring.h"

#include <algorithm>
#include <string>

#include "foundation/vunicodestring.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

std::string_view TextOf(const char* characters) {
    return characters != nullptr ? std::string_view(characters) : std::string_view();
}

}  // namespace

VNarrowString::VNarrowString(const char* characters) : VNarrowString(TextOf(characters)) {}
VNarrowString::VNarrowString(const char* characters, std::size_t count) : VStringHandle(characters, count) {}
VNarrowString::VNarrowString(std::string_view characters) : VStringHandle(characters.data(), characters.size()) {}
VNarrowString::VNarrowString(const char16_t* characters) {
    if (characters != nullptr) AppendWide(characters);
}
VNarrowString::VNarrowString(const char16_t* characters, std::size_t count) {
    if (characters != nullptr) AppendWide({characters, count});
}
VNarrowString::VNarrowString(const VUnicodeString& wide) {
    SetState(wide.GetState());
    AppendWide(wide);
}

void VNarrowString::AppendWide(std::u16string_view wide) {
    const std::size_t added = platform::WideToNarrow(wide, nullptr);
    if (added == 0) return;
    const std::size_t length = GetLength();
    Reserve(length + added);
    platform::WideToNarrow(wide, VStringHandle::MutableData() + length);
    VStringHandle::SetLength(length + added);
}

VNarrowString& VNarrowString::operator=(const char* characters) {
    return *this = TextOf(characters);
}
VNarrowString& VNarrowString::operator=(std::string_view characters) {
    Assign(characters.data(), characters.size());
    return *this;
}
VNarrowString& VNarrowString::operator+=(const VNarrowString& other) {
    Append(other);
    return *this;
}
VNarrowString& VNarrowString::operator+=(const char* characters) {
    return *this += TextOf(characters);
}
VNarrowString& VNarrowString::operator+=(std::string_view characters) {
    Append(characters.data(), characters.size());
    return *this;
}
VNarrowString& VNarrowString::operator+=(char character) {
    return *this += std::string_view(&character, 1);
}

VNarrowString VNarrowString::Left(std::size_t count) const {
    return Mid(0, count);
}

VNarrowString VNarrowString::Mid(std::size_t position, std::size_t count) const {
    if (position == 0 && count >= GetLength()) return *this;
    if (position >= GetLength()) return {};
    return {GetData() + position, std::min(count, GetLength() - position)};
}

std::size_t VNarrowString::FindChar(char character) const {
    return std::string_view(GetData()).find(character);
}
std::size_t VNarrowString::ReverseFind(char character) const {
    return std::string_view(GetData()).rfind(character);
}

void VNarrowString::SetLength(std::size_t count) {
    const std::size_t length = GetLength();
    if (count == 0) {
        Empty();
        return;
    }
    Reserve(count);
    if (count > length) std::fill_n(VStringHandle::MutableData() + length, count - length, '\0');
    VStringHandle::SetLength(count);
}

}  // namespace connectdialog
