// Any bytes as a settings hive: reading ends, and what was read is written so that it reads the same again. No
// character takes part of a file away: one that is read without faults has none either when its zeros are letters.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/vhivereader.h"
#include "foundation/vhivewriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace connectdialog;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    VHiveTree tree;
    const bool isGood = ReadHive(bytes, tree).empty();
    std::string visible(bytes);
    std::replace(visible.begin(), visible.end(), '\0', 'x');
    VHiveTree seen;
    if (isGood && !tree.isWide && !ReadHive(visible, seen).empty()) std::abort();
    const std::string written = WriteHive(tree);
    VHiveTree again;
    const bool isWhole = ReadHive(written, again).empty();
    if (!isWhole || WriteHive(again) != written) std::abort();
    VHiveTree imported;
    ReadHive(bytes, imported, u"HKEY_CURRENT_USER");
    return 0;
}
