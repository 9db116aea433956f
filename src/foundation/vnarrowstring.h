// The byte-string twin of VUnicodeString.
#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/vstringhandle.h"

namespace connectdialog {

class VUnicodeString;

/// Narrow text is UTF-8; positions and lengths count bytes. See VStringHandle for the rules of sharing and of the
/// sensitive state. Nothing here throws.
class VNarrowString : public VStringHandle<char> {
  public:
    VNarrowString() = default;
    /// Zero-terminated text; null gives the empty string.
    VNarrowString(const char* characters);  // NOLINT(google-explicit-constructor): text converts freely
    VNarrowString(const char* characters, std::size_t count);
    VNarrowString(std::string_view characters);  // NOLINT(google-explicit-constructor)
    /// Wide text, converted (see platform/codepage.h); null gives the empty string.
    explicit VNarrowString(const char16_t* characters);
    VNarrowString(const char16_t* characters, std::size_t count);
    /// Converts and keeps the state.
    explicit VNarrowString(const VUnicodeString& wide);

    VNarrowString& operator=(const char* characters);
    VNarrowString& operator=(std::string_view characters);
    VNarrowString& operator+=(const VNarrowString& other);
    VNarrowString& operator+=(const char* characters);
    VNarrowString& operator+=(std::string_view characters);
    VNarrowString& operator+=(char character);

    char operator[](std::size_t position) const { return GetData()[position]; }

    VNarrowString Left(std::size_t count) const;
    VNarrowString Mid(std::size_t position, std::size_t count = kNotFound) const;

    /// The first occurrence before the first zero byte, or kNotFound. The zero character is never found.
    std::size_t FindChar(char character) const;
    /// The last occurrence before the first zero byte, or kNotFound.
    std::size_t ReverseFind(char character) const;

    /// Makes the string `count` bytes long; bytes that are new are zero.
    void SetLength(std::size_t count);
    /// The bytes from `offset` on for writing, after taking a private buffer; valid until the string is next written.
    /// Requires: offset <= GetLength().
    char* MutableData(std::size_t offset = 0) { return &MutableAt(offset); }

    friend bool operator==(const VNarrowString& a, const VNarrowString& b) { return a.View() == b.View(); }
    friend bool operator==(const VNarrowString& a, std::string_view b) { return a.View() == b; }
    friend bool operator==(const VNarrowString& a, const char* b) {
        return b != nullptr ? a.View() == std::string_view(b) : a.IsEmpty();
    }

  private:
    void AppendWide(std::u16string_view wide);
};

}  // namespace connectdialog
