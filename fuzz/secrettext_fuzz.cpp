// Any text as an enciphered, a scrambled and a protected value and as an old login script: reading ends, and what was
// read is written so that it reads the same again. The first byte of the input picks what is tried.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "config/loginscript.h"
#include "foundation/vnarrowstring.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofileencodedstring.h"

using namespace connectdialog;

namespace {

/// A user of his own, with a key file, without a Secret Service and without a trace.
class ScratchUser {
  public:
    ScratchUser() {
        if (mkdtemp(folder.data()) == nullptr) std::abort();
        setenv("XDG_DATA_HOME", folder.c_str(), 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        setenv("TEMP", "/proc/none", 1);
    }
    ScratchUser(const ScratchUser&) = delete;
    ScratchUser& operator=(const ScratchUser&) = delete;
    ~ScratchUser() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

  private:
    std::string folder = "/tmp/secrettext_fuzz-XXXXXX";
};

void Require(bool holds) {
    if (!holds) std::abort();
}

void CheckBlowfish(const VUnicodeString& text, std::uint32_t mode) {
    VBlowfishString string;
    string.SetMode(mode);
    string.Set(string.DecipherBlowfish(text));
    Require(string.GetCipherText() == text);
    const VUnicodeString again = string.EncipherBlowfish();
    Require(string.DecipherBlowfish(again) == string.GetText());
}

void CheckScrambled(const VUnicodeString& text) {
    const VUnicodeString plain = DecodeScrambledText(text);
    Require(DecodeScrambledText(VProfileEncodedString::EncodeScrambled(VNarrowString(plain))) == plain);
    ConvertLoginScript(text);
}

void CheckProtected(const VUnicodeString& text) {
    VProfileCapiString value;
    const VUnicodeString plain = value.Unprotect(text);
    Require(value.GetLastReport()->GetCode() == 0 || plain.IsEmpty());
    const VUnicodeString ended(text.GetData());  // a text ends at its first zero
    Require(value.Unprotect(value.Protect(ended)) == ended);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchUser user;
    if (size == 0) return 0;
    const VUnicodeString text(reinterpret_cast<const char*>(data + 1), size - 1);
    // The modes without a ready key schedule are slow: they get few of the inputs.
    switch (data[0] % 16) {
        case 0:
            CheckBlowfish(text, data[0] / 16U % 3);
            break;
        case 1:
        case 2:
            CheckProtected(text);
            break;
        default:
            CheckScrambled(text);
            CheckBlowfish(text, 0);
    }
    return 0;
}
