#include "connectdialog/findsessiondialog.h"

#include <algorithm>
#include <array>

#include "resources/dialogids.h"

namespace connectdialog {

namespace {
constexpr std::array kScopes = {FindSessionIds::kSessionNames, FindSessionIds::kFolderNames,
                                FindSessionIds::kDescriptions, FindSessionIds::kHostnames};
}  // namespace

FindSessionDialog::FindSessionDialog(const FindOptions& remembered, VWindow* parent)
    : VDialog(FindSessionIds::kDialog, parent), options(remembered) {}

void FindSessionDialog::OnInitDialog() {
    VDialog::OnInitDialog();
    EnableOk();
}

void FindSessionDialog::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, FindSessionIds::kText, options.text);
    DDX_Check(exchange, FindSessionIds::kSessionNames, options.inSessionNames);
    DDX_Check(exchange, FindSessionIds::kFolderNames, options.inFolderNames);
    DDX_Check(exchange, FindSessionIds::kDescriptions, options.inDescriptions);
    DDX_Check(exchange, FindSessionIds::kHostnames, options.inHostnames);
    DDX_Check(exchange, FindSessionIds::kMatchCase, options.matchCase);
}

bool FindSessionDialog::OnCommand(int command) {
    if (std::find(kScopes.begin(), kScopes.end(), command) == kScopes.end()) return VDialog::OnCommand(command);
    EnableOk();
    return true;
}

void FindSessionDialog::OnControlChanged(int) {
    EnableOk();
}

void FindSessionDialog::EnableOk() {
    const bool hasScope =
        std::any_of(kScopes.begin(), kScopes.end(), [this](int scope) { return IsControlChecked(scope); });
    EnableControl(kIdOk, hasScope && !GetControlText(FindSessionIds::kText).IsEmpty());
}

}  // namespace connectdialog
