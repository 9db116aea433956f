// One argument of a message template, type-safe: the closed set of what Format takes.
#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>

namespace connectdialog {

class VUnicodeString;
class VNarrowString;

/// A value for a positional insert. It refers to text, it does not copy it: it lives for one call.
class FormatArgument {
  public:
    enum class Kind : std::uint8_t { kNone, kSigned, kUnsigned, kDouble, kWide, kNarrow };

    FormatArgument() = default;
    template <std::signed_integral T>
    explicit FormatArgument(T value)
        : kind(Kind::kSigned), byteWidth(sizeof(T)), bits(static_cast<std::uint64_t>(std::int64_t{value})) {}
    template <std::unsigned_integral T>
    explicit FormatArgument(T value) : kind(Kind::kUnsigned), byteWidth(sizeof(T)), bits(value) {}
    /// One character, for `!c!`.
    explicit FormatArgument(char16_t character) : kind(Kind::kUnsigned), byteWidth(2), bits(character) {}
    explicit FormatArgument(double value) : kind(Kind::kDouble), number(value) {}
    /// Zero-terminated text; null stands for "(null)".
    explicit FormatArgument(const char16_t* text)
        : kind(Kind::kWide), wide(text != nullptr ? std::u16string_view(text) : std::u16string_view(u"(null)")) {}
    explicit FormatArgument(std::u16string_view text) : kind(Kind::kWide), wide(text) {}
    explicit FormatArgument(const char* text)
        : kind(Kind::kNarrow), narrow(text != nullptr ? std::string_view(text) : std::string_view("(null)")) {}
    explicit FormatArgument(std::string_view text) : kind(Kind::kNarrow), narrow(text) {}
    explicit FormatArgument(const VUnicodeString& text);
    explicit FormatArgument(const VNarrowString& text);

    Kind GetKind() const { return kind; }
    std::int64_t AsSigned() const { return static_cast<std::int64_t>(bits); }
    std::uint64_t AsUnsigned() const { return bits; }
    /// Bytes of the integer type given: a negative number prints as hexadecimal in that width.
    std::uint8_t GetByteWidth() const { return byteWidth; }
    double AsDouble() const { return number; }
    std::u16string_view AsWide() const { return wide; }
    std::string_view AsNarrow() const { return narrow; }

  private:
    Kind kind = Kind::kNone;
    std::uint8_t byteWidth = 0;
    std::uint64_t bits = 0;
    double number = 0;
    std::u16string_view wide;
    std::string_view narrow;
};

}  // namespace connectdialog
