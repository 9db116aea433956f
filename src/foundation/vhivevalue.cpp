#include "foundation/vhivevalue.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/vstringarray.h"

namespace connectdialog {

namespace {
constexpr std::u16string_view kTerminator(u"\0", 1);
}

VHiveValue VHiveValue::OfText(std::uint32_t type, std::u16string_view text) {
    VHiveValue value{type, {}};
    value.data.reserve((text.size() + 1) * 2);
    value.Append(text);
    value.Append(kTerminator);
    return value;
}

VHiveValue VHiveValue::OfList(const VStringArray& texts) {
    VHiveValue value{kHiveMultiString, {}};
    for (const VUnicodeString& text : texts) {
        value.Append(text.GetData());  // up to a zero within it, which would end it for every reader
        value.Append(kTerminator);
    }
    value.Append(kTerminator);
    return value;
}

VHiveValue VHiveValue::OfDword(std::uint32_t number) {
    VHiveValue value{kHiveDword, std::vector<std::uint8_t>(sizeof number)};
    StoreLittleEndian(number, value.data.data());
    return value;
}

void VHiveValue::Append(std::u16string_view characters) {
    const std::size_t start = data.size();
    data.resize(start + characters.size() * 2);
    for (std::size_t i = 0; i < characters.size(); ++i) StoreLittleEndian(characters[i], data.data() + start + 2 * i);
}

std::u16string VHiveValue::GetCharacters() const {
    std::u16string characters(data.size() / 2, u'\0');
    for (std::size_t i = 0; i < characters.size(); ++i) {
        characters[i] = LoadLittleEndian<char16_t>(data.data() + 2 * i);
    }
    return characters;
}

std::u16string VHiveValue::GetText() const {
    std::u16string text = GetCharacters();
    text.resize(std::min(text.find(u'\0'), text.size()));
    return text;
}

void VHiveValue::AddTextsTo(VStringArray& texts) const {
    const std::u16string characters = GetCharacters();
    for (std::u16string_view list = characters; !list.empty();) {
        const std::size_t length = std::min(list.find(u'\0'), list.size());
        const bool isLast = length + 1 >= list.size();
        if (length == 0 && isLast) return;
        texts.Add(VUnicodeString(list.substr(0, length)));
        list.remove_prefix(isLast ? list.size() : length + 1);
    }
}

bool VHiveValue::GetDword(std::uint32_t& number) const {
    if (data.size() != sizeof number) return false;
    number = LoadLittleEndian<std::uint32_t>(data.data());
    return true;
}

}  // namespace connectdialog
