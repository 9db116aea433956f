// diff: the settings in which two sessions differ.
#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "config/isessionconfig.h"
#include "config/settingwalk.h"
#include "profile/vprofile2.h"
#include "profile/vprofileblowfishstring.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/settingvalue.h"

namespace connectdialog::connectctl {

namespace {

constexpr char kNoSetting[] = "(none)";

struct DiffArguments {
    std::vector<std::string> paths;  ///< two
    bool asJson = false;
};

/// One setting on both sides; null where a session has none of that name.
struct Pair {
    VProfileData* left;
    VProfileData* right;
};

/// Passwords are stored differently each time, and no secret is copied for the look at it.
bool AreEqual(VProfileData& left, VProfileData& right) {
    const auto* leftPassword = dynamic_cast<const VProfileBlowfishString*>(&left);
    const auto* rightPassword = dynamic_cast<const VProfileBlowfishString*>(&right);
    if (leftPassword != nullptr && rightPassword != nullptr) return leftPassword->GetText() == rightPassword->GetText();
    const auto* leftText = dynamic_cast<const VProfileText*>(&left);
    const auto* rightText = dynamic_cast<const VProfileText*>(&right);
    if (leftText != nullptr && rightText != nullptr) return leftText->Get() == rightText->Get();
    return GetSettingJson(left) == GetSettingJson(right);
}

/// The settings of the left session in their order, behind them those that only the right one has.
std::vector<Pair> FindDifferences(ISessionConfig& left, ISessionConfig& right) {
    std::map<std::u16string_view, VProfileData*> rightSettings;
    VisitSettings(right, [&](VProfileData& setting) { rightSettings.emplace(setting.GetName().View(), &setting); });
    std::vector<Pair> differences;
    VisitSettings(left, [&](VProfileData& setting) {
        const auto found = rightSettings.find(setting.GetName().View());
        VProfileData* const other = found == rightSettings.end() ? nullptr : found->second;
        if (other == nullptr || !AreEqual(setting, *other)) differences.push_back({&setting, other});
        if (other != nullptr) rightSettings.erase(found);
    });
    VisitSettings(right, [&](VProfileData& setting) {
        if (rightSettings.contains(setting.GetName().View())) differences.push_back({nullptr, &setting});
    });
    return differences;
}

std::string SideText(VProfileData* setting) {
    return setting != nullptr ? GetSettingText(*setting) : kNoSetting;
}

/// A side that has no such setting is left out.
nlohmann::json PairAsJson(const Pair& pair) {
    nlohmann::json description = {{"name", JsonText((pair.left != nullptr ? pair.left : pair.right)->GetName())}};
    const auto add = [&](const char* side, VProfileData* setting) {
        if (setting != nullptr) description[side] = SettingAsJson(*setting);
    };
    add("left", pair.left);
    add("right", pair.right);
    return description;
}

void Print(const std::vector<Pair>& differences, bool asJson) {
    nlohmann::json list = nlohmann::json::array();
    for (const Pair& pair : differences) {
        if (asJson)
            list.push_back(PairAsJson(pair));
        else
            PrintLine(Printable((pair.left != nullptr ? pair.left : pair.right)->GetName()) + '\t' +
                      SideText(pair.left) + '\t' + SideText(pair.right));
    }
    if (asJson) PrintLine(PrintableJson(list));
}

Failure Diff(const DiffArguments& arguments) {
    VRef<ISessionConfig> left;
    VRef<ISessionConfig> right;
    if (Failure failure = OpenSessionAt(arguments.paths[0], left)) return failure;
    if (Failure failure = OpenSessionAt(arguments.paths[1], right)) return failure;
    const std::vector<Pair> differences = FindDifferences(*left, *right);
    Print(differences, arguments.asJson);
    return differences.empty() ? Failure(kDone) : ToldAlready();
}

}  // namespace

CommandBody DeclareDiff(CLI::App& parser) {
    auto arguments = std::make_shared<DiffArguments>();
    parser.add_option("PATH", arguments->paths, std::string("Two sessions: ") + kPathHelp)->expected(2)->required();
    parser.add_flag("--json", arguments->asJson, "Print a JSON array of what get --json prints for either side");
    parser.footer(
        "One setting a line: name, value of the first session and value of the second, with a tab between them; "
        "(none)\n"
        "where a session has no such setting. Secrets are compared and shown as (hidden).\n"
        "Exit codes: 0 the sessions are alike, 1 they differ, 2 they could not be compared.");
    return [arguments] { return Diff(*arguments); };
}

}  // namespace connectdialog::connectctl
