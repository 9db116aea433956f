#include "foundation/vunicodestring.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "foundation/casefold.h"
#include "foundation/messageformat.h"
#include "foundation/numericcompare.h"
#include "foundation/vnarrowstring.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

std::u16string_view TextOf(const char16_t* characters) {
    return characters != nullptr ? std::u16string_view(characters) : std::u16string_view();
}
std::string_view TextOf(const char* characters) {
    return characters != nullptr ? std::string_view(characters) : std::string_view();
}

void CheckPosition(bool inside) {
    if (!inside) throw std::out_of_range("VString");
}

}  // namespace

VUnicodeString::VUnicodeString(const char16_t* characters) : VUnicodeString(TextOf(characters)) {}
VUnicodeString::VUnicodeString(const char16_t* characters, std::size_t count) : VStringHandle(characters, count) {}
VUnicodeString::VUnicodeString(std::u16string_view characters) : VStringHandle(characters.data(), characters.size()) {}
VUnicodeString::VUnicodeString(const char* characters) {
    AppendNarrow(TextOf(characters));
}
VUnicodeString::VUnicodeString(const char* characters, std::size_t count) {
    if (characters != nullptr) AppendNarrow({characters, count});
}
VUnicodeString::VUnicodeString(const VNarrowString& narrow) {
    SetState(narrow.GetState());
    AppendNarrow(narrow);
}
VUnicodeString::VUnicodeString(const VCountedText& counted)
    : VStringHandle(counted.text, counted.lengthInBytes / sizeof(char16_t)) {}

void VUnicodeString::AppendNarrow(std::string_view narrow) {
    const std::size_t added = platform::NarrowToWide(narrow, nullptr);
    if (added == 0) return;
    const std::size_t length = GetLength();
    Reserve(length + added);
    platform::NarrowToWide(narrow, MutableData() + length);
    SetLength(length + added);
}

VUnicodeString& VUnicodeString::operator=(const char16_t* characters) {
    return *this = TextOf(characters);
}
VUnicodeString& VUnicodeString::operator=(std::u16string_view characters) {
    Assign(characters.data(), characters.size());
    return *this;
}
VUnicodeString& VUnicodeString::operator=(const char* narrow) {
    Empty();
    return *this += narrow;
}
VUnicodeString& VUnicodeString::operator+=(const VUnicodeString& other) {
    Append(other);
    return *this;
}
VUnicodeString& VUnicodeString::operator+=(const char16_t* characters) {
    return *this += TextOf(characters);
}
VUnicodeString& VUnicodeString::operator+=(std::u16string_view characters) {
    Append(characters.data(), characters.size());
    return *this;
}
VUnicodeString& VUnicodeString::operator+=(const char* narrow) {
    AppendNarrow(TextOf(narrow));
    return *this;
}
VUnicodeString& VUnicodeString::operator+=(char16_t character) {
    return *this += std::u16string_view(&character, 1);
}

void VUnicodeString::BlankAt(std::size_t position) {
    CheckPosition(position < GetLength());
    MutableAt(position) = u' ';
}

void VUnicodeString::Erase(std::size_t position) {
    CheckPosition(position < GetLength());
    RemoveRun(position, 1);
}

void VUnicodeString::RemoveRun(std::size_t position, std::size_t count) {
    if (count == 0) return;
    const std::size_t rest = GetLength() - position - count;
    Reserve(GetLength());
    std::char_traits<char16_t>::move(MutableData() + position, GetData() + position + count, rest);
    SetLength(position + rest);
}

void VUnicodeString::Insert(std::size_t position, const char16_t* characters) {
    CheckPosition(position <= GetLength());
    const std::u16string_view inserted = TextOf(characters);
    if (inserted.empty()) return;
    const VUnicodeString old(*this);  // `characters` may lie in it
    const std::u16string_view rest = old.View().substr(position);
    Reserve(old.GetLength() + inserted.size());
    char16_t* place = MutableData() + position;
    place = std::copy(inserted.begin(), inserted.end(), place);
    std::copy(rest.begin(), rest.end(), place);
    SetLength(old.GetLength() + inserted.size());
}

std::size_t VUnicodeString::Find(const char16_t* characters, std::size_t from) const {
    CheckPosition(from <= GetLength());
    const std::size_t found = TextOf(GetData() + from).find(TextOf(characters));
    return found == std::u16string_view::npos ? kNotFound : from + found;
}

std::size_t VUnicodeString::FindChar(char16_t character, std::size_t from) const {
    return View().find(character, from);
}

std::int32_t VUnicodeString::FindChar32(char16_t character, std::int32_t from) const {
    const std::size_t found = from < 0 ? kNotFound : FindChar(character, static_cast<std::size_t>(from));
    return found <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(found) : -1;
}

std::size_t VUnicodeString::ReverseFind(char16_t character) const {
    return TextOf(GetData()).rfind(character);
}

VUnicodeString VUnicodeString::Left(std::size_t count) const {
    return Mid(0, count);
}

VUnicodeString VUnicodeString::Right(std::size_t count) const {
    return Mid(count < GetLength() ? GetLength() - count : 0, count);
}

VUnicodeString VUnicodeString::Mid(std::size_t position, std::size_t count) const {
    if (position == 0 && count >= GetLength()) return *this;
    if (position >= GetLength()) return {};
    return {GetData() + position, std::min(count, GetLength() - position)};
}

void VUnicodeString::MapCharacters(char16_t (*map)(char16_t)) {
    for (std::size_t i = 0; i < GetLength(); ++i) {
        const char16_t mapped = map(GetData()[i]);
        if (mapped != GetData()[i]) MutableAt(i) = mapped;
    }
}

void VUnicodeString::MakeUpper() {
    MapCharacters(ToUpper);
}
void VUnicodeString::MakeLower() {
    MapCharacters(ToLower);
}

void VUnicodeString::TrimLeft() {
    const std::u16string_view text = View();
    RemoveRun(0, static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsSpace) - text.begin()));
}

void VUnicodeString::TrimRight() {
    std::size_t length = GetLength();
    while (length > 0 && IsSpace(GetData()[length - 1])) --length;
    RemoveRun(length, GetLength() - length);
}

std::size_t VUnicodeString::Replace(const char16_t* oldText, const char16_t* newText) {
    const std::u16string_view removed = TextOf(oldText);
    const std::u16string_view added = TextOf(newText);
    const std::u16string_view text = TextOf(GetData());
    if (removed.empty()) return 0;
    std::size_t hits = 0;
    for (std::size_t at = 0; (at = text.find(removed, at)) != text.npos; at += removed.size()) ++hits;
    if (hits == 0) return 0;

    VUnicodeString replaced;
    replaced.SetState(GetState());
    replaced.Reserve(GetLength() - hits * removed.size() + hits * added.size());
    std::size_t done = 0;
    for (std::size_t at = 0; (at = text.find(removed, done)) != text.npos; done = at + removed.size()) {
        replaced += View().substr(done, at - done);
        replaced += added;
    }
    replaced += View().substr(done);
    *this = replaced;
    return hits;
}

void VUnicodeString::FormatList(const char16_t* messageTemplate, const FormatArgument* arguments, std::size_t count) {
    if (messageTemplate != nullptr) ExpandMessageInto(*this, messageTemplate, arguments, count, kMessagePlain);
}

int VUnicodeString::CompareNumeric(std::u16string_view other) const {
    return CompareNumericText(View(), other);
}

int VUnicodeString::CompareNoCase(std::u16string_view other) const {
    return connectdialog::CompareNoCase(View(), other);
}

VUnicodeString operator+(const VUnicodeString& a, const VUnicodeString& b) {
    VUnicodeString sum(a);
    sum += b;
    return sum;
}
VUnicodeString operator+(const VUnicodeString& a, const char16_t* b) {
    VUnicodeString sum(a);
    sum += b;
    return sum;
}
VUnicodeString operator+(const char16_t* a, const VUnicodeString& b) {
    return VUnicodeString(a) + b;
}
VUnicodeString operator+(const VUnicodeString& a, char16_t b) {
    VUnicodeString sum(a);
    sum += b;
    return sum;
}

}  // namespace connectdialog
