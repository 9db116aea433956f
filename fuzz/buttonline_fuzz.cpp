// Any text as the line of a button: outer blanks do not count, and the parts of a button written again read the same.
#include <cstdint>
#include <string>

#include "fuzz/require.h"
#include "menutoolbar/buttonline.h"

using namespace connectdialog;
using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::u16string line;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        const auto character = static_cast<char16_t>(data[i] | data[i + 1] << 8);
        if (character != 0) line += character;  // a stored line ends at the first zero
    }
    const UserButton button = DecodeButtonLine(VUnicodeString(line));
    Require(DecodeButtonLine(VUnicodeString(u" \t" + line + u"\t ")).text == button.text, "outer blanks do not count");
    std::u16string label;
    for (std::size_t i = 0; i < button.text.GetLength(); ++i) {
        if (button.text.View().substr(i, 2) == u"\r\n")
            ++i;
        else
            label += button.text.View()[i];
    }
    Require(button.label == label, "the label is the text without its line breaks");
    if (button.function == UserButton::kNoFunction) return 0;

    const UserButton copy = DecodeButtonLine(EncodeButtonLine(button));
    Require(copy.function == button.function || button.function == UserButton::kUnknownFunction,
            "the function is written by its name");
    Require(copy.text == button.text && copy.argument1 == button.argument1 && copy.argument2 == button.argument2 &&
                copy.argument3 == button.argument3,
            "what was read reads the same again");
    return 0;
}
