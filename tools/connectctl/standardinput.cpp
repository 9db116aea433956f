#include "tools/connectctl/standardinput.h"

#include <cstdio>

#include "foundation/vnarrowstring.h"

namespace connectdialog::connectctl {

namespace {
constexpr std::size_t kMostBytes = 1 << 20;
}  // namespace

Failure ReadStandardInput(VNarrowString& text) {
    text.MarkSensitive();
    text.SetLength(kMostBytes + 1);
    // Without a buffer of its own: nobody would wipe it.
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    const std::size_t size = std::fread(text.MutableData(), 1, kMostBytes + 1, stdin);
    if (std::ferror(stdin) != 0) return "standard input cannot be read";
    if (size > kMostBytes) return "standard input holds more than " + std::to_string(kMostBytes) + " bytes";
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
