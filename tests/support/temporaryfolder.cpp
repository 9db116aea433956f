#include "support/temporaryfolder.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace connectdialog::test {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "connectdialog-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder: " + pattern);
    path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

}  // namespace connectdialog::test
