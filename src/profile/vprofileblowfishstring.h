// A password in the store: enciphered with Blowfish under keys of the library.
#pragma once

#include "profile/vblowfishstring.h"
#include "profile/vprofile2.h"

namespace connectdialog {

template <>
inline constexpr bool kIsProfileText<VBlowfishString> = true;

// Scripts see and give the cipher text only: they can move a password and never learn it.
template <>
bool VProfile2<VBlowfishString, VProfileSz>::GetVariant(VVariant& out, VReportMessageParams& report) const;
template <>
bool VProfile2<VBlowfishString, VProfileSz>::PutValue(IProfileValueExchange& exchange, const char16_t* name) const;
template <>
bool VProfile2<VBlowfishString, VProfileSz>::SetVariant(const VVariant& in, VReportMessageParams& report);
template <>
bool VProfile2<VBlowfishString, VProfileSz>::GetValue(IProfileValueExchange& exchange, const char16_t* name);
/// Takes the stored text as it stands for the plain text; VProfileBlowfishString deciphers it.
template <>
bool VProfile2<VBlowfishString, VProfileSz>::Read(VProfileKey* key);
/// An empty text is stored as it is and not as an enciphered empty text.
template <>
void VProfile2<VBlowfishString, VProfileSz>::Save(VProfileKey& key, bool force);

/// Compared by plain text; enciphered anew at each save.
class VProfileBlowfishString : public VProfile2<VBlowfishString, VProfileSz> {
  public:
    using VProfile2::Load;

    const VUnicodeString& GetText() const { return Get().GetText(); }
    void SetText(const VUnicodeString& text) { Edit().Set(text); }

    /// Deciphers into value and stored copy and clears the missing flag. False for a null key or an absent value.
    bool Read(VProfileKey* key) override;
    /// Read; when that is false, value and stored copy are the plain text `defaultValue`, the value is missing, and the
    /// result is false.
    bool Load(VProfileKey* key, const VUnicodeString& defaultValue);
    bool Load(VProfileKey* key, const VUnicodeString& name, const VUnicodeString& defaultValue);
};

}  // namespace connectdialog
