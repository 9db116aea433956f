#include "foundation/vstringarray.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/ibuffer.h"

namespace connectdialog {

namespace {

constexpr std::uint64_t kNumberSize = sizeof(std::uint32_t);

bool AppendNumber(IBuffer& buffer, std::uint64_t number, std::uint64_t extra) {
    std::uint8_t bytes[kNumberSize];
    StoreBigEndian(static_cast<std::uint32_t>(number), bytes);
    return buffer.Append(bytes, sizeof(bytes), extra) != nullptr;
}

bool AppendText(IBuffer& buffer, std::u16string_view text, std::uint64_t extra) {
    std::uint8_t* place = buffer.Append(nullptr, text.size() * sizeof(char16_t), extra);
    if (place == nullptr) return false;
    for (const char16_t character : text) {
        StoreLittleEndian(character, place);
        place += sizeof(char16_t);
    }
    buffer.SetDataLength(buffer.GetDataLength() + text.size() * sizeof(char16_t));
    return true;
}

VUnicodeString LoadText(const std::uint8_t* bytes, std::uint32_t count) {
    VUnicodeString text;
    if (count == 0) return text;
    text.Resize(count);
    char16_t* characters = &text.MutableAt(0);
    for (std::uint32_t i = 0; i < count; ++i) characters[i] = LoadLittleEndian<char16_t>(bytes + i * sizeof(char16_t));
    return text;
}

}  // namespace

void VStringArray::Append(const VStringArray& other) {
    const VStringArray added(other);  // it may be this array
    strings.InsertRun(strings.GetCount(), added.strings.GetData(), added.GetCount());
}

std::uint32_t VStringArray::FindExact(std::u16string_view text) const {
    const auto* found = std::find_if(begin(), end(), [text](const VUnicodeString& s) { return s.View() == text; });
    return found != end() ? static_cast<std::uint32_t>(found - begin()) : kNotFound;
}

bool VStringArray::WriteTo(IBuffer* buffer) const {
    if (buffer == nullptr) return false;
    std::uint64_t left = 0;
    for (const VUnicodeString& text : strings) left += text.GetLength() * sizeof(char16_t) + kNumberSize;
    if (left > UINT32_MAX || !AppendNumber(*buffer, left, left)) return false;
    for (const VUnicodeString& text : strings) {
        const std::uint64_t size = text.GetLength() * sizeof(char16_t);
        left -= kNumberSize;
        if (!AppendNumber(*buffer, size, left)) return false;
        left -= size;
        if (!AppendText(*buffer, text, left)) return false;
    }
    return true;
}

bool VStringArray::ReadFrom(const IBuffer* buffer) {
    Clear();
    if (buffer == nullptr || buffer->GetDataLength() < kNumberSize) return false;
    const std::uint8_t* at = buffer->GetData();
    std::uint64_t left = LoadBigEndian<std::uint32_t>(at);
    if (left + kNumberSize > buffer->GetDataLength()) return false;
    at += kNumberSize;
    while (left != 0) {
        const std::uint64_t size = left >= kNumberSize ? LoadBigEndian<std::uint32_t>(at) : left;
        if (left < kNumberSize || size > left - kNumberSize) {
            Clear();
            return false;
        }
        at += kNumberSize;
        Add(LoadText(at, static_cast<std::uint32_t>(size / sizeof(char16_t))));
        at += size;
        left -= kNumberSize + size;
    }
    return true;
}

bool operator==(const VStringArray& a, const VStringArray& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

}  // namespace connectdialog
