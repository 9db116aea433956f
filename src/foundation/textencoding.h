// The encodings of text files: their marks, and the way from bytes to characters and back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace connectdialog {

/// How text stands in a file. Stored and passed as these numbers.
enum class TextEncoding : std::uint32_t {
    kUnknown = 0,  ///< to be found by the mark
    kLocal = 1,    ///< the narrow encoding of the system (see platform/codepage.h); what a file without a mark has
    kUtf8 = 2,
    kUtf16Le = 3,
    kUtf16Be = 4,
    kUtf32Le = 5  ///< for writing only: its mark begins like that of kUtf16Le, and is read as that
};

/// The bytes that a file of this encoding begins with; empty for the first two.
std::string_view MarkOf(TextEncoding encoding);

/// The encoding of a file by its first bytes: never kUnknown or kUtf32Le. Three bytes are enough.
TextEncoding DetectEncoding(std::string_view start);

struct DecodedText {
    std::size_t consumed = 0;  ///< bytes of the input
    std::size_t written = 0;   ///< units of the output
    bool isMalformed = false;  ///< no character begins at `consumed`: UTF-8 only, what is malformed in kLocal is U+FFFD
};

/// Decodes whole characters from the start of `bytes`. What is cut off at the end is left for the next call, which
/// gets it again with what follows; when nothing follows (`isLast`), kLocal gives U+FFFD for it. kUnknown and kUtf32Le
/// are never decoded. UTF-16 is not looked into: lone surrogates come out as they are.
/// Requires: `out` has room for as many units as there are bytes.
DecodedText DecodeText(TextEncoding encoding, std::string_view bytes, bool isLast, char16_t* out);

/// Sets `bytes` to the text, without a mark. kUnknown counts as kUtf16Le. Lone surrogates become U+FFFD in kLocal and
/// kUtf32Le and stay as they are in UTF-16.
/// On failure: false, in kUtf8 for a high surrogate without its low one; `bytes` is empty.
bool EncodeText(TextEncoding encoding, std::u16string_view text, std::string& bytes);

}  // namespace connectdialog
