#include "support/temporaryfolder.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>

#include "platform/paths.h"

namespace connectdialog::test {

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream) throw std::runtime_error("cannot write " + file.string());
}

unsigned ModeOf(const std::filesystem::path& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "connectdialog-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder: " + pattern);
    path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

VUnicodeString TemporaryFolder::Name(const std::string& leaf) const {
    return VUnicodeString(platform::FromNativePath(*this / leaf));
}

std::string TemporaryFolder::Write(const std::string& leaf, std::string_view bytes) const {
    WriteFile(path / leaf, bytes);
    return *this / leaf;
}

std::string TemporaryFolder::WriteProgram(const std::string& leaf, const std::string& script) const {
    Write(leaf, "#!/bin/sh\n" + script);
    std::filesystem::permissions(path / leaf, std::filesystem::perms::owner_all);
    return *this / leaf;
}

}  // namespace connectdialog::test
