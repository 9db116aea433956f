// An array of strings.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/varray.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

class IBuffer;

/// Indices and counts are elements. Comparison is exact, element by element.
class VStringArray {
  public:
    /// FindExact's answer for an absent text: all ones.
    static constexpr std::uint32_t kNotFound = 0xFFFFFFFF;

    VStringArray() = default;

    std::uint64_t GetCount() const { return strings.GetCount(); }
    bool IsEmpty() const { return strings.IsEmpty(); }
    /// Throws VArray<VUnicodeString>::OutOfRange when index >= count.
    VUnicodeString& operator[](std::uint64_t index) { return strings[index]; }
    const VUnicodeString& operator[](std::uint64_t index) const { return strings[index]; }
    const VUnicodeString* begin() const { return strings.begin(); }
    const VUnicodeString* end() const { return strings.end(); }

    void Add(VUnicodeString text) { strings.Add(std::move(text)); }
    /// Before `index`, which may be the count; above it, throws OutOfRange.
    void Insert(std::uint64_t index, VUnicodeString text) { strings.Insert(index, std::move(text)); }
    void RemoveAt(std::uint64_t index) { strings.RemoveAt(index); }
    void Clear() { strings.Clear(); }
    /// Adds each element of `other` at the end.
    void Append(const VStringArray& other);

    /// The index of the first element that is exactly `text`, or kNotFound.
    std::uint32_t FindExact(std::u16string_view text) const;

    /// Writes the array's binary form at the end of `buffer`: a 32-bit big-endian count of all bytes that follow, then
    /// for each string its length in bytes (32 bits, big-endian) and its characters (UTF-16 little-endian).
    /// On failure: false for a null buffer or as soon as the buffer refuses.
    bool WriteTo(IBuffer* buffer) const;
    /// Replaces the array with what `buffer` holds in that form.
    /// On failure: false, and the array is empty, when the buffer is null, too short or an item passes its end.
    bool ReadFrom(const IBuffer* buffer);

  private:
    VArray<VUnicodeString> strings;
};

bool operator==(const VStringArray& a, const VStringArray& b);

}  // namespace connectdialog
