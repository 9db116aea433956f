// firewall: the named firewalls that sessions go through.
#include "config/firewallconfig.h"
#include "config/firewalltypes.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vstringarray.h"
#include "platform/codepage.h"
#include "profile/vprofilekey.h"
#include "sessiondb/firewalllist.h"
#include "suite/configpanels/sessionname.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/settingvalue.h"
#include "tools/connectctl/standardinput.h"
#include "tools/connectctl/subcommands.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

struct FirewallArguments {
    std::string name;
    std::string setting;
    std::string value;
    bool hasValue = false;
};

Failure OpenFirewall(const std::string& argument, VRef<FirewallConfig>& firewall) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(argument, name)) return failure;
    if (name == kNoFirewall) return Quoted(name) + " stands for no firewall";
    // A name of several levels would be a key that the list never shows.
    if (CheckSessionNameText(name) == SessionNameFault::kNone)
        firewall = VRef<FirewallConfig>::Adopt(LoadFirewall(name));
    return firewall ? Failure(kDone) : "there is no firewall " + Quoted(name);
}

Failure Store(FirewallConfig& firewall) {
    return SaveFirewall(firewall) ? Failure(kDone) : "the store refused " + Quoted(firewall.GetFirewallName());
}

Failure List(const FirewallArguments&) {
    const auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(256));
    EnumerateFirewalls(*buffer);
    VStringArray names;
    names.ReadFrom(buffer.Get());
    for (const VUnicodeString& name : names)
        if (name != kNoFirewall) PrintLine(Printable(name));
    return kDone;
}

Failure Show(const FirewallArguments& arguments) {
    VRef<FirewallConfig> firewall;
    if (Failure failure = OpenFirewall(arguments.name, firewall)) return failure;
    for (std::size_t i = 0; VProfileData* setting = firewall->GetMember(i); ++i) PrintLine(DescribeSetting(*setting));
    return kDone;
}

/// The type is one of a table; what stands there otherwise would count as none.
Failure CheckType(const VProfileData& setting, const VUnicodeString& value) {
    if (setting.GetName() != u"Firewall Type" || value == kFirewallTypes[0].name) return kDone;
    if (FindFirewallType(value).number != 0) return kDone;
    std::string names;
    for (const FirewallType& type : kFirewallTypes) names += (names.empty() ? "" : ", ") + Quoted(type.name);
    return Quoted(setting.GetName()) + " is one of " + names + ", not " + Quoted(value);
}

/// A secret comes through standard input, where nobody else reads it.
Failure ReadValue(const FirewallArguments& arguments, VUnicodeString& value) {
    if (arguments.hasValue) return DecodeArgument(arguments.value, value);
    VNarrowString input;
    if (Failure failure = ReadStandardInput(input)) return failure;
    DropLineEnd(input);
    value.MarkSensitive();
    value = VUnicodeString(input);
    return VNarrowString(value) == input ? Failure(kDone) : "standard input is not UTF-8";
}

Failure SetValue(VProfileData& setting, const VUnicodeString& value, bool isFromInput) {
    auto* const password = dynamic_cast<FirewallPassword*>(&setting);
    if (password == nullptr || !isFromInput) return SetSettingText(setting, value);
    password->SetPassword(value);
    return kDone;
}

Failure OpenSetting(const FirewallArguments& arguments, VRef<FirewallConfig>& firewall, VProfileData*& setting) {
    VUnicodeString name;
    if (Failure failure = OpenFirewall(arguments.name, firewall)) return failure;
    if (Failure failure = DecodeArgument(arguments.setting, name)) return failure;
    setting = firewall->FindValue(name);
    return setting != nullptr ? Failure(kDone) : "a firewall has no setting " + Quoted(name);
}

Failure Set(const FirewallArguments& arguments) {
    VRef<FirewallConfig> firewall;
    VUnicodeString value;
    VProfileData* setting = nullptr;
    // What is wrong is told before standard input is waited for, and nobody waits for it under the lock.
    if (Failure failure = OpenSetting(arguments, firewall, setting)) return failure;
    if (Failure failure = ReadValue(arguments, value)) return failure;
    const auto change = [&] {
        if (Failure failure = OpenSetting(arguments, firewall, setting)) return failure;
        if (Failure failure = CheckType(*setting, value)) return failure;
        return SetValue(*setting, value, !arguments.hasValue);
    };
    return CheckAndChange(change, [&] { return Store(*firewall); });
}

Failure New(const FirewallArguments& arguments) {
    VUnicodeString name;
    if (Failure failure = DecodeArgument(arguments.name, name)) return failure;
    if (const SessionNameFault fault = CheckSessionNameText(name); fault != SessionNameFault::kNone)
        return platform::ToNarrow(DescribeSessionNameFault(fault, name));
    if (name.EqualsNoCase(kNoFirewall)) return Quoted(name) + " stands for no firewall";
    const auto isFree = [&]() -> Failure {
        if (!VProfileStore(true).GetRootKey()->KeyExists(BuildFirewallKeyPath(name).GetData())) return kDone;
        return "there is a firewall " + Quoted(name) + " already";
    };
    return CheckAndChange(isFree,
                          [&] { return Store(*VRef<FirewallConfig>::Adopt(new FirewallConfig(name, nullptr))); });
}

Failure Remove(const FirewallArguments& arguments) {
    VRef<FirewallConfig> firewall;
    const auto remove = [&]() -> Failure {
        const VUnicodeString keyPath = BuildFirewallKeyPath(firewall->GetFirewallName());
        if (VProfileStore(false).GetRootKey()->DeleteKey(keyPath.GetData())) return kDone;
        return "the store refused " + Quoted(firewall->GetFirewallName());
    };
    return CheckAndChange([&] { return OpenFirewall(arguments.name, firewall); }, remove);
}

void AddName(CLI::App& parser, FirewallArguments& arguments) {
    parser.add_option("NAME", arguments.name, "The firewall")->required();
}
void DeclareNothing(CLI::App&, FirewallArguments&) {}
void DeclareSettingAndValue(CLI::App& parser, FirewallArguments& arguments) {
    AddName(parser, arguments);
    parser.add_option("SETTING", arguments.setting, "The setting, as show names it; case is ignored")->required();
    parser
        .add_option("VALUE", arguments.value, "The new value; from standard input when left out, as a password must be")
        ->each([&arguments](const std::string&) { arguments.hasValue = true; });
}

constexpr Subcommand<FirewallArguments> kFirewallCommands[] = {
    {"ls", "List the firewalls", DeclareNothing, List},
    {"show", "Print the settings of a firewall", AddName, Show},
    {"set", "Change one setting of a firewall", DeclareSettingAndValue, Set},
    {"new", "Make a firewall of the type \"None\"", AddName, New},
    {"rm", "Remove a firewall; sessions that name it no longer connect", AddName, Remove},
};

}  // namespace

CommandBody DeclareFirewall(CLI::App& parser) {
    return DeclareSubcommands(parser, kFirewallCommands);
}

}  // namespace connectdialog::connectctl
