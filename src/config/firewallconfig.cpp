#include "config/firewallconfig.h"

#include <array>
#include <limits>

#include "config/firewalltypes.h"
#include "config/sessiondbhooks.h"
#include "imports/configpanels.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"

namespace connectdialog {

namespace {
constexpr unsigned short kUsualPort = 1080;

/// The stored number is looked at before it is cut down to 16 bits: 66616 is no port, and not 1080. What was stored is
/// not remembered then, so that the next save repairs it also where it would be cut down to 0.
void LoadPort(VProfileKey* key, VProfile<unsigned short>& port) {
    const VUnicodeString name = u"Firewall Port"_v;
    std::uint32_t number = 0;
    const bool isFound = key != nullptr && key->ReadDword(name.GetData(), number);
    const bool isPort = !isFound || number <= std::numeric_limits<unsigned short>::max();
    port.Load(isPort ? key : nullptr, name, kUsualPort);
    if (!isPort) port.Set(0);
}
}  // namespace

bool FirewallPassword::Read(VProfileKey* key) {
    VUnicodeString stored;
    stored.MarkSensitive();
    if (!ReadStored(key, stored) || !IsProtectedText(stored)) return VProfileEncodedString::Read(key);
    VUnicodeString password;
    const bool isRead = ReadProtectedText(GetName(), stored, password);
    Set(password);
    Edit().MarkSensitive();
    if (isRead)
        Save(*key, true);
    else
        KeepAsFound(GetName(), stored);
    return true;
}

void FirewallPassword::SetPassword(const VUnicodeString& text) {
    DropWhatWasFound();
    Set(text);
}

std::span<const MemberAccess<FirewallConfig>> FirewallConfig::Members() {
    using F = FirewallConfig;
    static constexpr std::array<MemberAccess<F>, 7> kMembers = {
        Member<F, &F::type>,         Member<F, &F::address>, Member<F, &F::port>,     Member<F, &F::proxyPrompt>,
        Member<F, &F::proxyCommand>, Member<F, &F::user>,    Member<F, &F::password>,
    };
    return kMembers;
}

FirewallConfig::FirewallConfig(const VUnicodeString& name, VProfileKey* key) : name(name) {
    type.Load(key, u"Firewall Type"_v, VUnicodeString(kFirewallTypes[0].name));
    address.Load(key, u"Firewall Address"_v, VUnicodeString());
    LoadPort(key, port);
    proxyPrompt.Load(key, u"Proxy Prompt"_v, VUnicodeString());
    proxyCommand.Load(key, u"Proxy Command"_v, VUnicodeString());
    user.Load(key, u"Firewall User"_v, VUnicodeString());
    // Before loading: the stored copy shares the buffer. "None" has no password, and every session that goes through no
    // firewall has an object of that name.
    if (name != kNoFirewall) password.Edit().MarkSensitive();
    password.Load(key, u"Firewall Password"_v);
}

std::uint32_t FirewallConfig::GetTypeNumber() const {
    return FindFirewallType(type.Get()).number;
}

bool FirewallConfig::NeedsCredentials() const {
    return FindFirewallType(type.Get()).needsCredentials;
}

bool FirewallConfig::GetUsername(IString* out) {
    return Answer(user, answeredUser, LaunchFirewallUsernameDialog, *out);
}

bool FirewallConfig::GetPassword(IString* out) {
    return Answer(password, answeredPassword, LaunchFirewallPasswordDialog, *out);
}

bool FirewallConfig::Answer(VProfileText& setting, VUnicodeString& answered, Prompt ask, IString& out) {
    const auto give = [&out](const VUnicodeString& text) {
        out.Assign(text.GetData(), text.GetLength(), text.GetState());
    };
    if (!setting.Get().IsEmpty() || !answered.IsEmpty() || !NeedsCredentials()) {
        give(answered.IsEmpty() ? setting.Get() : answered);
        return true;
    }
    VUnicodeStringI answer;
    if (&setting == &password) answer.MarkSensitive();
    bool save = false;
    const bool isConfirmed = ask(&answer, save, parent);
    if (isConfirmed && save) {
        setting.Set(answer);
        GetSessionDbHooks()->UpgradeButtonBars();
        GetSessionDbHooks()->SaveFirewall(*this);
    } else {
        answered = answer;
    }
    give(answer);
    return isConfirmed;
}

}  // namespace connectdialog
