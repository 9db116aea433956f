// Any bytes as a character map file: what it holds is what its lines say one by one.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "config/terminalmap.h"
#include "fuzz/memoryfile.h"
#include "fuzz/require.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

/// One entry by the rules of a line of ASCII: the hexadecimal number it begins with.
std::uint16_t EntryOf(const std::string& line) {
    char* end = nullptr;
    const unsigned long code = std::strtoul(line.c_str(), &end, 16);
    const bool isNegative = std::string_view(line.c_str(), end).find('-') != std::string_view::npos;
    return isNegative || code > UINT16_MAX ? 0 : static_cast<std::uint16_t>(code);
}

TerminalMap ExpectedMap(std::string_view bytes) {
    TerminalMap map{};
    std::size_t entry = 0;
    while (!bytes.empty() && entry < map.size()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        if (end != 0) map[entry++] = EntryOf(std::string(bytes.substr(0, end)));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return map;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile file;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    file.Write(bytes);
    const auto map = ReadTerminalMap(file.Name());
    Require(map != nullptr, "a small file is a map");
    bool isAscii = bytes.find('\0') == std::string_view::npos;
    for (const char c : bytes) isAscii = isAscii && static_cast<signed char>(c) >= 0;
    if (isAscii) Require(*map == ExpectedMap(bytes), "each line gives its entry");
    return 0;
}
