#include "menutoolbar/menuimage.h"

#include <algorithm>
#include <string>

#include "foundation/vfile.h"
#include "platform/lasterror.h"

namespace connectdialog {

namespace {

using namespace std::string_view_literals;

/// What the files of each format begin with.
constexpr std::string_view kSignatures[] = {
    "BM"sv, "\x89PNG\r\n\x1A\n"sv, "GIF87a"sv, "GIF89a"sv, "\xFF\xD8\xFF"sv, "\0\0\1\0"sv,
};

/// Knows images by their first bytes.
class SignatureDecoder : public IMenuImageDecoder {
  public:
    VMenuBitmap Decode(std::string_view bytes) override {
        const auto begins = [&](std::string_view signature) { return bytes.starts_with(signature); };
        return std::ranges::any_of(kSignatures, begins) ? std::make_shared<const VIcon>() : nullptr;
    }
};

SignatureDecoder signatureDecoder;
IMenuImageDecoder* installed = &signatureDecoder;

bool ReadWhole(const VUnicodeString& fileName, std::size_t mostBytes, std::string& bytes) {
    VFile file;
    file.SetShareMode(platform::kShareRead);
    std::uint64_t size = 0;
    if (!file.Open(fileName, platform::kGenericRead, platform::kOpenExisting) ||
        !file.Seek(0, platform::SeekOrigin::kEnd) || !file.GetPosition(size))
        return false;
    if (size > mostBytes) return platform::FailWith(platform::kFileTooLarge);
    bytes.resize(static_cast<std::size_t>(size));
    std::size_t done = 0;
    if (!file.ReadAt(0, bytes.data(), bytes.size(), done)) return false;
    bytes.resize(done);
    return true;
}

}  // namespace

void InstallMenuImageDecoder(IMenuImageDecoder* decoder) {
    installed = decoder != nullptr ? decoder : &signatureDecoder;
}

VMenuBitmap MenuImages::Load(const VUnicodeString& fileName) {
    if (const auto known = images.find(fileName); known != images.end()) return known->second;
    std::string bytes;
    if (!ReadWhole(fileName, std::min(bytesLeft, kLargestMenuImage), bytes)) return nullptr;
    VMenuBitmap bitmap = installed->Decode(bytes);
    if (bitmap == nullptr) {
        platform::SetLastErrorCode(platform::kInvalidData);
        return nullptr;
    }
    bytesLeft -= bytes.size();
    images.emplace(fileName, bitmap);
    return bitmap;
}

}  // namespace connectdialog
