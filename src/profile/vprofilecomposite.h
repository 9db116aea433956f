// The composite pattern: a setting made of settings, driven by one table of its members.
#pragma once

#include <cstddef>
#include <span>

#include "foundation/casefold.h"
#include "profile/vprofiledata.h"

namespace connectdialog {

/// One row of a member table: finds the member within an object.
template <class Owner>
using MemberAccess = VProfileData& (*)(Owner& owner);

/// The row of a data member that is a VProfileData: `Member<SessionConfig, &SessionConfig::useTitleBar>`.
template <class Owner, auto member>
// NOLINTNEXTLINE(readability-identifier-naming): reads as the row that it is
inline constexpr MemberAccess<Owner> Member = [](Owner& owner) -> VProfileData& { return owner.*member; };

/// Derived lists its members once, in storage order, in a function
///   static std::span<const MemberAccess<Derived>> Members();
/// and every operation here is a loop over that table and over nothing else. Loading is written out in Derived, where
/// the key name, the default and the corrections of each member stand side by side. Adding a setting is one
/// declaration, one row and one load line.
template <class Derived>
class VProfileComposite : public VProfileData {
  public:
    void Save(VProfileKey& key, bool force) override {
        Lock(key, force);
        for (const auto member : Derived::Members()) member(Self()).Save(key, force);
        Unlock(key, force);
    }
    /// True as soon as one member is changed.
    bool IsChanged() const override {
        for (const auto member : Derived::Members())
            if (member(Self()).IsChanged()) return true;
        return false;
    }
    void Commit() override {
        for (const auto member : Derived::Members()) member(Self()).Commit();
    }
    void Revert() override {
        for (const auto member : Derived::Members()) member(Self()).Revert();
    }
    /// Takes over the members that are changed in the other, and no others.
    void Assign(const VProfileData& other) override {
        const auto* same = dynamic_cast<const Derived*>(&other);
        if (same == nullptr) return;
        auto& source = const_cast<Derived&>(*same);  // the table has one access for both; nothing is written through it
        for (const auto member : Derived::Members())
            if (member(source).IsChanged()) member(Self()).Assign(member(source));
    }
    VProfileData* GetMember(std::size_t index) override {
        const auto table = Derived::Members();
        return index < table.size() ? &table[index](Self()) : nullptr;
    }
    /// The first direct member of that value name, case ignored; null when there is none. Never looks into members.
    VProfileData* FindValue(std::u16string_view name) {
        for (const auto member : Derived::Members()) {
            VProfileData& value = member(Self());
            if (CompareNoCase(value.GetName(), name) == 0) return &value;
        }
        return nullptr;
    }

  private:
    Derived& Self() const { return const_cast<Derived&>(static_cast<const Derived&>(*this)); }
};

}  // namespace connectdialog
