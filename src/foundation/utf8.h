// The UTF-8 codec of stored and exchanged text.
//
// It is lenient where old data needs it: a byte from 0x80 to 0xBF in front of a character stands for the character of
// that value, overlong forms and surrogates in three bytes are decoded, and a lone low surrogate is encoded. It is
// stricter than platform/codepage.h in that it stops at what it cannot read, instead of writing U+FFFD.
#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/vnarrowstring.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// How far a conversion came: up to the end, or up to where it threw.
struct Utf8Progress {
    std::size_t consumed = 0;  ///< units of the input
    std::size_t written = 0;   ///< units of the output
};

/// Decodes `input` to UTF-16 at `out`, which has room for `room` units; with a null `out` it only counts. An unfinished
/// sequence at the end of the input is left unconsumed and is no failure.
/// On failure: throws IllegalSequence for malformed input or a code point above U+10FFFF, std::overflow_error
/// ("VDecodeUTF8") when a character does not fit; `progress` tells what was done before.
void DecodeUtf8(std::string_view input, char16_t* out, std::size_t room, Utf8Progress& progress);

/// Encodes `input` at `out`, which has room for `room` bytes; with a null `out` it only counts. Ends when the next
/// sequence does not fit.
/// On failure: throws IllegalSequence for a high surrogate without a low one behind it.
void EncodeUtf8(std::u16string_view input, char* out, std::size_t room, Utf8Progress& progress);

/// The text up to the first thing that cannot be decoded. Keeps the sensitive state. Throws nothing.
VUnicodeString WideFromUtf8(const VNarrowString& utf8);
/// Keeps the sensitive state. On failure: the empty string, when a high surrogate has no low one behind it.
VNarrowString Utf8FromWide(const VUnicodeString& wide);

}  // namespace connectdialog
