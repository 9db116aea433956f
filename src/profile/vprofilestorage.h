// The storage classes: how a value is kept in a key.
//
// Each adds a read and a write of its type. A read is false for a null key, an absent value and one of another type,
// and then the output stays; a write also clears the missing flag.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "profile/vprofiledata.h"

namespace connectdialog {

/// Kept as a dword.
class VProfileDword : public VProfileData {
  protected:
    bool ReadStored(VProfileKey* key, std::uint32_t& value) const;
    void WriteStored(VProfileKey& key, std::uint32_t value);
};

/// Kept as a string.
class VProfileSz : public VProfileData {
  public:
    bool GetVariantFrom(VVariant& out, const void* value, std::size_t size,
                        VReportMessageParams& report) const override;
    bool PutValueFrom(IProfileValueExchange& exchange, const void* value, std::size_t size,
                      const char16_t* name) const override;
    bool SetVariantInto(const VVariant& in, void* value, std::size_t size, VReportMessageParams& report) const override;
    bool GetValueInto(IProfileValueExchange& exchange, void* value, std::size_t size,
                      const char16_t* name) const override;

  protected:
    bool ReadStored(VProfileKey* key, VUnicodeString& value) const;
    void WriteStored(VProfileKey& key, const VUnicodeString& value);
    /// The value of the textual form, converted; a text without an encoding of its own is the value itself.
    static bool Decode(VUnicodeString& value, const char* text, IProfileTextDecoder& decoder,
                       VReportMessageParams& report);
};

/// Kept as a list of strings.
class VProfileMultiSz : public VProfileData {
  public:
    bool SetVariantInto(const VVariant& in, void* value, std::size_t size, VReportMessageParams& report) const override;
    bool GetValueInto(IProfileValueExchange& exchange, void* value, std::size_t size,
                      const char16_t* name) const override;
    /// The variant and the exchange form of an array.
    virtual bool GetVariantOf(const VStringArray& value, VVariant& out) const;
    virtual bool PutValueOf(const VStringArray& value, IProfileValueExchange& exchange, const char16_t* name) const;

    /// Whether a textual form is split into elements; the decoder is given the inverse. True at first.
    void SetSplits(bool newSplits) { splits = newSplits; }

  protected:
    bool ReadStored(VProfileKey* key, VStringArray& value) const;
    void WriteStored(VProfileKey& key, const VStringArray& value);
    bool Decode(VStringArray& value, const char* text, IProfileTextDecoder& decoder,
                VReportMessageParams& report) const;

  private:
    bool splits = true;
};

/// Kept as a binary record of a fixed size. The type of the value packs itself field by field, little-endian:
///   static constexpr std::size_t kStoredSize;
///   void Pack(std::span<std::byte, kStoredSize> record) const;
///   static T Unpack(std::span<const std::byte, kStoredSize> record);
/// A stored record of any other size counts as absent.
class VProfileBinary : public VProfileData {
  protected:
    template <class T>
    bool ReadStored(VProfileKey* key, T& value) const {
        std::array<std::byte, T::kStoredSize> record;
        if (!ReadRecord(key, GetName(), record)) return false;
        value = T::Unpack(record);
        return true;
    }
    template <class T>
    void WriteStored(VProfileKey& key, const T& value) {
        std::array<std::byte, T::kStoredSize> record;
        value.Pack(record);
        WriteRecord(key, record);
    }
    static bool ReadRecord(VProfileKey* key, const VUnicodeString& name, std::span<std::byte> record);

  private:
    void WriteRecord(VProfileKey& key, std::span<const std::byte> record);
};

}  // namespace connectdialog
