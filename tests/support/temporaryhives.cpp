#include "support/temporaryhives.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <stdlib.h>

#include "foundation/vsettingshive.h"

namespace connectdialog::testsupport {

namespace {
constexpr std::string_view kFirstLine = "Windows Registry Editor Version 5.00\n";
}

TemporaryHives::TemporaryHives() {
    std::string pattern = (std::filesystem::temp_directory_path() / "hives-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the hives");
    folder = pattern;
    VSettingsHive::SetPaths(MachineFile().u16string(), UserFile().u16string());
}

TemporaryHives::~TemporaryHives() {
    VSettingsHive::SetPaths({}, {});
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void TemporaryHives::WriteMachine(std::string_view lines) const {
    WriteFile(MachineFile(), std::string(kFirstLine).append(lines));
}
void TemporaryHives::WriteUser(std::string_view lines) const {
    WriteFile(UserFile(), std::string(kFirstLine).append(lines));
}

std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace connectdialog::testsupport
