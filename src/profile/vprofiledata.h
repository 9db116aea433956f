// A setting as an object: the abstract root of all typed profile values and composites.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VNarrowString;
class VProfileKey;
class VReportMessageParams;
class VStringArray;
class VVariant;

/// Message codes that values report; their texts lie in the host's message table. Each has the value's name as insert.
inline constexpr std::uint32_t kReportNotSupported = 0xE104006A;
inline constexpr std::uint32_t kReportBadVariant = 0xE104006B;
/// What a decoder reports for a text that has no encoding of its own: the raw text is then the value.
inline constexpr std::uint32_t kReportPlainText = 0xE1040040;

/// Takes or gives named values: the other side of PutValue and GetValue. Each answers false when it cannot.
class IProfileValueExchange {
  public:
    virtual ~IProfileValueExchange() = default;
    /// A bool travels as 0 or 1.
    virtual bool PutNumber(std::uint32_t value, const char16_t* name) = 0;
    virtual bool PutString(const char16_t* text, const char16_t* name) = 0;
    virtual bool PutStringArray(const VStringArray& strings, const char16_t* name) = 0;
    virtual bool GetNumber(std::uint32_t& value, const char16_t* name) = 0;
    virtual bool GetString(VUnicodeString& text, const char16_t* name) = 0;
    virtual bool GetStringArray(VStringArray& strings, const char16_t* name) = 0;
};

/// Reads values from a textual form of the host's configuration layer. Each answers false with a code in the report.
class IProfileTextDecoder {
  public:
    virtual ~IProfileTextDecoder() = default;
    virtual bool DecodeBool(bool& value, const char* text, VReportMessageParams& report) = 0;
    /// `flags` is 1.
    virtual bool DecodeText(VNarrowString& value, const char* text, VReportMessageParams& report,
                            std::uint32_t flags) = 0;
    /// `keepWhole` is the inverse of the value's split flag.
    virtual bool DecodeArray(VStringArray& value, const char* text, VReportMessageParams& report, bool keepWhole) = 0;
};

/// A setting knows its value name, its current value and the copy that the store holds.
///
/// Its states follow from the current value, the stored copy and the missing flag:
///   clean: equal, not missing: Save does nothing;
///   edited: they differ: Save writes;
///   committed: Commit ran on an edit: equal, missing: Save writes;
///   absent: the store had no value: both are the default, missing: Save writes.
/// So what the store lacks is written at the next Save even if nobody changed it.
///
/// Values are not locked; one thread uses them. Nothing here throws.
class VProfileData {
  public:
    VProfileData() = default;
    VProfileData(const VProfileData&) = default;
    VProfileData& operator=(const VProfileData&) = delete;
    virtual ~VProfileData() = default;

    /// Sets value and stored copy from a textual form and clears the missing flag. False when there is none.
    virtual bool Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report);
    /// Writes the current value when it must be written or `force` is set; see the states above. The outcome of the
    /// key's write is told only by the key.
    virtual void Save(VProfileKey& key, bool force) = 0;
    virtual bool IsChanged() const = 0;
    /// Accepts an edit: the stored copy becomes the current value, and the next Save writes it.
    virtual void Commit() = 0;
    /// Drops an edit.
    virtual void Revert() = 0;
    /// Takes over the current value of another of the same class; the stored copy and the flag stay. Another class:
    /// nothing happens.
    virtual void Assign(const VProfileData& other) = 0;
    /// A simple value gives itself for any index; a composite its member at `index`, or null behind the last.
    virtual VProfileData* GetMember(std::size_t index) = 0;

    // Scripting. Where a class does not override one, it is not supported: false, and the report (where there is one)
    // gets kReportNotSupported. `value` is the address of a value of the class's own type and `size` its size in bytes.

    virtual bool GetVariantFrom(VVariant& out, const void* value, std::size_t size, VReportMessageParams& report) const;
    virtual bool PutValueFrom(IProfileValueExchange& exchange, const void* value, std::size_t size,
                              const char16_t* name) const;
    virtual bool GetVariant(VVariant& out, VReportMessageParams& report) const;
    virtual bool PutValue(IProfileValueExchange& exchange, const char16_t* name) const;
    virtual bool SetVariantInto(const VVariant& in, void* value, std::size_t size, VReportMessageParams& report) const;
    virtual bool GetValueInto(IProfileValueExchange& exchange, void* value, std::size_t size,
                              const char16_t* name) const;
    /// On failure to convert: false with kReportBadVariant, and the value stays.
    virtual bool SetVariant(const VVariant& in, VReportMessageParams& report);
    virtual bool GetValue(IProfileValueExchange& exchange, const char16_t* name);

    /// Run round the saving of a composite's members.
    virtual void Lock(VProfileKey& key, bool force);
    virtual void Unlock(VProfileKey& key, bool force);
    virtual bool IsMissing() const { return missing; }

    /// The value name in the key; set once by the owner, before the first load.
    void SetName(const VUnicodeString& newName) { name = newName; }
    const VUnicodeString& GetName() const { return name; }

  protected:
    void SetMissing(bool isMissing) { missing = isMissing; }
    /// Reports `code` with the value's name; gives false.
    bool ReportFailure(VReportMessageParams& report, std::uint32_t code) const;

  private:
    VUnicodeString name;
    bool missing = false;
};

}  // namespace connectdialog
