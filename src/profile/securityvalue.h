// Security descriptors as values of a key, the same for keys of every kind.
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/vsecuritydescriptor.h"
#include "foundation/vstringarray.h"

namespace connectdialog {

/// Reads a value that is a list of rules or, failing that, a binary self-relative descriptor. `Key` has
/// ReadMultiString, ReadBinary and GetLastReport as IProfileKeyImpl has them. On failure: false, and the key's report
/// has the reading's own code, 1338 for bytes that are no descriptor, or 13 with the insert that
/// VSecurityDescriptor::LoadRules gives. Only with 13 the descriptor changes: it has the other rules.
template <class Key>
bool ReadSecurityValue(Key& key, const char16_t* name, VSecurityDescriptor& descriptor) {
    VStringArray rules;
    if (key.ReadMultiString(name, rules)) {
        const bool isRead = descriptor.LoadRules(rules);
        *key.GetLastReport() = *descriptor.GetLastReport();
        return isRead;
    }
    std::uint32_t size = 0;
    if (!key.ReadBinary(name, nullptr, size)) return false;
    std::vector<std::uint8_t> bytes(size);
    if (!key.ReadBinary(name, bytes.data(), size)) return false;
    bytes.resize(size);
    const bool isRead = descriptor.LoadSelfRelative(bytes);
    *key.GetLastReport() = *descriptor.GetLastReport();
    return isRead;
}

/// Writes the self-relative form as a binary value. On failure: as WriteBinary.
template <class Key>
bool WriteSecurityValue(Key& key, const char16_t* name, const VSecurityDescriptor& descriptor) {
    const std::vector<std::uint8_t> bytes = descriptor.MakeSelfRelative();
    return key.WriteBinary(name, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

}  // namespace connectdialog
