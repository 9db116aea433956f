// The tagged value that settings exchange with scripts, and its conversions.
#pragma once

#include <cstdint>
#include <memory>
#include <variant>

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The documented type codes.
enum class VVariantType : std::uint16_t {
    kEmpty = 0,
    kInt16 = 2,
    kText = 8,
    kBool = 11,
    kUInt16 = 18,
    kUInt32 = 19,
    kInt = 22,
    kUInt = 23,
    kArray = 8204,           ///< one dimension of variants, lower bound 0
    kArrayReference = 16396  ///< refers to an array that somebody else owns
};

/// A value with its type. Copies are deep, but for kArrayReference.
class VVariant {
  public:
    using Array = VArray<VVariant>;

    VVariant() = default;
    /// An integer of one of the number types or a bool; the value is truncated to the type. A bool is -1 or 0.
    VVariant(VVariantType type, std::int64_t number);
    explicit VVariant(VUnicodeString text) : type(VVariantType::kText), value(std::move(text)) {}
    explicit VVariant(Array array) : type(VVariantType::kArray), value(std::move(array)) {}
    /// Requires: `array` outlives this value. Null refers to nothing and converts to nothing.
    explicit VVariant(const Array* array) : type(VVariantType::kArrayReference), value(array) {}

    VVariantType GetType() const { return type; }
    /// The number of a number type or a bool (-1 or 0); 0 for the others.
    std::int64_t GetNumber() const;
    /// The text of kText; empty for the others.
    VUnicodeString GetText() const;
    /// The array of kArray or what kArrayReference refers to; null for the others.
    const Array* GetArray() const;

    /// Converts a value to a number type, kBool or kText: an empty value is 0 or the empty text; a text is a decimal
    /// number with white space around it, or for kBool also "True" or "False" in any case; a bool becomes -1 or 0, in
    /// an unsigned type all ones or 0, as a text "-1" or "0"; a number becomes true when it is not 0. On failure:
    /// false, and `result` stays: an array, a text that is no number, a value outside the type's range.
    static bool Convert(const VVariant& source, VVariantType type, VVariant& result);

  private:
    VVariantType type = VVariantType::kEmpty;
    std::variant<std::int64_t, VUnicodeString, Array, const Array*> value{std::int64_t{0}};
};

/// An array of texts as a variant, and back. An element with an empty value gives an empty text.
VVariant VariantFromStrings(const VStringArray& strings);
/// On failure: false, and `strings` stays, when `source` is no array or an element cannot be made a text.
bool StringsFromVariant(const VVariant& source, VStringArray& strings);

}  // namespace connectdialog
