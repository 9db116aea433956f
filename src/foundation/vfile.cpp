#include "foundation/vfile.h"

#include <utility>

#include "foundation/filepermissions.h"

namespace connectdialog {

VFile::~VFile() {
    Close();
}

bool VFile::Open(const VUnicodeString& name, std::uint32_t access, std::uint32_t disposition) {
    Close();
    handle =
        platform::OpenFile(name, {access, disposition, shareMode, attributes, GetFilePermissions(securityDescriptor)});
    if (!IsOpen()) return false;
    fileName = name;
    return true;
}

bool VFile::SetEndOfFile() {
    return platform::EndFileHere(handle);
}

bool VFile::Seek(std::int64_t offset, platform::SeekOrigin origin) {
    std::uint64_t position = 0;
    return platform::SeekInFile(handle, offset, origin, position);
}

bool VFile::GetPosition(std::uint64_t& position) {
    return platform::SeekInFile(handle, 0, platform::SeekOrigin::kCurrent, position);
}

bool VFile::Read(void* data, std::size_t size, std::size_t& done) {
    return platform::ReadFromFile(handle, data, size, done);
}

bool VFile::ReadAt(std::uint64_t offset, void* data, std::size_t size, std::size_t& done) {
    return platform::ReadFromFileAt(handle, offset, data, size, done);
}

bool VFile::Write(const void* data, std::size_t size) {
    return platform::WriteToFile(handle, data, size);
}

bool VFile::WriteAt(std::uint64_t offset, const void* data, std::size_t size) {
    return platform::WriteToFileAt(handle, offset, data, size);
}

bool VFile::LockRange(std::uint64_t offset, std::uint64_t length, bool exclusive) {
    const auto mode = exclusive ? platform::LockMode::kExclusive : platform::LockMode::kShared;
    return platform::LockFileRange(handle, offset, length, mode, true);
}

bool VFile::UnlockRange(std::uint64_t offset, std::uint64_t length) {
    return platform::UnlockFileRange(handle, offset, length);
}

void* VFile::MapView(bool writable) {
    if (view != nullptr) return view;
    std::uint64_t size = 0;
    if (!platform::GetFileSize(handle, size)) return nullptr;
    view = platform::MapFile(handle, size, writable);
    viewSize = view != nullptr ? size : 0;
    return view;
}

bool VFile::Close() {
    platform::UnmapFile(std::exchange(view, nullptr), std::exchange(viewSize, 0));
    const platform::FileHandle closed = std::exchange(handle, platform::kInvalidFile);
    return closed == platform::kInvalidFile || platform::CloseFile(closed);
}

}  // namespace connectdialog
