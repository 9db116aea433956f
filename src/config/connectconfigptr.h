// Binds a session's protocol name to one settings object per protocol row.
#pragma once

#include <cstdint>
#include <string_view>

#include "imports/connectconfig.h"
#include "imports/connectprotocoltable.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// The two sides of a session.
enum class ProtocolSide : std::int32_t { kTerminal = 0, kTransfer = 1 };

/// The name of the protocol that connects nothing, of either side.
inline constexpr std::u16string_view kNoProtocol = u"None";
/// The value of a session's key that holds the name of the side's protocol.
VUnicodeString GetProtocolNameValue(ProtocolSide side);
/// Whether the row is a protocol of the side.
bool IsRowOfSide(const ConnectProtocolTableElement& row, ProtocolSide side);

/// One side's protocol: a name and the settings of every protocol of that side, kept while the user switches between
/// them. Only the selected one is saved. Settings that the protocols share are read once, and an object that holds
/// nothing else waits until it is used.
///
/// A stored name that no row knows gives way to the first row of the side. An absent name means that row too; an empty
/// stored one means no protocol, which the session sees to (NameWasEmpty).
class ConnectConfigPtr : public VProfileData {
  public:
    /// `key` may be null. Requires: `common` is the session's and outlives this object.
    ConnectConfigPtr(VProfileKey* key, ProtocolSide side, ICommonConfig* common);
    /// Clones each settings object against another session's common config. The carry-over starts empty.
    ConnectConfigPtr(const ConnectConfigPtr& other, ICommonConfig* common);

    const VUnicodeString& GetProtocolName() const { return name.Get(); }
    /// The value that holds the name. SetProtocol is how the protocol changes; this is for looking.
    VProfileText& GetNameValue() { return name; }
    /// The selected settings, or null. Stays owned by this object.
    ConnectConfig* GetSelected() const;
    /// The settings object of each row, null where there is none or it still waits. Stays owned by this object.
    const VArray<VRef<ConnectConfig>>& GetConfigs() const { return configs; }
    /// Whether the key held the name and it was empty.
    bool NameWasEmpty() const { return nameWasEmpty; }

    /// Selects the first row of exactly that name, of either side; none: nothing is selected and the name stands.
    /// With `carryOver` the old settings' shared part travels to the new ones. `with` is the common config for settings
    /// that are made now; it may be null.
    void SetProtocol(const VUnicodeString& newName, ICommonConfig* with, bool carryOver);

    void Save(VProfileKey& key, bool force) override;
    bool IsChanged() const override;
    void Commit() override;
    void Revert() override;
    void Assign(const VProfileData& other) override;
    VProfileData* GetMember(std::size_t) override { return this; }

  private:
    static constexpr std::int32_t kNone = -1;

    std::int32_t FindFirstRow() const;
    std::int32_t LoadName(VProfileKey* key);
    void CreateConfig(std::uint64_t row, VProfileKey* key, ICommonConfig* with);
    /// Whether the row is one of the side whose settings a session has from its start.
    bool IsKeptReady(std::uint64_t row) const;
    void MakeIfWaiting(std::uint64_t row);

    const ConnectProtocolTable& table;
    VProfileText name;
    std::int32_t selected = kNone;
    std::int32_t storedSelected = kNone;
    VArray<VRef<ConnectConfig>> configs;
    ICommonConfig* common;
    ProtocolSide side;
    SharedSettings carried;
    bool nameWasEmpty = false;
};

}  // namespace connectdialog
