// Access control lists: who may do what with an object, and who may not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foundation/vsid.h"

namespace connectdialog {

/// What an entry of a list does; lists may hold entries of other kinds too.
enum class AccessKind : std::uint8_t { kAllow = 0, kDeny = 1 };

/// One entry as it is read.
struct VAclEntry {
    std::uint8_t type = 0;  ///< an AccessKind or the number of another kind (MS-DTYP 2.4.4.1)
    std::uint8_t flags = 0;
    std::uint32_t mask = 0;  ///< the rights; 0 when the kind of entry is not known here
    VSid sid;                ///< whose; not valid when the kind of entry is not known here
};

/// A value: the list in its packed form (MS-DTYP 2.4.5), which is revision (1 byte), a zero byte, size (16 bits), count
/// (16 bits), a zero word, then each entry: type (1 byte), flags (1 byte), size (16 bits), mask (32 bits), identifier.
/// Numbers are little-endian. Entries of other kinds than those above are carried along as they are.
///
/// On failure an operation gives false, the list stays, and the last error tells why: 1336 the packed form is not
/// valid, 1337 the identifier is not, 1344 the list would grow beyond 65535 bytes, 87 there is no such entry.
class VAcl {
  public:
    /// An empty list: it lets nobody in.
    VAcl();

    /// From the packed form that `source` begins with; what follows it is not looked at.
    bool Load(std::span<const std::uint8_t> source);
    std::span<const std::uint8_t> GetBytes() const { return bytes; }

    std::size_t GetCount() const;
    bool GetEntry(std::size_t index, VAclEntry& entry) const;

    /// Adds an entry at the end. The order of the entries decides: the first one that fits a right and an account does.
    bool AddEntry(AccessKind kind, std::uint32_t mask, const VSid& sid);
    /// Adds the mask to the entry's own. Code 87 also for an entry whose kind is not known here.
    bool ExtendEntry(std::size_t index, std::uint32_t mask);
    bool RemoveEntry(std::size_t index);

  private:
    std::size_t OffsetOf(std::size_t index) const;
    std::size_t SizeAt(std::size_t offset) const;
    VAclEntry EntryAt(std::size_t offset) const;
    void SetCounts(std::size_t count);

    std::vector<std::uint8_t> bytes;  ///< always a valid list
    std::size_t used;                 ///< up to where the entries go; unused room may follow
};

}  // namespace connectdialog
