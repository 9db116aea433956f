// The seam to the profile store: what a provider implements and the host hands in.
//
// A store is a tree of keys. A key has named values of four types (dword, string, binary, list of strings) and named
// children. The library opens a store of its own for each operation, works through key handles and closes everything in
// the reverse order; it never keeps a handle.
//
// What every provider owes, beyond the operations:
//  - Key and value names are case-insensitive and case-preserving (folded by FoldCase of foundation/casefold.h) and
//    unique within their parent. A name with backslashes names a key some levels down. Children are enumerated in the
//    order of their folded code units.
//  - It knows each child's kind without opening the child.
//  - OpenChild with folder 0 on an absent key gives a handle whose reads find nothing; its first write creates the key.
//    Asking, opening and reading never create anything. With folder 1 the key is created at once.
//  - A handle whose key was deleted in the meantime reads nothing and refuses writes (code 1018).
//  - The handles of one factory see each other's writes at once. They belong to one thread.
//  - Unit of work: a store takes part from its first write, or from JoinUnitOfWork, until it is closed. What all the
//    overlapping stores wrote becomes durable in one step when the last one that takes part closes, or when Commit is
//    called. A store that only reads holds nothing back, unless it holds a view. A crash before that leaves the state
//    before the first write.
//  - Several processes may use one store. A writer waits a bounded time for another, then its write fails.
//  - A write that cannot be done is false with a report; nothing stored is lost by it.
//
// Reports: each operation of a key leaves its outcome in the key's report (GetLastReport): code 0 after success, 2 for
// an absent key or value, 5 for a read-only store, 87 for a bad argument, 1018 for a deleted key, 1629 for a value of
// another type; others as the provider's medium gives them, with the original cause as insert.
#pragma once

#include <cstdint>

namespace connectdialog {

class VReportMessageParams;
class VSecurityDescriptor;
class VStringArray;
class VUnicodeString;

/// What a child of a key is, as NextWithKind tells it.
enum class ProfileKind : std::uint32_t {
    kListEntry = 3,   ///< an entry of a list: a session, or a value that is a list; only from an iterator by kind
    kUnknown = 4,     ///< the child must be opened to find out
    kFolder = 5,      ///< a key without the value "Is Session"
    kSession = 6,     ///< a key with the value "Is Session"
    kSessionLink = 7  ///< also a session; the library makes no difference between 6 and 7
};

/// Runs once over the children of a key, in the order told above. What is created or deleted under the key meanwhile
/// may or may not be met; the run ends in any case.
class IProfileIteratorImpl {
  public:
    virtual ~IProfileIteratorImpl() = default;
    /// True while there is another child; its name and a ProfileKind go out. At the end: false, and both stay.
    virtual bool NextWithKind(VUnicodeString& name, std::uint32_t& kind) = 0;
    virtual bool Next(VUnicodeString& name) = 0;
};

/// A handle on one key. Names are zero-terminated UTF-16; a null name counts as empty. A value name is local to the key
/// and may be empty; a subkey name may hold several levels separated by backslashes, none of them empty.
class IProfileKeyImpl {
  public:
    virtual ~IProfileKeyImpl() = default;

    // Reads. On failure: false, and the output stays as it was.

    /// A security descriptor: stored as a list of rules or, failing that, as a binary self-relative descriptor. Bytes
    /// that are none: false with code 1338. Rules that cannot be read: false with code 13 and the rules as insert; then
    /// alone the output changes, and has the other rules (see VSecurityDescriptor::LoadRules).
    virtual bool ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor) = 0;
    /// On success the array is cleared first.
    virtual bool ReadMultiString(const char16_t* name, VStringArray& strings) = 0;
    /// `size` counts bytes. With a null buffer only the size is given back. A buffer too small: false with code 234,
    /// and `size` tells what is needed.
    virtual bool ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) = 0;
    virtual bool ReadString(const char16_t* name, VUnicodeString& text) = 0;
    virtual bool ReadDword(const char16_t* name, std::uint32_t& value) = 0;

    // Writes. Each replaces a value of the name, whatever its type was.

    /// In binary, self-relative.
    virtual bool WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor) = 0;
    virtual bool WriteMultiString(const char16_t* name, const VStringArray& strings) = 0;
    /// `size` counts bytes; `data` may be null when it is 0.
    virtual bool WriteBinary(const char16_t* name, const void* data, std::uint32_t size) = 0;
    /// Zero-terminated; null counts as empty.
    virtual bool WriteString(const char16_t* name, const char16_t* text) = 0;
    virtual bool WriteDword(const char16_t* name, std::uint32_t value) = 0;

    /// Gives the key the values of another key of the same factory in place of its own; its children stay. Creates the
    /// key. False with code 87 for a key of another factory; an absent `source` fails as its reads do.
    virtual bool CopyValues(IProfileKeyImpl& source) = 0;

    /// False with code 2 when there is no such value.
    virtual bool DeleteValue(const char16_t* name) = 0;
    /// Removes the subkey with everything under it. False with code 2 when there is none.
    virtual bool DeleteKey(const char16_t* name) = 0;
    /// May be asked with several levels.
    virtual bool KeyExists(const char16_t* name) = 0;
    virtual bool IsWritable() = 0;
    /// Null puts the default back. A provider whose keys carry no security gives false with code 50.
    virtual bool SetKeySecurity(const VSecurityDescriptor* descriptor) = 0;

    /// The outcome of the latest operation of this key. Held by the key; never null.
    virtual VReportMessageParams* GetLastReport() = 0;

    /// A handle on a subkey, owned by the caller; never null. An empty name is the key itself. `reserved` is 0.
    virtual IProfileKeyImpl* OpenChild(const char16_t* name, std::uint32_t reserved, std::uint32_t folder) = 0;
    /// Owned by the caller; never null. An iterator by kind gives the values that are lists of strings first, and
    /// answers kListEntry for them and for children that are sessions.
    virtual IProfileIteratorImpl* CreateIterator(bool byKind) = 0;
    /// The same over the children that are folders; those that are known to be sessions are passed by, which is much
    /// cheaper than looking at each. Owned by the caller; never null.
    virtual IProfileIteratorImpl* CreateFolderIterator() = 0;
};

/// One store handle: a unit of work, see above. Destroying it is Close with the outcome dropped.
class IProfileStoreImpl {
  public:
    virtual ~IProfileStoreImpl() = default;
    /// The root, owned by the caller; never null. A read-only root and all keys opened from it refuse writes (code 5).
    virtual IProfileKeyImpl* CreateRootKey(bool readOnly) = 0;

    /// Takes part from now on although nothing was written yet: what this thread writes until this store closes is one
    /// unit, whichever stores do it. False with a report when the store cannot be written.
    virtual bool JoinUnitOfWork() = 0;
    /// Makes durable what all stores wrote so far; their units go on. On failure: false, and what was written is gone:
    /// the store is as it was after the last commit.
    virtual bool Commit() = 0;
    /// Drops what all stores wrote since the last commit. Open keys stay usable and read the state before. Another
    /// store that takes part has lost its writes with it: it refuses more (code 1223), and its Close is false, until it
    /// abandons too. So half of what it did can never become durable. The same goes for a Commit that fails.
    virtual void Abandon() = 0;
    /// Ends this handle's part; the last one commits. Keys opened from it must be closed before. A second call does
    /// nothing and gives true. On failure as Commit.
    virtual bool Close() = 0;
    /// The outcome of the latest operation of this store. Held by the store; never null.
    virtual VReportMessageParams* GetLastReport() = 0;

    /// For many reads one after the other: until this store closes, or a unit begins, they see one state of the store,
    /// which costs less than a look at the medium for each. Writers of other processes wait so long. A provider without
    /// such views does nothing.
    virtual void HoldView() {}
};

/// The host's factory object: where the settings are kept.
class VProfileStoreFactory {
  public:
    virtual ~VProfileStoreFactory() = default;
    /// A store handle, owned by the caller; never null. A store that cannot be opened answers every read with absence
    /// and every write with false, and its report tells why.
    virtual IProfileStoreImpl* CreateStore() = 0;
};

}  // namespace connectdialog
