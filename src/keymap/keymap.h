// A keymap in memory, and the text files in which users edit keymaps.
//
//   line      = comment | "" | blanks modifiers blank blanks key blank blanks action
//   comment   = ";" text                                   the ";" is the very first character
//   modifiers = one or more of N E C S A, in any case      none, extended key, Control, Shift, Alt
//   key       = a name or a number of GetKeyCode, in any case
//   action    = `"` text `"`                               send the text; it ends at the last quote of the line
//             | `RUN("` program `")` [ `("` arguments `")` ]
//             | `LAUNCH("` program `")`
//             | function                                   a name of GetKeyFunctionID; what follows a blank is ignored
//
// A blank is a blank or a tab. Nothing is escaped: a text is kept as it stands, backslashes included, and what it means
// when it is sent is the host's concern.
#pragma once

#include <cstdint>
#include <memory>

#include "foundation/vmap.h"
#include "keymap/ikeymap.h"
#include "keymap/keynames.h"

namespace connectdialog {

class VTextFile;

/// What Load reports: the file cannot be used, or it is used although it has errors. Inserts: the file's name, and the
/// errors or the system's text of the failure.
inline constexpr std::uint32_t kReportBadKeymap = 0xE1370001;
inline constexpr std::uint32_t kReportKeymapErrors = 0xA1370002;

/// The bindings of its own, and behind them the built-in ones once it was loaded from a file.
class Keymap : public IKeymap {
  public:
    struct KeyMapEntry {
        std::uint32_t function = kKeyFunctionNone;
        VUnicodeString string;     ///< what is sent, or the program
        VUnicodeString arguments;  ///< of the program that is run
        friend bool operator==(const KeyMapEntry&, const KeyMapEntry&) = default;
    };
    using Entries = VMap<std::uint32_t, KeyMapEntry>;

    Keymap() = default;
    /// A copy has the bindings alone: no built-in ones, and no comments.
    Keymap(const Keymap& other);
    Keymap& operator=(const Keymap& other);
    ~Keymap() override;

    std::uint32_t GetKeyFunction(std::uint32_t key) const override;
    VUnicodeString GetKeyString(std::uint32_t key) const override;
    void SetKeyFunction(std::uint32_t key, std::uint32_t number) override;
    void SetKeyString(std::uint32_t key, const VUnicodeString& text) override;
    void SetKeyArguments(std::uint32_t key, const VUnicodeString& text) override;

    /// Adds the bindings of the file to those that are there and replaces those of the same key; then the built-in
    /// bindings are made afresh. A name that cannot be opened is looked for in the folder `keymaps` of the user's
    /// configuration, where an empty file takes the place of what has that name: such a keymap has no bindings.
    ///
    /// A line with an error binds nothing, or what is good of it. With one or two errors the result is true with
    /// kReportKeymapErrors. On failure: false with kReportBadKeymap; the bindings read so far stay. That is so after
    /// the third error, where reading stops, when reading fails and when the file is too long.
    bool Load(const VUnicodeString& fileName, VReportMessageParams& report) override;
    /// The same for a file that must be there: nothing is created.
    bool LoadExisting(const VUnicodeString& fileName, VReportMessageParams& report);
    /// Writes the bindings of its own in UTF-8, sorted, one a line; comments are not kept. On failure: false with the
    /// last error, and the file is as it was; 1113: a string holds half a character.
    bool Save(const VUnicodeString& fileName) override;

    /// Binds the key, in the place of what it was bound to.
    void SetEntry(std::uint32_t key, KeyMapEntry entry) { entries[key] = std::move(entry); }
    const Entries& GetEntries() const { return entries; }
    /// The built-in bindings, or null before the first Load. Owned by this keymap.
    const Keymap* GetDefaults() const { return defaults.get(); }
    /// Whether the file that was loaded last had a comment, which Save would lose.
    bool HasComments() const { return hasComments; }

    /// The same keys with the same bindings, and the same built-in ones or none on either side.
    friend bool operator==(const Keymap& a, const Keymap& b);

  protected:
    void RemoveAllEntries() { entries.RemoveAll(); }

  private:
    static constexpr std::uint32_t kBucketCount = 4096;

    bool ReadFrom(VTextFile& file, const VUnicodeString& fileName, VReportMessageParams& report);

    Entries entries{kBucketCount};
    std::unique_ptr<Keymap> defaults;
    bool hasComments = false;
};

}  // namespace connectdialog
