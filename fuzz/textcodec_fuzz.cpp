// Any bytes as UTF-8, by the lenient codec of stored text and by the code page: counting and writing agree, what was
// decoded comes back, and text in pieces gives what the whole gives. The same bytes are UTF-16 for the other direction.
//
// The first byte says where the text is cut in two.
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "foundation/byteorder.h"
#include "foundation/stringerrors.h"
#include "foundation/utf8.h"
#include "fuzz/require.h"
#include "platform/codepage.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

/// Runs one of the lenient conversions into exactly `room` units; false when it threw.
template <class Convert, class Unit>
bool Converts(Convert convert, std::basic_string<Unit>* out, std::size_t room, Utf8Progress& progress) {
    if (out != nullptr) out->assign(room, Unit());
    try {
        convert(out != nullptr ? out->data() : nullptr, room, progress);
    } catch (const IllegalSequence&) {
        return false;
    } catch (const std::overflow_error&) {
        Require(out != nullptr, "counting needs no room");
        return false;
    }
    return true;
}

void TryDecode(std::string_view bytes) {
    const auto decode = [bytes](char16_t* out, std::size_t room, Utf8Progress& at) {
        DecodeUtf8(bytes, out, room, at);
    };
    Utf8Progress counted;
    const bool isGood = Converts<decltype(decode), char16_t>(decode, nullptr, 0, counted);
    std::u16string text;
    Utf8Progress written;
    Require(Converts(decode, &text, counted.written, written) == isGood, "writing goes as far as counting");
    Require(written.written == counted.written && written.consumed == counted.consumed, "counting and writing agree");
    Require(written.consumed <= bytes.size() && written.written <= bytes.size(), "decoding does not grow");
    if (counted.written > 0) {
        Utf8Progress less;
        Require(!Converts(decode, &text, counted.written - 1, less) && less.written < counted.written,
                "room is kept to");
    }
    const VUnicodeString wide = WideFromUtf8(VNarrowString(bytes));
    Require(wide.GetLength() == counted.written, "a string holds what was decoded");
    const VNarrowString narrow = Utf8FromWide(wide);
    if (!narrow.IsEmpty()) Require(WideFromUtf8(narrow) == wide, "what was encoded decodes again");
}

void TryEncode(std::u16string_view text) {
    const auto encode = [text](char* out, std::size_t room, Utf8Progress& at) { EncodeUtf8(text, out, room, at); };
    Utf8Progress counted;
    const bool isGood = Converts<decltype(encode), char>(encode, nullptr, 0, counted);
    std::string bytes;
    Utf8Progress written;
    Require(Converts(encode, &bytes, counted.written, written) == isGood, "encoding goes as far as counting");
    Require(written.written == counted.written && written.consumed == counted.consumed, "both count alike");
    if (isGood) Require(WideFromUtf8(VNarrowString(bytes)) == text, "a text comes back");
}

void TryCodePage(std::string_view bytes, std::size_t cut) {
    const std::u16string wide = platform::ToWide(bytes);
    Require(platform::NarrowToWide(bytes, nullptr) == wide.size(), "the count is what is written");
    const std::string narrow = platform::ToNarrow(wide);
    Require(platform::ToWide(narrow) == wide, "a converted text comes back");
    const std::string_view first = bytes.substr(0, cut);
    const std::size_t whole = platform::WholeNarrowLength(first);
    Require(whole <= first.size(), "a part is no longer than the text");
    Require(platform::ToWide(bytes.substr(0, whole)) + platform::ToWide(bytes.substr(whole)) == wide,
            "pieces give what the whole gives");
}

std::u16string WideOf(std::string_view bytes) {
    std::u16string text(bytes.size() / 2, u'\0');
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (std::size_t i = 0; i < text.size(); ++i) text[i] = LoadLittleEndian<char16_t>(data + 2 * i);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    TryDecode(bytes);
    TryCodePage(bytes, data[0]);
    const std::u16string text = WideOf(bytes);
    TryEncode(text);
    const std::u16string replaced = platform::ToWide(platform::ToNarrow(text));
    Require(replaced.size() == text.size(), "a lone surrogate is replaced by one character");
    return 0;
}
