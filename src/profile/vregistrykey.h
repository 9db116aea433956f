// A key of the settings of the machine or of the user, beside the host's profile store.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "foundation/vsettingshive.h"

namespace connectdialog {

class VSecurityDescriptor;
class VStringArray;

/// What a key is opened for: bits of an access mask. Others are kept and mean nothing here.
enum RegistryAccess : std::uint32_t {
    kRegistryQueryValue = 1,
    kRegistrySetValue = 2,
    kRegistryCreateSubkey = 4,
    kRegistryEnumerateSubkeys = 8,
    kRegistryRead = 0x20019,
};

/// A handle on one key of a settings hive, with the operations of IProfileKeyImpl but for those that open children and
/// iterators. It serves the look-ups that must not go to the host's store.
///
/// Names are zero-terminated; a null name counts as empty, which is the nameless value or the key itself. Every value
/// operation gives false at once when the key did not open, and the report then still tells why; otherwise it leaves
/// its outcome in the report: 0 after success, 2 for an absent value, 5 for an operation that the key was not opened
/// for, 87 for a bad argument, 1015 for a damaged file (with the file and the line as insert), 1018 for a key that was
/// deleted meanwhile, 1629 for a value of another type. On failure the outputs stay as they were. A write is on disk
/// when it has succeeded. No exception leaves here.
class VRegistryKey {
  public:
    /// Opens a key below the root; it is never made. On failure: IsOpen is false, the report has code 2, 1015, or 5
    /// when the access has one of the two bits for changes and this user may not write the hive.
    VRegistryKey(HiveScope parent, const char16_t* subkey, std::uint32_t access);
    /// The same below another key. A parent that is not open gives code 6.
    VRegistryKey(const VRegistryKey& parent, const char16_t* subkey, std::uint32_t access);
    VRegistryKey(const VRegistryKey&) = delete;
    VRegistryKey& operator=(const VRegistryKey&) = delete;

    bool IsOpen() const { return hive != nullptr; }

    /// A security descriptor: see ReadSecurityValue.
    bool ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor);
    /// Empty strings in the list are kept; the array is cleared once the data was read.
    bool ReadMultiString(const char16_t* name, VStringArray& strings);
    /// `size` counts bytes. With a null buffer only the size is given back. A buffer too small: code 234, and `size`
    /// tells what is needed.
    bool ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size);
    /// Up to the first zero. In a text of the type with variables each `%NAME%` is replaced; code 234 when that comes
    /// to more than 4 M characters.
    bool ReadString(const char16_t* name, VUnicodeString& text);
    /// A dword that is not stored as four bytes: code 13.
    bool ReadDword(const char16_t* name, std::uint32_t& value);

    /// In binary, self-relative.
    bool WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor);
    bool WriteMultiString(const char16_t* name, const VStringArray& strings);
    /// `data` may be null when `size`, in bytes, is 0.
    bool WriteBinary(const char16_t* name, const void* data, std::uint32_t size);
    /// Zero-terminated; null counts as empty.
    bool WriteString(const char16_t* name, const char16_t* text);
    bool WriteDword(const char16_t* name, std::uint32_t value);

    bool DeleteValue(const char16_t* name);
    /// Removes the subkey with everything under it, in one step: all goes or nothing. The access that this key was
    /// opened with does not matter. An empty name: code 87.
    bool DeleteKey(const char16_t* subkey);
    /// Leaves the report alone.
    bool KeyExists(const char16_t* subkey);
    /// Whether the key was opened for setting values and for making subkeys.
    bool IsWritable() const;
    /// Null does nothing and succeeds. The keys of a hive carry no security: false with code 50.
    bool SetKeySecurity(const VSecurityDescriptor* descriptor);

    /// Held by the key; never null.
    VReportMessageParams* GetLastReport() { return &report; }

  private:
    friend class VRegistryKeyEnumerator;

    void Open(const char16_t* subkey);
    bool Allows(std::uint32_t needed);
    bool Read(const char16_t* name, VHiveValue& value);
    bool ReadOfType(const char16_t* name, std::uint32_t type, VHiveValue& value);
    bool Write(const char16_t* name, VHiveValue value);
    bool Conclude(const VHiveStatus& status);
    std::u16string PathOf(const char16_t* subkey) const;

    VSettingsHive* hive;  ///< the library's; null when the key did not open
    std::u16string path;
    std::uint32_t access;
    VReportMessageParams report;
};

/// Runs over the names of the keys just below a key, from the last to the first, so that a caller may delete what it
/// meets. It sees the keys that were there when it was made. A key that is not open, or not for this, has none.
class VRegistryKeyEnumerator {
  public:
    explicit VRegistryKeyEnumerator(VRegistryKey& key);
    std::size_t GetCount() const { return names.size(); }
    /// True while there is another; at the end: false, and `name` stays.
    bool Next(VUnicodeString& name);

  private:
    std::vector<std::u16string> names;
    std::size_t remaining = 0;
};

}  // namespace connectdialog
