// A font as it is chosen: a face and how it is drawn.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "profile/vprofile2.h"

namespace connectdialog {

/// The published wide font record and behind it the size: 96 bytes.
struct VLogFont {
    static constexpr std::size_t kStoredSize = 96;
    /// The same with a narrow face name, as it was once stored.
    static constexpr std::size_t kNarrowStoredSize = 64;
    static constexpr std::size_t kFaceLength = 32;

    VLogFont() = default;
    /// A regular font of `pixelHeight` pixels; its size is that of a screen with 96 pixels an inch. A face name of more
    /// than 32 characters is cut.
    VLogFont(std::int32_t pixelHeight, std::u16string_view faceName);

    std::int32_t height = 0;  ///< pixels; negative: of the characters without the room above them
    std::int32_t width = 0;
    std::int32_t escapement = 0;
    std::int32_t orientation = 0;
    std::int32_t weight = 0;
    std::uint8_t italic = 0;
    std::uint8_t underline = 0;
    std::uint8_t strikeOut = 0;
    std::uint8_t characterSet = 0;
    std::uint8_t outPrecision = 0;
    std::uint8_t clipPrecision = 0;
    std::uint8_t quality = 0;
    std::uint8_t pitchAndFamily = 0;
    std::array<char16_t, kFaceLength> face{};  ///< ends at its first zero, if it has one
    std::int32_t size = 0;                     ///< tenths of a point

    std::u16string_view GetFace() const;
    void SetFace(std::u16string_view faceName);

    void Pack(std::span<std::byte, kStoredSize> record) const;
    static VLogFont Unpack(std::span<const std::byte, kStoredSize> record);
    /// A face name that is empty, or cut within a character, keeps what is whole.
    static VLogFont UnpackNarrow(std::span<const std::byte, kNarrowStoredSize> record);

    /// By size, every other field and the face up to its end.
    friend bool operator==(const VLogFont& a, const VLogFont& b);
};

/// Stored under a name with ` v2` in it; the name before that is where older versions keep theirs, which is read when
/// the present one is absent and never written.
class VProfileLogFont : public VProfile2<VLogFont, VProfileBinary> {
  public:
    bool Read(VProfileKey* key) override;
};

}  // namespace connectdialog
