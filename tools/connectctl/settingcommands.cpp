// show, default, get and set: the settings of one session.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "config/protocolchoice.h"
#include "config/sessionconfig.h"
#include "config/settingwalk.h"
#include "platform/codepage.h"
#include "profile/vprofiledata.h"
#include "resources/storenames.h"
#include "sessiondb/sessiontree.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/nearnames.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/settingorigin.h"
#include "tools/connectctl/settingstore.h"
#include "tools/connectctl/settingvalue.h"

namespace connectdialog::connectctl {

namespace {

struct SettingArguments {
    std::string path;
    std::string name;
    std::string value;
    bool asJson = false;
};

/// `path` is where the session is stored, if it is.
void PrintSettings(ISessionConfig& session, const VUnicodeString& path, bool asJson) {
    SettingOrigins origins(path);
    nlohmann::json settings = nlohmann::json::array();
    VisitSettings(session, [&](VProfileData& setting) {
        if (!asJson) return PrintLine(DescribeSetting(setting) + '\t' + origins.Of(setting));
        settings.push_back(SettingAsJson(setting));
        settings.back()["origin"] = origins.Of(setting);
    });
    if (asJson) PrintLine(PrintableJson({{"path", JsonText(path)}, {"settings", std::move(settings)}}));
}

std::string UnknownSettingText(ISessionConfig& session, const VUnicodeString& name) {
    std::vector<std::u16string> names;
    VisitSettings(session, [&](VProfileData& setting) { names.emplace_back(setting.GetName().View()); });
    const std::string text = Quoted(session.GetPath()) + " has no setting " + Quoted(name);
    std::string hints;
    for (const std::u16string& near : FindNearNames(name, names)) hints += (hints.empty() ? "" : " or ") + Quoted(near);
    return hints.empty() ? text : text + "; did you mean " + hints + '?';
}

Failure OpenSetting(const SettingArguments& arguments, VRef<ISessionConfig>& session, VProfileData*& setting) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    if (Failure failure = OpenSessionAt(arguments.path, session)) return failure;
    setting = FindSetting(*session, name);
    if (setting == nullptr) return UnknownSettingText(*session, name);
    return kDone;
}

Failure Show(const SettingArguments& arguments) {
    VRef<ISessionConfig> session;
    if (Failure failure = OpenSessionAt(arguments.path, session)) return failure;
    PrintSettings(*session, session->GetPath(), arguments.asJson);
    return kDone;
}

/// A template that is not there yet is not made for the look at it.
Failure ShowDefault(const SettingArguments& arguments) {
    const VUnicodeString path(kDefaultSession);
    Entry entry;
    if (Failure failure = FindEntry(platform::ToNarrow(path), entry)) return failure;
    if (!entry.isSession) return Quoted(path) + " is a folder: new sessions have no template";
    const VRef<ISessionConfig> session =
        SessionKeyExists(path) ? OpenSession(path) : VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    if (!session) return "there is no session " + Quoted(path) + " any more";
    PrintSettings(*session, path, arguments.asJson);
    return kDone;
}

Failure Get(const SettingArguments& arguments) {
    VRef<ISessionConfig> session;
    VProfileData* setting = nullptr;
    if (Failure failure = OpenSetting(arguments, session, setting)) return failure;
    PrintLine(arguments.asJson ? PrintableJson(SettingAsJson(*setting)) : GetSettingText(*setting));
    return kDone;
}

Failure ChooseProtocol(ISessionConfig& session, const VProfileData& choice, ProtocolSide side,
                       const VUnicodeString& name) {
    if (SelectProtocol(session, side, name)) return kDone;
    std::string names;
    for (const VUnicodeString& known : ListProtocols(side)) names += (names.empty() ? "" : ", ") + Quoted(known);
    return Quoted(choice.GetName()) + " is one of " + names + ", not " + Quoted(name);
}

Failure Set(const SettingArguments& arguments) {
    VRef<ISessionConfig> session;
    VProfileData* setting = nullptr;
    VUnicodeString value;
    if (Failure failure = DecodeArgument(arguments.value, value)) return failure;
    if (Failure failure = OpenSetting(arguments, session, setting)) return failure;
    const auto side = FindProtocolChoice(*setting);
    Failure failure = side ? ChooseProtocol(*session, *setting, *side, value) : SetSettingText(*setting, value);
    if (failure) return failure;
    return setting->IsChanged() || setting->IsMissing() ? StoreSetting(*session, *setting) : kDone;
}

std::shared_ptr<SettingArguments> DeclareSession(CLI::App& parser) {
    auto arguments = std::make_shared<SettingArguments>();
    parser.add_option("PATH", arguments->path, kPathHelp)->required();
    return arguments;
}

void DeclareName(CLI::App& parser, SettingArguments& arguments) {
    parser.add_option("NAME", arguments.name, "The setting, as show names it; case is ignored")->required();
}

void DescribeShow(CLI::App& parser, SettingArguments& arguments) {
    parser.add_flag("--json", arguments.asJson, "Print one JSON object");
    parser.footer(
        "One setting a line, in the order in which they are stored: name, type, value and origin with a tab between\n"
        "them. Lists are JSON arrays, records JSON objects; secrets are shown as (hidden). The origin is\n"
        "  stored     the store has this value\n"
        "  default    the store has none\n"
        "  corrected  the store has one that does not fit, or another setting calls for this one");
}

}  // namespace

CommandBody DeclareShow(CLI::App& parser) {
    auto arguments = DeclareSession(parser);
    DescribeShow(parser, *arguments);
    return [arguments] { return Show(*arguments); };
}

CommandBody DeclareDefault(CLI::App& parser) {
    auto arguments = std::make_shared<SettingArguments>();
    DescribeShow(parser, *arguments);
    return [arguments] { return ShowDefault(*arguments); };
}

CommandBody DeclareGet(CLI::App& parser) {
    auto arguments = DeclareSession(parser);
    DeclareName(parser, *arguments);
    parser.add_flag("--json", arguments->asJson, "Print one JSON object, with the name, the type and the exact value");
    return [arguments] { return Get(*arguments); };
}

CommandBody DeclareSet(CLI::App& parser) {
    auto arguments = DeclareSession(parser);
    DeclareName(parser, *arguments);
    parser.add_option("VALUE", arguments->value, "The new value; one that begins with - goes behind --")->required();
    parser.footer(
        "The value is taken as the setting's type:\n"
        "  bool       true, false, yes, no, on, off, 1 or 0\n"
        "  tri-state  off, on or global\n"
        "  number     decimal, within the range of the type and of the setting\n"
        "  list       a JSON array of texts, or one text a line\n"
        "Setting \"Protocol Name\" or \"Transfer Protocol Name\" takes what the protocols share along.");
    return [arguments] { return Set(*arguments); };
}

}  // namespace connectdialog::connectctl
