// VProfile<T>: a number, a bool or a three-state choice, kept as a dword.
#pragma once

#include <cstdint>
#include <type_traits>

#include "profile/vprofilestorage.h"
#include "profile/vvariant.h"

namespace connectdialog {

/// Off, on, or what the general setting says.
enum class VTriState : std::uint32_t { kOff = 0, kOn = 1, kFollowGlobal = 2 };

namespace detail {
/// How a type travels as a dword and as a variant. `kIn` differs from `kOut` for the int types on purpose.
template <class T>
struct ProfileNumber {
    static constexpr VVariantType kOut = std::is_same_v<T, short>            ? VVariantType::kInt16
                                         : std::is_same_v<T, unsigned short> ? VVariantType::kUInt16
                                         : std::is_same_v<T, int>            ? VVariantType::kInt
                                         : std::is_same_v<T, unsigned int>   ? VVariantType::kUInt
                                                                             : VVariantType::kBool;
    static constexpr VVariantType kIn =
        kOut == VVariantType::kInt || kOut == VVariantType::kUInt ? VVariantType::kUInt32 : kOut;
    static std::uint32_t ToStored(T value) { return static_cast<std::uint32_t>(value); }
    static T FromStored(std::uint32_t stored) { return static_cast<T>(stored); }
};
template <>
inline bool ProfileNumber<bool>::FromStored(std::uint32_t stored) {
    return stored != 0;
}
/// A number that is no state follows the general setting.
template <>
inline VTriState ProfileNumber<VTriState>::FromStored(std::uint32_t stored) {
    return stored > 2 ? VTriState::kFollowGlobal : static_cast<VTriState>(stored);
}
}  // namespace detail

/// T is short, unsigned short, int, unsigned int, bool or VTriState.
template <class T>
class VProfile final : public VProfileDword {
  public:
    using VProfileDword::Load;

    const T& Get() const { return current; }
    /// Sets the current value only.
    void Set(T value) { current = value; }
    const T& GetStored() const { return stored; }
    /// The base of a number in textual form; 0, as at first, detects it from the text.
    void SetNumericBase(int newBase) { base = newBase; }

    /// Value and stored copy from the key, no longer missing. On failure: false, and nothing changes.
    bool Load(VProfileKey* key) {
        std::uint32_t number = 0;
        if (!ReadStored(key, number)) return false;
        stored = current = detail::ProfileNumber<T>::FromStored(number);
        // A number that is no state was corrected: the next Save repairs it.
        SetMissing(std::is_same_v<T, VTriState> && detail::ProfileNumber<T>::ToStored(current) != number);
        return true;
    }
    /// The same; an absent value takes `defaultValue` and is missing. Always true.
    bool Load(VProfileKey* key, T defaultValue) {
        if (Load(key)) return true;
        stored = current = defaultValue;
        SetMissing(true);
        return true;
    }
    bool Load(VProfileKey* key, const VUnicodeString& name, T defaultValue) {
        SetName(name);
        return Load(key, defaultValue);
    }

    bool Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) override;
    void Save(VProfileKey& key, bool force) override {
        if (!force && !IsMissing() && !IsChanged()) return;
        WriteStored(key, detail::ProfileNumber<T>::ToStored(current));
        stored = current;
    }
    bool IsChanged() const override { return current != stored; }
    void Commit() override {
        if (IsChanged()) SetMissing(true);
        stored = current;
    }
    void Revert() override { current = stored; }
    void Assign(const VProfileData& other) override {
        if (const auto* same = dynamic_cast<const VProfile*>(&other)) current = same->current;
    }
    VProfileData* GetMember(std::size_t) override { return this; }

    bool GetVariant(VVariant& out, VReportMessageParams& report) const override;
    bool PutValue(IProfileValueExchange& exchange, const char16_t* name) const override;
    bool SetVariant(const VVariant& in, VReportMessageParams& report) override;
    bool GetValue(IProfileValueExchange& exchange, const char16_t* name) override;

  private:
    T current{};
    T stored{};
    int base = 0;
};

extern template class VProfile<short>;
extern template class VProfile<unsigned short>;
extern template class VProfile<int>;
extern template class VProfile<unsigned int>;
extern template class VProfile<bool>;
extern template class VProfile<VTriState>;

}  // namespace connectdialog
