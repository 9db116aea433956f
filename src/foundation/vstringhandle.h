// The reference-counted, copy-on-write buffer behind VUnicodeString and VNarrowString.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace connectdialog {

namespace Str {
/// Whether a buffer is zeroed when it is released. A property of the buffer, not of the handle.
enum class SensitiveState : std::int32_t { kPlain = 0, kSensitive = 1 };
}  // namespace Str

/// Stands immediately before the characters, in the same allocation.
struct VStringHeader {
    std::uint64_t capacity;  ///< bytes available for text, terminator included; 0 in the static empties
    std::uint64_t length;    ///< bytes of text, terminator excluded
    void* data;              ///< the address of the text
    Str::SensitiveState state;
    std::atomic<std::int32_t> references;  ///< handles on this buffer; below 0 they are not counted
};

/// A string literal that already stands in the form of a shared buffer, so that a string made from it allocates
/// nothing. Its handles are not counted: the buffer is never freed and never written.
template <class Char, std::size_t N>
struct VStaticString {
    VStringHeader header;
    Char text[N];

    constexpr explicit VStaticString(const Char (&literal)[N])
        : header{N * sizeof(Char), (N - 1) * sizeof(Char), nullptr, Str::SensitiveState::kPlain, -1}, text{} {
        for (std::size_t i = 0; i < N; ++i) text[i] = literal[i];
        header.data = text;
    }
};

/// The empty string of one state: like that of a literal its handles are not counted, so it is never freed or written,
/// and threads do not wait for each other's counting.
template <class Char>
struct VEmptyString {
    VStringHeader header;
    Char text[1];

    constexpr explicit VEmptyString(Str::SensitiveState state) : header{0, 0, text, state, -1}, text{} {}

    static VEmptyString plain;
    static VEmptyString sensitive;
};
template <class Char>
constinit VEmptyString<Char> VEmptyString<Char>::plain{Str::SensitiveState::kPlain};
template <class Char>
constinit VEmptyString<Char> VEmptyString<Char>::sensitive{Str::SensitiveState::kSensitive};

/// One pointer in size: the address of the first character of a zero-terminated, counted buffer.
///
/// Lengths and positions are counted in characters (code units). Copying shares the buffer and costs one atomic add, or
/// none for a literal; a write takes a private buffer first, of exactly the size that it needs. The rules of the
/// sensitive state:
///  - a copy shares the buffer and with it the state;
///  - assigning to a string that was sensitive makes a private sensitive copy of a plain source: what once held a
///    secret stays sensitive;
///  - appending a sensitive string makes the result sensitive;
///  - a private or larger buffer takes the state over, and Empty keeps it;
///  - a part of a string that is the whole string shares the buffer; a proper part is plain.
/// A sensitive buffer is zeroed, header and all, before it is freed: also the old one that a write leaves behind.
/// Handles on one buffer may be used on different threads; one handle may not.
template <class Char>
class VStringHandle {
  public:
    static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

    /// The plain static empty string: nothing is allocated.
    VStringHandle() noexcept : text(EmptyText(Str::SensitiveState::kPlain)) {}
    VStringHandle(const VStringHandle& other) noexcept : text(other.text) { AddReference(); }
    VStringHandle(VStringHandle&& other) noexcept : text(other.text) {
        other.text = EmptyText(Str::SensitiveState::kPlain);
    }
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): Assign does nothing for the same buffer
    VStringHandle& operator=(const VStringHandle& other) {
        Assign(other);
        return *this;
    }
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): a sensitive target copies
    VStringHandle& operator=(VStringHandle&& other) {
        if (IsSensitive())
            Assign(other);
        else
            std::swap(text, other.text);
        return *this;
    }
    ~VStringHandle() { ReleaseText(text); }

    /// Characters, terminator excluded.
    std::size_t GetLength() const { return Header().length / sizeof(Char); }
    /// Zero-terminated; valid until the string is next written or destroyed.
    const Char* GetData() const { return text; }
    bool IsEmpty() const { return Header().length < sizeof(Char); }
    bool IsSensitive() const { return Header().state == Str::SensitiveState::kSensitive; }
    Str::SensitiveState GetState() const { return Header().state; }
    std::basic_string_view<Char> View() const { return {text, GetLength()}; }
    operator std::basic_string_view<Char>() const { return View(); }  // NOLINT(google-explicit-constructor)

    /// Gives the buffer the state; a shared buffer is left to its other handles and a private one is taken first.
    void SetState(Str::SensitiveState state);
    void MarkSensitive() { SetState(Str::SensitiveState::kSensitive); }

    /// Clears the text and keeps the state.
    void Empty();
    /// The character at `position` for writing; takes a private buffer first.
    /// Requires: position <= GetLength() (the terminator may be written with zero only). There is no bounds test.
    Char& MutableAt(std::size_t position);
    /// A new buffer of exactly `count` characters, always allocated; keeps min(count, length) characters, the rest is
    /// zero.
    void Resize(std::size_t count);

    /// `count` characters of `characters` at the end; null appends nothing. `characters` may lie in this string.
    void Append(const Char* characters, std::size_t count);
    /// Appends the text; when `other` is sensitive the result is too.
    void Append(const VStringHandle& other);

  protected:
    VStringHandle(const Char* characters, std::size_t count);
    /// A handle on a static string; see VStaticString.
    explicit VStringHandle(VStringHeader* header) noexcept : text(static_cast<Char*>(header->data)) { AddReference(); }

    void Assign(const VStringHandle& other);
    /// The same from characters, which may lie in this string; null gives the empty string. The state stays.
    void Assign(const Char* characters, std::size_t count);
    /// The one way to write: afterwards the buffer is private and has room for `count` characters; the first
    /// min(count, length) characters are kept. Does not change the length.
    void Reserve(std::size_t count);
    /// Ends the text after `count` characters. Requires: Reserve(n) with n >= count came before.
    void SetLength(std::size_t count);
    /// The address of the first character for writing. Requires: Reserve came before.
    Char* MutableData() { return text; }
    VStringHeader& Header() const { return reinterpret_cast<VStringHeader*>(text)[-1]; }

  private:
    static Char* EmptyText(Str::SensitiveState state) noexcept {
        const bool isSensitive = state == Str::SensitiveState::kSensitive;
        return isSensitive ? VEmptyString<Char>::sensitive.text : VEmptyString<Char>::plain.text;
    }
    static Char* Allocate(std::size_t count, Str::SensitiveState state);
    static bool IsCounted(const std::atomic<std::int32_t>& references) {
        return references.load(std::memory_order_relaxed) >= 0;
    }
    static void ReleaseText(Char* text) noexcept {
        if (IsCounted(reinterpret_cast<VStringHeader*>(text)[-1].references)) ReleaseCounted(text);
    }
    static void ReleaseCounted(Char* text) noexcept;
    static void EndText(Char* text, std::size_t count);
    void AddReference() const noexcept {
        std::atomic<std::int32_t>& references = Header().references;
        if (IsCounted(references)) references.fetch_add(1, std::memory_order_relaxed);
    }
    /// Whether the buffer is private and has room for `count` characters.
    bool IsWritableFor(std::size_t count) const;
    /// A buffer of the same state that begins with min(count, length) characters of this one.
    Char* CopyWithRoomFor(std::size_t count) const;
    /// Goes over to a buffer whose reference the caller holds.
    void Take(Char* fresh) noexcept;
    void TakeEmpty(Str::SensitiveState state) noexcept;

    Char* text;
};

extern template class VStringHandle<char16_t>;
extern template class VStringHandle<char>;

}  // namespace connectdialog
