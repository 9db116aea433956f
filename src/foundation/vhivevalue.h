// A value of a settings hive, and what it holds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

class VStringArray;

/// Types of values that mean something to the library; a hive may hold any other number.
enum HiveValueType : std::uint32_t {
    kHiveString = 1,
    kHiveExpandString = 2,
    kHiveBinary = 3,
    kHiveDword = 4,
    kHiveMultiString = 7,
};

/// A value as it is stored: text as UTF-16 little-endian with its terminator, a dword as four bytes, low byte first, a
/// list as its texts with theirs and one zero more.
struct VHiveValue {
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
    bool operator==(const VHiveValue&) const = default;

    /// A text of the type 1 or 2.
    static VHiveValue OfText(std::uint32_t type, std::u16string_view text);
    static VHiveValue OfList(const VStringArray& texts);
    static VHiveValue OfDword(std::uint32_t number);

    /// Adds characters at the end of the data, and no terminator.
    void Append(std::u16string_view characters);
    /// The data as whole characters; a last odd byte is left out.
    std::u16string GetCharacters() const;
    /// The characters up to the first zero, or all.
    std::u16string GetText() const;
    /// Adds each text of a list, empty ones too; the zero at the end of the list is no text.
    void AddTextsTo(VStringArray& texts) const;
    /// False, and `number` stays, when the data is not four bytes.
    bool GetDword(std::uint32_t& number) const;
};

}  // namespace connectdialog
