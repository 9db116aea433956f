// A text as it crosses module borders: a small interface behind which each side has a string class of its own.
#pragma once

#include <cstddef>

#include "foundation/vstringhandle.h"

namespace connectdialog {

/// A text that another module fills in or reads; VUnicodeStringI is the implementation.
///
/// Counts are characters (wide) or bytes (narrow, UTF-8). An assign replaces the text and takes the state as given,
/// also when a sensitive text becomes a plain one; the old text is wiped if it was sensitive. The appends keep the
/// state and do nothing on a null pointer. The characters may lie in the string itself.
class IString {
  public:
    virtual ~IString() = default;
    virtual bool IsEmpty() const = 0;
    virtual void Assign(const char16_t* characters, std::size_t count, Str::SensitiveState state) = 0;
    virtual void Assign(const char* characters, std::size_t count, Str::SensitiveState state) = 0;
    virtual void Assign(const char16_t* characters, Str::SensitiveState state) = 0;
    virtual void Assign(const char* characters, Str::SensitiveState state) = 0;
    /// Assigns this text and its state to `other`.
    virtual void CopyTo(IString& other) const = 0;
    virtual void Append(const char* characters, std::size_t count) = 0;
    virtual void Append(const char16_t* characters, std::size_t count) = 0;
    virtual void Append(const char* characters) = 0;
    virtual void Append(const char16_t* characters) = 0;
};

}  // namespace connectdialog
