// A named firewall: the record behind IFirewallUI.
#pragma once

#include <cstdint>
#include <span>

#include "config/ifirewallui.h"
#include "foundation/vunicodestringi.h"
#include "profile/vprofile.h"
#include "profile/vprofilecomposite.h"
#include "profile/vprofileencodedstring.h"

namespace connectdialog {

class IParentable;

/// The password of a firewall. Older versions protected it for their user: such a value is rewritten in the present
/// form as soon as it is read. One that cannot be unprotected now reads as empty and is saved as it was found, until a
/// password is set.
class FirewallPassword : public VProfileEncodedString {
  public:
    bool Read(VProfileKey* key) override;
    /// An empty password takes the place of an unreadable one too.
    void SetPassword(const VUnicodeString& text);
};

/// Kept under the key "Firewalls" by name (sessiondb/firewalllist.h). What the user answered at a prompt and did not
/// save is kept as long as the object lives, so that a connection asks once.
class FirewallConfig final : public VUnknown<IFirewallUI>, public VProfileComposite<FirewallConfig> {
  public:
    /// `key` may be null: every member has its default then. It must be open for writing when it may hold a password of
    /// an older version.
    FirewallConfig(const VUnicodeString& name, VProfileKey* key);

    static std::span<const MemberAccess<FirewallConfig>> Members();

    /// GetName is the settings' own, which a composite has not.
    const VUnicodeString& GetFirewallName() const { return name; }
    /// Of the row of kFirewallTypes; 0 for a type that no row has.
    std::uint32_t GetTypeNumber() const;
    bool NeedsCredentials() const;

    void GetType(VUnicodeString& text) const override { text = type.Get(); }
    void GetAddress(VUnicodeString& text) const override { text = address.Get(); }
    std::uint16_t GetPort() const override { return port.Get(); }
    bool GetUsername(IString* out) override;
    bool GetPassword(IString* out) override;
    void GetProxyPrompt(VUnicodeString& text) const override { text = proxyPrompt.Get(); }
    void GetProxyCommand(VUnicodeString& text) const override { text = proxyCommand.Get(); }
    void Destroy() override { delete this; }
    VProfileData* FindValue(std::u16string_view valueName) override { return VProfileComposite::FindValue(valueName); }

  private:
    ~FirewallConfig() override = default;

    using Prompt = bool (*)(IString* answer, bool& save, IParentable* parent);
    bool Answer(VProfileText& setting, VUnicodeString& answered, Prompt ask, IString& out);

    VProfileText type;
    VProfileText address;
    VProfile<unsigned short> port;
    VProfileText proxyPrompt;
    VProfileText proxyCommand;
    VProfileText user;
    FirewallPassword password;
    VUnicodeString name;
    VUnicodeString answeredUser;
    VUnicodeString answeredPassword;
    IParentable* parent = nullptr;  ///< for the prompts; nothing sets it
};

}  // namespace connectdialog
