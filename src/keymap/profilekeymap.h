// A keymap as a setting of a session.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "keymap/keymap.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// The keymap is what counts; the lines of the list are made from it when it is saved, and it from them when they are
/// loaded. Stored forms, by value name:
///
///   "Keymap v3"   a list of strings: the lines of keymap.h, sorted, without comments
///   "Keymap v2"   binary, big-endian: count (4 bytes), then for each binding
///   "Keymap"      key (4), function name, string; texts are zero-terminated, UTF-8 behind the bytes EF BB BF and
///                 narrow otherwise. Modifiers of the key: 0x0100 E, 0x0200 C, 0x0400 S, 0x0800 A
///
/// The older forms are read and never written: what they hold reaches "Keymap v3" with the first change, or when
/// saving is forced. What cannot be read of a form is left out silently, and goes with the next write.
class ProfileKeymap : public VProfileTextList, public Keymap {
  public:
    static constexpr std::size_t kLargestBinaryValue = 32000;  ///< bytes

    ProfileKeymap() = default;
    /// A deep copy, also of what counts as stored.
    ProfileKeymap(const ProfileKeymap& other);
    ProfileKeymap& operator=(const ProfileKeymap&) = delete;
    ~ProfileKeymap() override;

    /// Loads the newest form that the key has, under the name "Keymap v3"; with none, or a null key, the keymap is
    /// empty and missing. True unless a binary value has no count.
    bool LoadNewest(VProfileKey* key);
    /// Loads the value of that name: a list for a name with " v3" in it, otherwise a binary value; where that is absent
    /// or too large, the one whose name lacks " v2". With neither the keymap is empty.
    virtual bool ReadValue(VProfileKey* key, const VUnicodeString& name);
    /// Loads the list under `name`, or `lines` where the key has none. Reading stops at the third error.
    virtual bool LoadLinesValue(VProfileKey* key, const VUnicodeString& name, const VStringArray& lines);
    /// Loads a binary value of `size` bytes; null is an empty keymap. The key is not looked at. False when there is no
    /// count. After data that is cut short, what was read shows as changed.
    virtual bool LoadBinaryValue(VProfileKey* key, const VUnicodeString& name, const std::uint8_t* data,
                                 std::size_t size);

    void Save(VProfileKey& key, bool force) override;
    bool IsChanged() const override;
    void Commit() override;
    void Revert() override;
    void Assign(const VProfileData& other) override;
    bool Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) override;
    bool GetVariant(VVariant& out, VReportMessageParams& report) const override;
    bool PutValue(IProfileValueExchange& exchange, const char16_t* name) const override;
    bool SetVariant(const VVariant& in, VReportMessageParams& report) override;
    bool GetValue(IProfileValueExchange& exchange, const char16_t* name) override;

    // It has no file: both do nothing and give true.
    bool Load(const VUnicodeString& fileName, VReportMessageParams& report) override;
    bool Save(const VUnicodeString& fileName) override;

  private:
    struct WithoutSnapshot {};
    ProfileKeymap(const ProfileKeymap& other, WithoutSnapshot);

    void TakeSnapshot();
    void ParseLines();
    void FormatLines();
    ProfileKeymap CopyWithLines() const;

    std::unique_ptr<ProfileKeymap> snapshot;  ///< as last read or written; null when that was empty
};

}  // namespace connectdialog
