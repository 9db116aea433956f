// A text that is kept enciphered with Blowfish.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/irandomsource.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The plain text and the cipher text that was deciphered last; both are sensitive from the start, and so is every
/// text that this class gives. One thread uses an object; different objects do not disturb each other.
///
/// The text form: `u` and lower-case hexadecimal digits of two layers. The inner layer is the UTF-16 text with its zero
/// and 1 to 8 random bytes, the outer one that between 4 random bytes on each side; each is enciphered under a key of
/// its own. So equal plain texts give different texts at every save. The keys are constants of the library: this keeps
/// a password from being read at a glance, and not from who has the library.
class VBlowfishString {
  public:
    VBlowfishString();
    VBlowfishString(const VBlowfishString&) = default;
    VBlowfishString& operator=(const VBlowfishString&) = default;
    virtual ~VBlowfishString() = default;

    /// Replaces the plain text, which stays sensitive.
    virtual void Set(const VUnicodeString& text) { plainText = text; }
    /// Shares the source. Null: one of the system's that the process shares, taken when it is first needed.
    virtual void SetRandomSource(IRandomSource* source) { randomSource = VRef<IRandomSource>::Share(source); }
    /// 0, as at first: blocks of big-endian words, chained, keys of 16 bytes. 1: little-endian words, not chained, 32
    /// bytes. 2: as 0 with little-endian words.
    virtual void SetMode(std::uint32_t newMode) { mode = newMode; }

    const VUnicodeString& GetText() const { return plainText; }
    /// What was deciphered last; a text enciphered since then is not kept.
    const VUnicodeString& GetCipherText() const { return cipherText; }

    /// The text form of the plain text. A random source that fails leaves zeros for its bytes: the text is enciphered
    /// and deciphers all the same, but equal texts come out equal.
    VUnicodeString EncipherBlowfish();

    /// Keeps `text` as the cipher text and gives its plain text; the own plain text stays. Older forms are read too:
    /// `l` has characters of 32 bits, no letter stands before narrow text.
    /// On failure: the empty string, when the digits are no whole number of blocks. Digits that are none count as zeros
    /// from there on, and the text ends at its first zero.
    VUnicodeString DecipherBlowfish(const VUnicodeString& text);

    /// By plain text.
    friend bool operator==(const VBlowfishString& a, const VBlowfishString& b) { return a.plainText == b.plainText; }

  private:
    VUnicodeString plainText;
    VUnicodeString cipherText;
    std::uint32_t mode = 0;
    VRef<IRandomSource> randomSource;
};

}  // namespace connectdialog
