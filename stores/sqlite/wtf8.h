// How names are written into the database.
//
// A name may have any code units, lone surrogates too. For people and tools it is kept in UTF-8 that encodes a lone
// surrogate like any other character, in three bytes (WTF-8, https://simonsapin.github.io/wtf-8/); every text of code
// units comes back as it was. For comparison the folded name is kept as big-endian code units: bytes then order as code
// units do, which UTF-8 does not.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog::stores {

std::string EncodeWtf8(std::u16string_view text);
/// Bytes that are no encoding of a text become U+FFFD. Replaces `text`.
void DecodeWtf8(std::string_view bytes, std::u16string& text);

std::string EncodeBigEndian(std::u16string_view text);
/// An odd byte at the end is dropped.
std::u16string DecodeBigEndian(std::string_view bytes);

}  // namespace connectdialog::stores
