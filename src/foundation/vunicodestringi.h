// The string that the library hands out through IString.
#pragma once

#include "foundation/istring.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

/// A VUnicodeString that another module can fill in.
class VUnicodeStringI : public VUnicodeString, public IString {
  public:
    using VUnicodeString::VUnicodeString;
    using VUnicodeString::operator=;

    bool IsEmpty() const override { return VUnicodeString::IsEmpty(); }
    void Assign(const char16_t* characters, std::size_t count, Str::SensitiveState state) override;
    void Assign(const char* characters, std::size_t count, Str::SensitiveState state) override;
    void Assign(const char16_t* characters, Str::SensitiveState state) override;
    void Assign(const char* characters, Str::SensitiveState state) override;
    void CopyTo(IString& other) const override;
    void Append(const char* characters, std::size_t count) override;
    void Append(const char16_t* characters, std::size_t count) override;
    void Append(const char* characters) override;
    void Append(const char16_t* characters) override;

  private:
    void StartOver(Str::SensitiveState state);
};

}  // namespace connectdialog
