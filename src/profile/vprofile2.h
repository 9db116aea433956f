// VProfile2<T, S>: a value of type T kept by storage class S.
#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "profile/vprofilestorage.h"
#include "profile/vvariant.h"

namespace connectdialog {

/// Whether values of the type are kept as a string. A class that is text in another form than VUnicodeString says so
/// beside the functions of VProfile2 that it specializes.
template <class T>
inline constexpr bool kIsProfileText = std::is_same_v<T, VUnicodeString>;

/// T is copied, assigned and compared with ==. Named classes derive from it and override Read, Save or both.
template <class T, class S>
class VProfile2 : public S {
    static_assert(!std::is_base_of_v<VProfileSz, S> || kIsProfileText<T>, "only text is kept as a string");

  public:
    using S::Load;

    const T& Get() const { return current; }
    /// The current value for editing in place.
    T& Edit() { return current; }
    /// Sets the current value only.
    void Set(const T& value) { current = value; }
    const T& GetStored() const { return stored; }

    /// Reads into the current value and changes nothing else. False for a null key or an absent value.
    virtual bool Read(VProfileKey* key) { return S::ReadStored(key, current); }

    /// Value and stored copy from the key; an absent value takes `defaultValue` and is missing. Always true.
    bool Load(VProfileKey* key, const T& defaultValue) {
        current = defaultValue;  // before reading: a text that reads the same keeps this buffer
        const bool found = Read(key);
        S::SetMissing(!found);
        stored = current;
        return true;
    }
    bool Load(VProfileKey* key, const VUnicodeString& name, const T& defaultValue) {
        S::SetName(name);
        return Load(key, defaultValue);
    }

    bool Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) override {
        if constexpr (kHasTextForm) {
            if (!S::Decode(current, text, decoder, report)) return false;
            stored = current;
            S::SetMissing(false);
            return true;
        } else {
            return S::Load(text, decoder, report);
        }
    }
    void Save(VProfileKey& key, bool force) override {
        if (!force && !S::IsMissing() && !IsChanged()) return;
        S::WriteStored(key, current);
        stored = current;
    }
    bool IsChanged() const override { return !(current == stored); }
    void Commit() override {
        if (IsChanged()) S::SetMissing(true);
        stored = current;
    }
    void Revert() override { current = stored; }
    void Assign(const VProfileData& other) override {
        if (const auto* same = dynamic_cast<const VProfile2*>(&other)) current = same->current;
    }
    VProfileData* GetMember(std::size_t) override { return this; }

    bool GetVariant(VVariant& out, VReportMessageParams& report) const override {
        if constexpr (std::is_same_v<S, VProfileMultiSz>)
            return S::GetVariantOf(current, out);
        else
            return S::GetVariantFrom(out, &current, sizeof current, report);
    }
    bool PutValue(IProfileValueExchange& exchange, const char16_t* name) const override {
        if constexpr (std::is_same_v<S, VProfileMultiSz>)
            return S::PutValueOf(current, exchange, name);
        else
            return S::PutValueFrom(exchange, &current, sizeof current, name);
    }
    bool SetVariant(const VVariant& in, VReportMessageParams& report) override {
        return S::SetVariantInto(in, &current, sizeof current, report);
    }
    bool GetValue(IProfileValueExchange& exchange, const char16_t* name) override {
        return S::GetValueInto(exchange, &current, sizeof current, name);
    }

  protected:
    /// For a class that keeps its value in another form.
    T& EditStored() { return stored; }

  private:
    /// Text and lists of text have a textual form and a variant; records have neither.
    static constexpr bool kHasTextForm = std::is_same_v<T, VUnicodeString> || std::is_same_v<T, VStringArray>;

    T current{};
    T stored{};
};

using VProfileText = VProfile2<VUnicodeString, VProfileSz>;
using VProfileTextList = VProfile2<VStringArray, VProfileMultiSz>;

extern template class VProfile2<VUnicodeString, VProfileSz>;
extern template class VProfile2<VStringArray, VProfileMultiSz>;

}  // namespace connectdialog
