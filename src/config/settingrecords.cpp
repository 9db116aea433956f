#include "config/settingrecords.h"

#include <array>
#include <charconv>
#include <concepts>
#include <string>

#include "platform/codepage.h"
#include "profile/vlogfont.h"
#include "profile/vmargindata.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

namespace {

// Each calls `visit` with the numbers of a record, in its order, until one gives false.

bool VisitNumbers(VLogFont& font, auto visit) {
    return visit(font.height) && visit(font.width) && visit(font.escapement) && visit(font.orientation) &&
           visit(font.weight) && visit(font.italic) && visit(font.underline) && visit(font.strikeOut) &&
           visit(font.characterSet) && visit(font.outPrecision) && visit(font.clipPrecision) && visit(font.quality) &&
           visit(font.pitchAndFamily) && visit(font.size);
}

bool VisitNumbers(VWindowPlacement& place, auto visit) {
    VRectangle& normal = place.normal;
    return visit(place.length) && visit(place.flags) && visit(place.showState) && visit(place.minimized.x) &&
           visit(place.minimized.y) && visit(place.maximized.x) && visit(place.maximized.y) && visit(normal.left) &&
           visit(normal.top) && visit(normal.right) && visit(normal.bottom);
}

bool VisitNumbers(VMarginData& margins, auto visit) {
    return visit(margins.left) && visit(margins.top) && visit(margins.right) && visit(margins.bottom);
}

/// The text behind the numbers: only a font has one.
bool TakeRest(VLogFont& font, const std::string& rest) {
    const std::u16string face = platform::ToWide(rest);
    if (face.size() > VLogFont::kFaceLength) return false;
    font.SetFace(face);
    return true;
}
template <class Record>
bool TakeRest(Record&, const std::string& rest) {
    return rest.empty();
}

template <class Record>
std::string Format(Record record) {
    std::string text;
    VisitNumbers(record, [&](auto number) {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        if (!text.empty()) text += ',';
        text.append(digits.data(), end);
        return true;
    });
    if constexpr (std::same_as<Record, VLogFont>) text += ',' + platform::ToNarrow(record.GetFace());
    return text;
}

template <class Record>
bool Parse(const std::string& text, Record& record) {
    const char* next = text.data();
    const char* const end = text.data() + text.size();
    const bool areNumbers = VisitNumbers(record, [&](auto& number) {
        if (next != text.data() && (next == end || *next++ != ',')) return false;
        const auto [behind, error] = std::from_chars(next, end, number);
        next = behind;
        return error == std::errc();
    });
    if (!areNumbers) return false;
    if constexpr (std::same_as<Record, VLogFont>)
        if (next == end || *next++ != ',') return false;
    return TakeRest(record, std::string(next, end));
}

template <class Record>
using RecordSetting = VProfile2<Record, VProfileBinary>;

template <class Record>
bool Read(const VProfileData& setting, VUnicodeString& text) {
    const auto* record = dynamic_cast<const RecordSetting<Record>*>(&setting);
    if (record != nullptr) text = platform::ToWide(Format(record->Get()));
    return record != nullptr;
}

template <class Record>
bool Write(VProfileData& setting, const std::string& text) {
    auto* record = dynamic_cast<RecordSetting<Record>*>(&setting);
    if (record == nullptr) return false;
    Record value = record->Get();
    if (!Parse(text, value)) return false;
    record->Set(value);
    return true;
}

}  // namespace

bool ReadRecordText(const VProfileData& setting, VUnicodeString& text) {
    return Read<VLogFont>(setting, text) || Read<VWindowPlacement>(setting, text) || Read<VMarginData>(setting, text);
}

bool WriteRecordText(VProfileData& setting, std::u16string_view text) {
    const std::string narrow = platform::ToNarrow(text);
    return Write<VLogFont>(setting, narrow) || Write<VWindowPlacement>(setting, narrow) ||
           Write<VMarginData>(setting, narrow);
}

}  // namespace connectdialog
