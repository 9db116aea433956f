// A text that merely should not be legible at a glance in the store: scrambled with a mask that it carries itself.
#pragma once

#include <cstddef>

#include "foundation/vnarrowstring.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// The text form: four random mask bytes, then the narrow text with byte i combined by XOR with mask byte i mod 4, all
/// in lower-case hexadecimal. The empty text stays empty. What is decoded is sensitive.
class VProfileEncodedString : public VProfileText {
  public:
    using VProfileText::Load;

    /// Sets the name and loads; an absent value is empty. Always true.
    bool Load(VProfileKey* key, const VUnicodeString& name) { return Load(key, name, VUnicodeString()); }
    bool Read(VProfileKey* key) override;
    /// Keeps what the store has under `valueName` and nobody can read now: until another value is saved, a Save with
    /// force writes it there as it was found, and one without writes nothing.
    void KeepAsFound(const VUnicodeString& valueName, const VUnicodeString& stored);
    /// What was kept goes, also where an empty value takes its place.
    void DropWhatWasFound() { found.Empty(); }
    void Save(VProfileKey& key, bool force) override;

    /// The text form of `bytes`, in their state.
    static VUnicodeString EncodeScrambled(const VNarrowString& bytes);
    /// The bytes of `length` characters of text form, followed by two zero bytes. Decoding stops at what is no pair of
    /// digits; less than a mask gives nothing but the zeros, and an empty text nothing at all.
    static VNarrowString DecodeScrambled(const char16_t* text, std::size_t length);

  private:
    VUnicodeString foundName;
    VUnicodeString found;
};

/// The plain text of the text form, up to its first zero.
VUnicodeString DecodeScrambledText(const VUnicodeString& text);

}  // namespace connectdialog
