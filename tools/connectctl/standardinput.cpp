#include "tools/connectctl/standardinput.h"

#include <cstdio>

#include "foundation/vnarrowstring.h"

namespace connectdialog::connectctl {

Failure ReadStandardInput(VNarrowString& text, std::size_t most) {
    text.MarkSensitive();
    text.SetLength(most + 1);
    // Without a buffer of its own: nobody would wipe it.
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    const std::size_t size = std::fread(text.MutableData(), 1, most + 1, stdin);
    if (std::ferror(stdin) != 0) return "standard input cannot be read";
    if (size > most) return "standard input holds more than " + std::to_string(most) + " bytes";
    text.SetLength(size);
    if (text.View().find('\0') != std::string_view::npos) return "standard input is no text: it holds a zero";
    return kDone;
}

void DropLineEnd(VNarrowString& text) {
    std::size_t length = text.GetLength();
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r')) --length;
    text.SetLength(length);
}

}  // namespace connectdialog::connectctl
