// Images of toolbar buttons that are files of their own.
#pragma once

#include <cstddef>
#include <map>
#include <string_view>

#include "menutoolbar/vmenutoolbaritem.h"

namespace connectdialog {

/// Larger ones are refused before they are read. Bytes.
inline constexpr std::size_t kLargestMenuImage = std::size_t{4} << 20;

/// Makes images out of the bytes of image files: a back end of the dialogs has one.
class IMenuImageDecoder {
  public:
    virtual ~IMenuImageDecoder() = default;
    /// The image at its own size, or null for what is none. The bytes are untrusted and at most kLargestMenuImage; how
    /// many pixels they may ask for is the decoder's to bound. They are gone after the call.
    virtual VMenuBitmap Decode(std::string_view bytes) = 0;
};

/// Installs the back end's decoder, which stays the caller's; null removes it. Without one, what begins like a BMP,
/// PNG, GIF, JPEG or ICO file is an image, which no back end can show.
void InstallMenuImageDecoder(IMenuImageDecoder* decoder);

/// The image files of one description. Each is loaded once, however many buttons name it.
class MenuImages {
  public:
    /// The image of that file. On failure: null with the last error: 5 for what is no regular file, 13 when it is no
    /// image, 223 when it is too large or the files of the description are too large together.
    VMenuBitmap Load(const VUnicodeString& fileName);

  private:
    /// Bytes.
    static constexpr std::size_t kMostTogether = std::size_t{64} << 20;

    std::size_t bytesLeft = kMostTogether;
    std::map<VUnicodeString, VMenuBitmap> images;
};

}  // namespace connectdialog
