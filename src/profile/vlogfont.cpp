#include "profile/vlogfont.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <tuple>

#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "profile/packedrecord.h"

namespace connectdialog {

namespace {

constexpr char16_t kPresentMark[] = u" v2";

constexpr std::size_t kNumbersSize = 5 * sizeof(std::int32_t) + 8 * sizeof(std::uint8_t);
static_assert(VLogFont::kStoredSize == kNumbersSize + VLogFont::kFaceLength * sizeof(char16_t) + sizeof(std::int32_t));
static_assert(VLogFont::kNarrowStoredSize == kNumbersSize + VLogFont::kFaceLength + sizeof(std::int32_t));

constexpr std::int32_t kRegularWeight = 400;
constexpr std::uint8_t kDefaultCharacterSet = 1;
constexpr std::uint8_t kFixedPitch = 1;
constexpr std::int64_t kTenthsOfAPointPerInch = 720;
constexpr std::int64_t kPixelsPerInch = 96;

/// Calls `visit` with each number before the face, in the order of the record.
template <class Font>
void VisitNumbers(Font& font, auto visit) {
    for (auto* number : {&font.height, &font.width, &font.escapement, &font.orientation, &font.weight}) visit(*number);
    for (auto* byte : {&font.italic, &font.underline, &font.strikeOut, &font.characterSet, &font.outPrecision,
                       &font.clipPrecision, &font.quality, &font.pitchAndFamily})
        visit(*byte);
}

}  // namespace

VLogFont::VLogFont(std::int32_t pixelHeight, std::u16string_view faceName)
    : weight(kRegularWeight), characterSet(kDefaultCharacterSet), pitchAndFamily(kFixedPitch) {
    const std::int64_t pixels = pixelHeight;  // the most negative number has no counterpart in 32 bits
    height = static_cast<std::int32_t>(-pixels);
    size = static_cast<std::int32_t>(std::abs(pixels) * kTenthsOfAPointPerInch / kPixelsPerInch);
    SetFace(faceName);
}

std::u16string_view VLogFont::GetFace() const {
    return {face.begin(), std::ranges::find(face, u'\0')};
}

void VLogFont::SetFace(std::u16string_view faceName) {
    face.fill(u'\0');
    std::ranges::copy(faceName.substr(0, kFaceLength), face.begin());
}

void VLogFont::Pack(std::span<std::byte, kStoredSize> record) const {
    RecordWriter writer(record);
    VisitNumbers(*this, [&](auto number) { writer.Put(number); });
    for (const char16_t character : face) writer.Put(character);
    writer.Put(size);
}

VLogFont VLogFont::Unpack(std::span<const std::byte, kStoredSize> record) {
    VLogFont font;
    RecordReader reader(record);
    VisitNumbers(font, [&](auto& number) { reader.Get(number); });
    for (char16_t& character : font.face) reader.Get(character);
    reader.Get(font.size);
    return font;
}

VLogFont VLogFont::UnpackNarrow(std::span<const std::byte, kNarrowStoredSize> record) {
    VLogFont font;
    RecordReader reader(record);
    VisitNumbers(font, [&](auto& number) { reader.Get(number); });
    std::string name(kFaceLength, '\0');
    for (char& character : name) reader.Get(character);
    name.resize(std::min(name.find('\0'), name.size()));
    font.SetFace(platform::ToWide(std::string_view(name).substr(0, platform::WholeNarrowLength(name))));
    reader.Get(font.size);
    return font;
}

bool operator==(const VLogFont& a, const VLogFont& b) {
    const auto numbers = [](const VLogFont& font) {
        return std::tie(font.height, font.width, font.escapement, font.orientation, font.weight, font.italic,
                        font.underline, font.strikeOut, font.characterSet, font.outPrecision, font.clipPrecision,
                        font.quality, font.pitchAndFamily, font.size);
    };
    // What stands behind the end of a face does not count, and is mostly the same.
    return numbers(a) == numbers(b) && (a.face == b.face || a.GetFace() == b.GetFace());
}

bool VProfileLogFont::Read(VProfileKey* key) {
    if (VProfile2::Read(key)) return true;
    const std::size_t mark = GetName().Find(kPresentMark);
    if (mark == VUnicodeString::kNotFound) return false;
    std::array<std::byte, VLogFont::kNarrowStoredSize> record;
    if (!ReadRecord(key, GetName().Left(mark), record)) return false;
    Edit() = VLogFont::UnpackNarrow(record);
    return true;
}

}  // namespace connectdialog
