#include "connectdialog/treetransferrecord.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "profile/packedrecord.h"

namespace connectdialog {

namespace {

using TextField = std::array<char16_t, TreeTransferRecord::kTextLength + 1>;

void PutText(RecordWriter& writer, std::u16string_view text) {
    TextField field{};
    std::copy_n(text.begin(), std::min(text.size(), TreeTransferRecord::kTextLength), field.begin());
    for (const char16_t character : field) writer.Put(character);
}

VUnicodeString GetText(RecordReader& reader) {
    TextField field;
    for (char16_t& character : field) reader.Get(character);
    field.back() = 0;
    return VUnicodeString(field.data());
}

}  // namespace

std::vector<std::byte> TreeTransferRecord::Pack() const {
    std::vector<std::byte> block(kSize);
    RecordWriter writer(block);
    writer.Put(static_cast<std::uint64_t>(sourceItem));
    PutText(writer, sourcePath);
    PutText(writer, sourceLocation);
    writer.Put(std::uint32_t{isCut ? 1U : 0U});
    return block;
}

std::optional<TreeTransferRecord> TreeTransferRecord::Unpack(std::span<const std::byte> block) {
    if (block.size() != kSize) return std::nullopt;
    RecordReader reader(block);
    TreeTransferRecord record;
    std::uint64_t handle = 0;
    std::uint32_t flag = 0;
    reader.Get(handle);
    record.sourceItem = static_cast<TreeItem>(handle);
    record.sourcePath = GetText(reader);
    record.sourceLocation = GetText(reader);
    reader.Get(flag);
    record.isCut = flag != 0;
    return record;
}

}  // namespace connectdialog
