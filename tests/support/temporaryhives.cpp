#include "support/temporaryhives.h"

#include "foundation/vsettingshive.h"

namespace connectdialog::testsupport {

namespace {
constexpr char kFirstLine[] = "Windows Registry Editor Version 5.00\n";
}

TemporaryHives::TemporaryHives() {
    VSettingsHive::SetPaths(MachineFile().u16string(), UserFile().u16string());
}

TemporaryHives::~TemporaryHives() {
    VSettingsHive::SetPaths({}, {});
}

void TemporaryHives::WriteMachine(std::string_view lines) const {
    test::WriteFile(MachineFile(), std::string(kFirstLine).append(lines));
}
void TemporaryHives::WriteUser(std::string_view lines) const {
    test::WriteFile(UserFile(), std::string(kFirstLine).append(lines));
}

}  // namespace connectdialog::testsupport
