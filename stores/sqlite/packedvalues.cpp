#include "stores/sqlite/packedvalues.h"

#include <algorithm>

namespace connectdialog::stores {

namespace {
constexpr char kVersion = 1;
constexpr std::size_t kGarbageWorthDropping = 4096;

bool IsTag(std::uint32_t tag) {
    return tag >= static_cast<std::uint32_t>(ValueTag::kDword) && tag <= static_cast<std::uint32_t>(ValueTag::kStrings);
}

char* WriteHead(std::uint32_t step, std::uint32_t size, ValueTag tag, char* to) {
    return WriteVarint(size << 3 | static_cast<std::uint32_t>(tag), WriteVarint(step, to));
}
}  // namespace

void PackedValues::Clear() {
    bytes.clear();
    entries.clear();
    liveSize = 0;
}

bool PackedValues::Decode(std::string_view row) {
    Clear();
    if (row.empty() || row.size() > kMaxRowSize * 2 || row.front() != kVersion) return false;
    bytes = row;
    std::uint32_t id = 0;
    for (std::string_view rest = std::string_view(bytes).substr(1); !rest.empty();) {
        const char* const headBegin = rest.data();
        std::uint32_t step = 0;
        std::uint32_t head = 0;
        const bool isWhole = TakeVarint(rest, step) && TakeVarint(rest, head) && step != 0 && step <= UINT32_MAX - id;
        if (!isWhole || !IsTag(head & 7) || head >> 3 > rest.size()) {
            Clear();
            return false;
        }
        const std::uint32_t size = head >> 3;
        id += step;
        entries.push_back({id, static_cast<std::uint32_t>(bytes.size() - rest.size()), size, ValueTag(head & 7),
                           static_cast<std::uint8_t>(rest.data() - headBegin)});
        liveSize += size;
        rest.remove_prefix(size);
    }
    return true;
}

/// What lies as it does in a row, heads and values, is copied in one piece.
void PackedValues::Encode(std::string& row) const {
    row.resize(1 + entries.size() * 2 * kMaxVarintSize + liveSize);
    char* end = row.data();
    *end++ = kVersion;
    std::uint32_t previous = 0;
    std::size_t pieceBegin = 1;
    std::size_t pieceEnd = 1;
    const auto copyPiece = [&] { end = std::copy_n(bytes.data() + pieceBegin, pieceEnd - pieceBegin, end); };
    for (const Entry& entry : entries) {
        const bool continues = entry.headSize != 0 && entry.offset == pieceEnd + entry.headSize;
        if (!continues) {
            copyPiece();
            end = WriteHead(entry.id - previous, entry.size, entry.tag, end);
            pieceBegin = entry.offset;
        }
        pieceEnd = std::size_t{entry.offset} + entry.size;
        previous = entry.id;
    }
    copyPiece();
    row.resize(static_cast<std::size_t>(end - row.data()));
}

ValueView PackedValues::GetValue(std::size_t index) const {
    const Entry& entry = entries[index];
    return {entry.tag, std::string_view(bytes).substr(entry.offset, entry.size)};
}

std::size_t PackedValues::LowerBound(std::uint32_t id) const {
    if (entries.empty() || entries.back().id < id) return entries.size();  // values are mostly written in order
    const auto isBelow = [](const Entry& entry, std::uint32_t wanted) { return entry.id < wanted; };
    return static_cast<std::size_t>(std::lower_bound(entries.begin(), entries.end(), id, isBelow) - entries.begin());
}

std::size_t PackedValues::Find(std::uint32_t id) const {
    const std::size_t index = LowerBound(id);
    return index < entries.size() && entries[index].id == id ? index : kNone;
}

bool PackedValues::Set(std::uint32_t id, const ValueView& value) {
    const std::size_t index = LowerBound(id);
    if (index == entries.size()) {
        Append(id, value);
        return true;
    }
    const bool isNew = entries[index].id != id;
    if (isNew) {
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(index), Entry{id, 0, 0, value.tag, 0});
    } else if (entries[index].tag == value.tag && GetValue(index).bytes == value.bytes) {
        return false;
    }
    Entry& entry = entries[index];
    const auto size = static_cast<std::uint32_t>(value.bytes.size());
    if (size != entry.size || value.tag != entry.tag) entry.headSize = 0;
    liveSize = liveSize - entry.size + size;
    if (isNew || size > entry.size) {
        entry.offset = static_cast<std::uint32_t>(bytes.size());
        bytes.append(value.bytes);
    } else {
        value.bytes.copy(&bytes[entry.offset], size);
    }
    entry.size = size;
    entry.tag = value.tag;
    DropGarbage();
    return true;
}

/// Behind all others, as it will stand in the row.
void PackedValues::Append(std::uint32_t id, const ValueView& value) {
    if (bytes.empty()) bytes += kVersion;
    const auto size = static_cast<std::uint32_t>(value.bytes.size());
    char head[2 * kMaxVarintSize];
    const auto headSize = static_cast<std::uint8_t>(WriteHead(id - GetLastId(), size, value.tag, head) - head);
    bytes.append(head, headSize);
    entries.push_back({id, static_cast<std::uint32_t>(bytes.size()), size, value.tag, headSize});
    bytes += value.bytes;
    liveSize += size;
    DropGarbage();
}

void PackedValues::Remove(std::size_t index) {
    liveSize -= entries[index].size;
    // The step in the next head counts from the value that goes.
    if (index + 1 < entries.size()) entries[index + 1].headSize = 0;
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index));
    DropGarbage();
}

/// Keeps a value that is written again and again from growing the bytes without end.
void PackedValues::DropGarbage() {
    if (bytes.size() < liveSize * 2 + kGarbageWorthDropping) return;
    std::string row;
    Encode(row);
    Decode(row);
}

}  // namespace connectdialog::stores
