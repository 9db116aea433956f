// The keymap as hosts see it.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VReportMessageParams;

/// Which key does what. A key is a key value with its modifiers (keymap/keyvalue.h), a function a number of
/// keymap/keynames.h. Belongs to one thread.
class IKeymap {
  public:
    virtual ~IKeymap() = default;
    /// 0 for a key that does nothing.
    virtual std::uint32_t GetKeyFunction(std::uint32_t key) const = 0;
    /// What is sent, or the program to be started; the empty string for a key without one.
    virtual VUnicodeString GetKeyString(std::uint32_t key) const = 0;

    /// With 0 the key loses its binding, and a built-in one shows again. Otherwise a key that is bound keeps its
    /// strings, and a new one has empty strings.
    virtual void SetKeyFunction(std::uint32_t key, std::uint32_t number) = 0;
    // Each changes a key that has a binding of its own and no other.
    virtual void SetKeyString(std::uint32_t key, const VUnicodeString& text) = 0;
    virtual void SetKeyArguments(std::uint32_t key, const VUnicodeString& text) = 0;

    /// Adds the bindings of a keymap file. False with a report when the file cannot be used; see Keymap.
    virtual bool Load(const VUnicodeString& fileName, VReportMessageParams& report) = 0;
    /// Replaces a keymap file. False, with the platform's last error, when it cannot be written.
    virtual bool Save(const VUnicodeString& fileName) = 0;
};

}  // namespace connectdialog
