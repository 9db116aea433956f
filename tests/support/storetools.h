// Looking at whole stores.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "profile/vprofilekey.h"

namespace connectdialog::test {

/// What DumpStore looks for in every key: a store does not tell which values a key has.
using ValueNames = std::vector<std::u16string>;

/// One line a key, in the order of the store, with its kind and those values of `names` that it has: whole stores are
/// compared by it. Code units beyond ASCII are escaped.
std::string DumpStore(VProfileStoreFactory& factory, const ValueNames& names);

std::string Escape(std::u16string_view text);

/// Code of the latest operation.
std::uint32_t CodeOf(VProfileKey& key);

/// Runs `use` with the key at `path` of the default store, open for writing.
void WithKey(const char16_t* path, const std::function<void(VProfileKey&)>& use);

/// One unit: writes a dword to each value of a key. Gives what Close gave.
[[nodiscard]] bool WriteDwords(VProfileStoreFactory& factory, const char16_t* path,
                               std::initializer_list<const char16_t*> names, std::uint32_t value);
/// Reads a dword with a store of its own; `absent` when there is none.
std::uint32_t ReadDwordOr(VProfileStoreFactory& factory, const char16_t* path, const char16_t* name,
                          std::uint32_t absent);

/// The text of the value "V", or "(absent)".
VUnicodeString StoredText(VProfileKey& key);

}  // namespace connectdialog::test
