#include "foundation/vacl.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

constexpr std::size_t kListHeader = 8;
constexpr std::size_t kListSizeOffset = 2;
constexpr std::size_t kCountOffset = 4;
constexpr std::size_t kEntryHeader = 4;
constexpr std::size_t kEntrySizeOffset = 2;
constexpr std::size_t kMaskOffset = 4;
constexpr std::size_t kSidOffset = 8;

constexpr std::uint8_t kLowestRevision = 2;
constexpr std::uint8_t kHighestRevision = 4;
/// Allow, deny, audit and alarm: an identifier follows the mask.
constexpr std::uint8_t kLastPlainType = 3;

std::uint16_t WordAt(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return LoadLittleEndian<std::uint16_t>(bytes.data() + offset);
}

/// Whether an entry begins the bytes. Gives its size, or 0.
std::size_t ValidEntrySize(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kEntryHeader) return 0;
    const std::size_t size = WordAt(bytes, kEntrySizeOffset);
    if (size < kEntryHeader || size > bytes.size()) return 0;
    if (bytes[0] > kLastPlainType) return size;
    return size >= kSidOffset && VSid().Load(bytes.first(size).subspan(kSidOffset)) ? size : 0;
}

/// Whether a list begins the bytes. Gives its size, or 0, and how much of that its entries use.
std::size_t ValidListSize(std::span<const std::uint8_t> bytes, std::size_t& used) {
    if (bytes.size() < kListHeader || bytes[0] < kLowestRevision || bytes[0] > kHighestRevision) return 0;
    const std::size_t size = WordAt(bytes, kListSizeOffset);
    if (size < kListHeader || size > bytes.size()) return 0;
    std::span<const std::uint8_t> rest = bytes.first(size).subspan(kListHeader);
    for (std::size_t left = WordAt(bytes, kCountOffset); left > 0; --left) {
        const std::size_t entrySize = ValidEntrySize(rest);
        if (entrySize == 0) return 0;
        rest = rest.subspan(entrySize);
    }
    used = size - rest.size();
    return size;
}

}  // namespace

VAcl::VAcl() : bytes(kListHeader), used(kListHeader) {
    bytes[0] = kLowestRevision;
    SetCounts(0);
}

bool VAcl::Load(std::span<const std::uint8_t> source) {
    std::size_t usedSize = 0;
    const std::size_t size = ValidListSize(source, usedSize);
    if (size == 0) return platform::FailWith(platform::kInvalidAcl);
    const std::vector<std::uint8_t> copy(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(size));
    bytes = copy;
    used = usedSize;
    return true;
}

std::size_t VAcl::GetCount() const {
    return WordAt(bytes, kCountOffset);
}

std::size_t VAcl::SizeAt(std::size_t offset) const {
    return WordAt(bytes, offset + kEntrySizeOffset);
}

std::size_t VAcl::OffsetOf(std::size_t index) const {
    std::size_t offset = kListHeader;
    for (; index > 0; --index) offset += SizeAt(offset);
    return offset;
}

VAclEntry VAcl::EntryAt(std::size_t offset) const {
    VAclEntry entry;
    entry.type = bytes[offset];
    entry.flags = bytes[offset + 1];
    if (entry.type > kLastPlainType) return entry;
    entry.mask = LoadLittleEndian<std::uint32_t>(bytes.data() + offset + kMaskOffset);
    entry.sid.Load(std::span(bytes).subspan(offset + kSidOffset));
    return entry;
}

bool VAcl::GetEntry(std::size_t index, VAclEntry& entry) const {
    if (index >= GetCount()) return platform::FailWith(platform::kInvalidParameter);
    entry = EntryAt(OffsetOf(index));
    return true;
}

/// The count as told, the size as it is.
void VAcl::SetCounts(std::size_t count) {
    StoreLittleEndian(static_cast<std::uint16_t>(bytes.size()), bytes.data() + kListSizeOffset);
    StoreLittleEndian(static_cast<std::uint16_t>(count), bytes.data() + kCountOffset);
}

bool VAcl::AddEntry(AccessKind kind, std::uint32_t mask, const VSid& sid) {
    if (!sid.IsValid()) return platform::FailWith(platform::kInvalidSid);
    const std::size_t offset = used;
    const std::size_t size = kSidOffset + sid.GetLength();
    if (offset + size > UINT16_MAX) return platform::FailWith(platform::kAllottedSpaceExceeded);
    bytes.resize(offset);  // unused room at the end of the list goes
    used = offset + size;
    bytes.resize(used);
    bytes[offset] = static_cast<std::uint8_t>(kind);
    StoreLittleEndian(static_cast<std::uint16_t>(size), bytes.data() + offset + kEntrySizeOffset);
    StoreLittleEndian(mask, bytes.data() + offset + kMaskOffset);
    std::ranges::copy(sid.GetBytes(), bytes.begin() + static_cast<std::ptrdiff_t>(offset + kSidOffset));
    SetCounts(GetCount() + 1);
    return true;
}

bool VAcl::ExtendEntry(std::size_t index, std::uint32_t mask) {
    VAclEntry entry;
    if (!GetEntry(index, entry)) return false;
    if (entry.type > kLastPlainType) return platform::FailWith(platform::kInvalidParameter);
    StoreLittleEndian(entry.mask | mask, bytes.data() + OffsetOf(index) + kMaskOffset);
    return true;
}

bool VAcl::RemoveEntry(std::size_t index) {
    const std::size_t count = GetCount();
    if (index >= count) return platform::FailWith(platform::kInvalidParameter);
    const std::size_t offset = OffsetOf(index);
    const std::size_t size = SizeAt(offset);
    const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
    bytes.erase(at, at + static_cast<std::ptrdiff_t>(size));
    used -= size;
    SetCounts(count - 1);
    return true;
}

}  // namespace connectdialog
