// The text type of the whole system: reference-counted UTF-16 with a sensitive state.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "foundation/formatargument.h"
#include "foundation/varray.h"
#include "foundation/vstringhandle.h"

namespace connectdialog {

class VNarrowString;

/// Text by length in bytes and address, as platform records carry it. The text need not be terminated.
struct VCountedText {
    std::uint16_t lengthInBytes;
    const char16_t* text;
};

/// A character is one UTF-16 code unit. See VStringHandle for the rules of sharing and of the sensitive state.
///
/// Positions and lengths count characters. Narrow text is UTF-8; malformed input becomes U+FFFD.
/// On failure: an operation with a position throws std::out_of_range("VString") where it says so; nothing else throws.
class VUnicodeString : public VStringHandle<char16_t> {
  public:
    VUnicodeString() = default;
    /// Zero-terminated text; null gives the empty string.
    VUnicodeString(const char16_t* characters);  // NOLINT(google-explicit-constructor): text converts freely
    VUnicodeString(const char16_t* characters, std::size_t count);
    VUnicodeString(std::u16string_view characters);  // NOLINT(google-explicit-constructor)
    /// Narrow text, converted; null gives the empty string.
    explicit VUnicodeString(const char* characters);
    VUnicodeString(const char* characters, std::size_t count);
    /// Converts and keeps the state.
    explicit VUnicodeString(const VNarrowString& narrow);
    explicit VUnicodeString(const VCountedText& counted);
    /// A handle on a static string; `u"..."_v` makes one.
    template <std::size_t N>
    explicit VUnicodeString(VStaticString<char16_t, N>& fixed) noexcept : VStringHandle(&fixed.header) {}

    VUnicodeString& operator=(const char16_t* characters);
    VUnicodeString& operator=(std::u16string_view characters);
    VUnicodeString& operator=(const char* narrow);
    VUnicodeString& operator=(char16_t character) { return *this = std::u16string_view(&character, 1); }
    VUnicodeString& operator+=(const VUnicodeString& other);
    VUnicodeString& operator+=(const char16_t* characters);
    VUnicodeString& operator+=(std::u16string_view characters);
    VUnicodeString& operator+=(const char* narrow);
    VUnicodeString& operator+=(char16_t character);

    char16_t operator[](std::size_t position) const { return GetData()[position]; }

    /// Throws when position >= length.
    void BlankAt(std::size_t position);
    /// Removes one character. Throws when position + 1 > length.
    void Erase(std::size_t position);
    /// Throws when position > length. Null inserts nothing.
    void Insert(std::size_t position, const char16_t* characters);

    /// The position of the zero-terminated `characters` at or behind `from`, or kNotFound. The search ends at the first
    /// zero character. Throws when from > length.
    std::size_t Find(const char16_t* characters, std::size_t from = 0) const;
    std::size_t FindChar(char16_t character, std::size_t from = 0) const;
    /// The same as 32 bits; -1 when absent.
    std::int32_t FindChar32(char16_t character, std::int32_t from = 0) const;
    /// The last occurrence before the first zero character, or kNotFound.
    std::size_t ReverseFind(char16_t character) const;

    VUnicodeString Left(std::size_t count) const;
    VUnicodeString Right(std::size_t count) const;
    VUnicodeString Mid(std::size_t position) const { return Mid(position, kNotFound); }
    VUnicodeString Mid(std::size_t position, std::size_t count) const;

    void MakeUpper();
    void MakeLower();
    void TrimLeft();
    void TrimRight();

    /// Replaces each occurrence of `oldText`, left to right; a null `newText` deletes. An empty `oldText` is never
    /// found. Gives the number of replacements.
    std::size_t Replace(const char16_t* oldText, const char16_t* newText);

    /// Sets the string to a message template with its inserts put in: `%1`, `%2!d!`, `%1!02X!`, `%1!hs!`, `%3!lu!`;
    /// see foundation/messageformat.h. A template with an insert that has no argument gives its own text; on any other
    /// failure the string stays as it was.
    template <class... Arguments>
    void Format(const char16_t* messageTemplate, const Arguments&... arguments) {
        const FormatArgument list[] = {FormatArgument(arguments)..., FormatArgument()};
        FormatList(messageTemplate, list, sizeof...(Arguments));
    }
    void FormatList(const char16_t* messageTemplate, const FormatArgument* arguments, std::size_t count);

    /// Without regard to case: -1, 0 or 1 (by character, then by length).
    int CompareNoCase(std::u16string_view other) const;
    bool EqualsNoCase(std::u16string_view other) const { return CompareNoCase(other) == 0; }
    /// Orders names with numbers in them: negative, 0 or positive. Looks at the first character of both texts and at
    /// numbers that stand at the same offset, and at nothing else; see CompareNumericText.
    int CompareNumeric(std::u16string_view other) const;

    // Ordinal; a shorter text that is a prefix sorts first. Friends, so that they are candidates for strings alone.
    friend bool operator==(const VUnicodeString& a, const VUnicodeString& b) {
        return a.GetData() == b.GetData() || a == b.View();
    }
    friend bool operator==(const VUnicodeString& a, std::u16string_view b) {
        if (a.GetLength() != b.size()) return false;
        return b.empty() || std::memcmp(a.GetData(), b.data(), b.size() * sizeof(char16_t)) == 0;
    }
    friend bool operator==(const VUnicodeString& a, const char16_t* b) {
        return b != nullptr ? a == std::u16string_view(b) : a.IsEmpty();
    }
    friend std::strong_ordering operator<=>(const VUnicodeString& a, const VUnicodeString& b) {
        return a.View() <=> b.View();
    }

  protected:
    void AppendNarrow(std::string_view narrow);

  private:
    void RemoveRun(std::size_t position, std::size_t count);
    void MapCharacters(char16_t (*map)(char16_t));
};

VUnicodeString operator+(const VUnicodeString& a, const VUnicodeString& b);
VUnicodeString operator+(const VUnicodeString& a, const char16_t* b);
VUnicodeString operator+(const char16_t* a, const VUnicodeString& b);
VUnicodeString operator+(const VUnicodeString& a, char16_t b);

template <>
inline constexpr bool kMovesAsBytes<VUnicodeString> = true;

namespace detail {
template <std::size_t N>
struct FixedText {
    char16_t characters[N];
    // NOLINTNEXTLINE(google-explicit-constructor): a literal becomes a template argument through it
    consteval FixedText(const char16_t (&literal)[N]) {
        for (std::size_t i = 0; i < N; ++i) characters[i] = literal[i];
    }
};
template <FixedText literal>
inline constinit VStaticString fixedString{literal.characters};
}  // namespace detail

/// A string on a static buffer, made without an allocation: `key.SetName(u"Use Title Bar"_v)`.
template <detail::FixedText literal>
VUnicodeString operator""_v() {
    return VUnicodeString(detail::fixedString<literal>);
}

}  // namespace connectdialog
