#include "suite/protocols/protocolconfig.h"

#include <algorithm>
#include <new>
#include <utility>

#include "config/isessionconfig.h"
#include "config/remotehostconfig.h"
#include "foundation/texttools.h"
#include "foundation/vnarrowstring.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

namespace {

// What protocols hand to each other. The names are between the protocols; nothing stores them.
constexpr char16_t kSharedHost[] = u"Hostname";
constexpr char16_t kSharedUser[] = u"Username";
constexpr char16_t kSharedPort[] = u"Port";

struct SharedText {
    const char16_t* name;
    VProfileText ProtocolSettings::*text;
};
constexpr SharedText kSharedTexts[] = {
    {u"Identity File", &ProtocolSettings::sshIdentityFile},
    {u"Jump Host", &ProtocolSettings::sshJumpHost},
};

ISharedConfig* MakeSettings(void* key) {
    return new ProtocolSettings(static_cast<VProfileKey*>(key));
}

VRef<ProtocolSettings> SettingsOf(ICommonConfig& common, VProfileKey* key) {
    return VRef<ProtocolSettings>::Adopt(
        static_cast<ProtocolSettings*>(common.GetSharedConfig(key, false, MakeSettings)));
}

}  // namespace

IRemoteHostConfig* FindRemoteHost(ISessionConfig& session) {
    for (ConnectConfig* config : {session.GetConnectConfig(), session.GetTransferConnectConfig()})
        if (auto* protocol = dynamic_cast<ProtocolConfig*>(config)) return &protocol->GetRemoteHost();
    return nullptr;
}

ConnectConfig* CreateProtocolConfig(VProfileKey* key, ICommonConfig* common, const ConnectProtocolTableElement& row) {
    const ProtocolTraits* traits = FindProtocolTraits(row.name);
    if (traits == nullptr) return nullptr;
    if (common != nullptr)
        return new ProtocolConfig(*traits, VRef<IRemoteHostConfig>::Adopt(common->GetRemoteHostConfig(key)),
                                  SettingsOf(*common, key));
    return new ProtocolConfig(*traits, VRef<IRemoteHostConfig>::Adopt(new RemoteHostConfig(key)),
                              VRef<ProtocolSettings>::Adopt(new ProtocolSettings(key)));
}

ProtocolConfig::ProtocolConfig(const ProtocolTraits& traits, VRef<IRemoteHostConfig> remoteHost,
                               VRef<ProtocolSettings> settings)
    : traits(traits), remoteHost(std::move(remoteHost)), settings(std::move(settings)) {}

bool ProtocolConfig::HasHost() const {
    return traits.target == ProtocolTarget::kHost;
}

VProfileData& ProtocolConfig::HostData() const {
    return dynamic_cast<VProfileData&>(*remoteHost);
}

template <class Function>
void ProtocolConfig::ForEachMember(Function visit) const {
    if (HasHost()) visit(HostData());
    for (const ProtocolMember member : traits.members) visit(member(*settings));
}

void ProtocolConfig::Save(VProfileKey& key, bool force) {
    if (notToBeSaved != 0) return;
    ForEachMember([&](VProfileData& member) { member.Save(key, force); });
}

bool ProtocolConfig::IsChanged() const {
    bool isChanged = false;
    ForEachMember([&](const VProfileData& member) { isChanged = isChanged || member.IsChanged(); });
    return isChanged;
}

void ProtocolConfig::Commit() {
    if (std::exchange(isNew, false)) return;
    ForEachMember([](VProfileData& member) { member.Commit(); });
}

void ProtocolConfig::Revert() {
    ForEachMember([](VProfileData& member) { member.Revert(); });
}

void ProtocolConfig::Assign(const VProfileData& other) {
    const auto* same = dynamic_cast<const ProtocolConfig*>(&other);
    if (same == nullptr || &same->traits != &traits) return;
    if (HasHost()) HostData().Assign(same->HostData());
    for (const ProtocolMember member : traits.members)
        if (member(*same->settings).IsChanged()) member(*settings).Assign(member(*same->settings));
}

bool ProtocolConfig::IsMissing() const {
    for (std::size_t i = 0; HasHost(); ++i) {
        const VProfileData* member = HostData().GetMember(i);
        if (member == nullptr) break;
        if (member->IsMissing()) return true;
    }
    return std::any_of(traits.members.begin(), traits.members.end(),
                       [this](ProtocolMember member) { return member(*settings).IsMissing(); });
}

VProfileData* ProtocolConfig::GetMember(std::size_t index) {
    if (HasHost() && index-- == 0) return &HostData();
    return index < traits.members.size() ? &traits.members[index](*settings) : nullptr;
}

ConnectConfig* ProtocolConfig::Clone(ICommonConfig* common) const try {
    VRef<IRemoteHostConfig> host;
    VRef<ProtocolSettings> values;
    if (common != nullptr) {
        // They were cloned with the common config.
        host = VRef<IRemoteHostConfig>::Adopt(common->GetRemoteHostConfig(nullptr));
        values = SettingsOf(*common, nullptr);
    } else {
        host = VRef<IRemoteHostConfig>::Adopt(remoteHost->Clone());
        values = VRef<ProtocolSettings>::Adopt(static_cast<ProtocolSettings*>(settings->Clone()));
    }
    auto* copy = new ProtocolConfig(traits, std::move(host), std::move(values));
    copy->isNew = isNew;
    copy->notToBeSaved = notToBeSaved;
    return copy;
} catch (const std::bad_alloc&) {
    return nullptr;
}

void ProtocolConfig::ExportShared(SharedSettings& shared) const {
    // All of it, whatever the protocol: what an earlier protocol left there must not come back as new.
    remoteHost->GetHostname(shared[kSharedHost]);
    remoteHost->GetUsername(shared[kSharedUser]);
    for (const SharedText& row : kSharedTexts) shared[row.name] = (settings.Get()->*row.text).Get();
    if (GetPort() != traits.defaultPort && std::ranges::count(settings->releasedPorts, traits.port) == 0)
        shared[kSharedPort].Format(u"%1!u!", static_cast<unsigned>(GetPort()));
    else
        shared.Remove(kSharedPort);
}

void ProtocolConfig::ImportShared(const SharedSettings& shared) {
    if (const VUnicodeString* host = shared.Find(kSharedHost)) remoteHost->SetHostname(host->GetData());
    if (const VUnicodeString* user = shared.Find(kSharedUser)) remoteHost->SetUsername(*user);
    for (const SharedText& row : kSharedTexts)
        if (const VUnicodeString* text = shared.Find(row.name)) (settings.Get()->*row.text).Set(*text);

    // A port that somebody chose for this protocol is better than one that was chosen for another.
    const VUnicodeString* port = shared.Find(kSharedPort);
    std::uint16_t number = 0;
    if (port == nullptr || GetPort() != traits.defaultPort) return;
    if (VParseUnsigned16(VNarrowString(*port).GetData(), number) && number != 0) SetPort(number);
}

VProfileText* ProtocolConfig::TargetText() const {
    switch (traits.target) {
        case ProtocolTarget::kSerialDevice:
            return &settings->serialDevice;
        case ProtocolTarget::kPhoneNumber:
            return &settings->tapiPhoneNumber;
        default:
            return nullptr;
    }
}

bool ProtocolConfig::IsComplete(std::uint32_t& state) const {
    state = 0;
    if (traits.target == ProtocolTarget::kNothing) return true;
    if (traits.port != nullptr && GetPort() == 0) {
        state = kSettingMissing;
        return false;
    }
    VUnicodeString target;
    GetHostName(target);
    if (!target.IsEmpty()) return true;
    state = HasHost() ? kHostNameMissing : kSettingMissing;
    return false;
}

void ProtocolConfig::GetSuggestedName(VUnicodeString& name) const {
    if (traits.target == ProtocolTarget::kNothing)
        name = traits.name;
    else
        GetHostName(name);
}

void ProtocolConfig::GetHostName(VUnicodeString& host) const {
    if (HasHost())
        remoteHost->GetHostname(host);
    else if (const VProfileText* text = TargetText())
        host = text->Get();
    else
        host.Empty();
}

void ProtocolConfig::SetHostName(const VUnicodeString& host) {
    if (HasHost())
        remoteHost->SetHostname(host.GetData());
    else if (VProfileText* text = TargetText())
        text->Set(host);
}

std::uint16_t ProtocolConfig::GetPort() const {
    return traits.port != nullptr ? (settings.Get()->*traits.port).Get() : kNoPort;
}

void ProtocolConfig::SetPort(std::uint16_t port) {
    if (traits.port == nullptr) return;
    (settings.Get()->*traits.port).Set(port);
    std::erase(settings->releasedPorts, traits.port);
}

void ProtocolConfig::TransferForward(void*) {}

void ProtocolConfig::ReleasePort() {
    std::erase(settings->releasedPorts, traits.port);
    settings->releasedPorts.push_back(traits.port);
}

}  // namespace connectdialog
