#include "platform/registeredmessage.h"

namespace connectdialog::platform {

namespace {

constexpr std::uint32_t kFirstNumber = 0xC000;
constexpr std::uint32_t kNumberBits = 14;

std::uint32_t HashByte(std::uint32_t hash, std::uint32_t byte) {
    return (hash ^ byte) * 16777619u;
}

}  // namespace

std::uint32_t GetRegisteredMessage(std::u16string_view name) {
    if (name.empty()) return 0;
    std::uint32_t hash = 2166136261u;
    for (const char16_t character : name) {
        const std::uint32_t unit = character >= u'A' && character <= u'Z' ? character + 32u : character;
        hash = HashByte(HashByte(hash, unit & 0xFF), unit >> 8);
    }
    return kFirstNumber + ((hash ^ (hash >> kNumberBits)) & ((1u << kNumberBits) - 1));
}

}  // namespace connectdialog::platform
