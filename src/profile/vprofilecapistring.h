// A text in the store that only the same user on the same machine can read back.
#pragma once

#include <cstdint>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// What protecting and unprotecting report: the value's name, then the system's error text. The last has the name only.
inline constexpr std::uint32_t kReportNotProtected = 0xE1040045;
inline constexpr std::uint32_t kReportNotUnprotected = 0xE1040046;
inline constexpr std::uint32_t kReportOddDigits = 0xE1040047;

/// Protected by the platform (platform/usersecrets.h). The text form: `CAPI:` and the blob in upper-case hexadecimal.
/// Failures are kept in the report and traced, and the text is empty then: never the stored form, never plain text in
/// the store.
class VProfileCapiString : public VProfileText {
  public:
    using VProfileText::Load;

    /// The text form; the empty text stays empty. On failure: the empty string and kReportNotProtected.
    VUnicodeString Protect(const VUnicodeString& text);
    /// The plain text up to its first zero, not sensitive: who wants it so marks it, which keeps the buffer. A text
    /// without `CAPI:` is read from its first character. On failure: the empty string and the report.
    VUnicodeString Unprotect(const VUnicodeString& text);

    /// The result of the latest of the two; code 0 for success. Owned by the value.
    VReportMessageParams* GetLastReport() { return &report; }

    /// What is stored and cannot be unprotected reads as the empty text and is not missing: it stays in the store, and
    /// goes along into copies, until another value is saved.
    bool Read(VProfileKey* key) override;
    void Save(VProfileKey& key, bool force) override;

  private:
    VUnicodeString Fail(std::uint32_t code);
    VUnicodeString FailFromSystem(std::uint32_t code);

    VReportMessageParams report;
    VUnicodeString unreadable;  ///< the stored form that could not be unprotected
};

/// Whether a stored text is one that is protected for its user.
bool IsProtectedText(std::u16string_view stored);
/// Reads such a text, whatever value it stands in; what is read is sensitive. On failure: false, and it is empty.
bool ReadProtectedText(const VUnicodeString& valueName, const VUnicodeString& stored, VUnicodeString& text);

}  // namespace connectdialog
