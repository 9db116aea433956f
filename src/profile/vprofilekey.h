// Handles on the host's profile store: VProfileStore, VProfileKey, VProfileKeyIterator.
//
// They add ownership to the objects of iprofilestore.h and nothing else. None keeps its parent alive: nest scopes, so
// that an iterator or a child key closes before the key, and a key before the store, that it was opened from.
#pragma once

#include <cstdint>
#include <memory>

#include "profile/iprofilestore.h"

namespace connectdialog {

class VProfileKey;

using ProfileFactoryGetter = VProfileStoreFactory* (*)();

/// Tells where stores come from that are opened without an explicit factory. The getter is asked anew for each store;
/// the factory stays the host's. Requires: called before the first such store is opened.
void SetProfileFactoryGetter(ProfileFactoryGetter getter);
/// The factory that a store without one of its own is opened with. Owned by the host.
VProfileStoreFactory* GetProfileFactory();

/// An open store and its root key.
class VProfileStore {
  public:
    /// Null asks the registered getter. Not read-only.
    explicit VProfileStore(VProfileStoreFactory* factory = nullptr);
    /// Asks the registered getter.
    explicit VProfileStore(bool readOnly);
    /// Destroys the implementation object and then the root key.
    virtual ~VProfileStore();
    VProfileStore(const VProfileStore&) = delete;
    VProfileStore& operator=(const VProfileStore&) = delete;

    /// Owned by the store.
    VProfileKey* GetRootKey() { return root.get(); }
    bool IsReadOnly() const { return readOnly; }

    // The unit of work; see IProfileStoreImpl.
    [[nodiscard]] bool JoinUnitOfWork() { return impl->JoinUnitOfWork(); }
    [[nodiscard]] bool Commit() { return impl->Commit(); }
    void Abandon() { impl->Abandon(); }
    /// The keys opened from this store must be closed before.
    [[nodiscard]] bool Close() { return impl->Close(); }
    VReportMessageParams* GetLastReport() { return impl->GetLastReport(); }
    void HoldView() { impl->HoldView(); }

  private:
    friend class VProfileKey;
    VProfileStore(VProfileStoreFactory* factory, bool readOnly);

    std::unique_ptr<IProfileStoreImpl> impl;
    std::unique_ptr<VProfileKey> root;
    bool readOnly;
};

/// An open key. The operations are those of IProfileKeyImpl, with the same failures.
class VProfileKey {
  public:
    explicit VProfileKey(VProfileStore& store);
    /// With `folder` 0 the caller knows that the key exists or wants one that its first write creates; with 1 the key
    /// is created as a folder.
    VProfileKey(VProfileKey* parent, const char16_t* name, std::uint32_t folder);
    virtual ~VProfileKey();
    VProfileKey(const VProfileKey&) = delete;
    VProfileKey& operator=(const VProfileKey&) = delete;

    bool ReadDword(const char16_t* name, std::uint32_t& value);
    bool ReadString(const char16_t* name, VUnicodeString& text);
    bool ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size);
    bool ReadMultiString(const char16_t* name, VStringArray& strings);
    bool WriteDword(const char16_t* name, std::uint32_t value);
    bool WriteString(const char16_t* name, const char16_t* text);
    bool WriteBinary(const char16_t* name, const void* data, std::uint32_t size);
    bool WriteMultiString(const char16_t* name, const VStringArray& strings);
    bool CopyValues(VProfileKey& source);
    bool DeleteKey(const char16_t* name);
    bool KeyExists(const char16_t* name);

    /// False once a write through this handle was refused: settings drop the outcome of their writes, so whoever saved
    /// them through the handle asks it.
    bool AllWritten() const { return allWritten; }
    /// True when some writes went through and some were refused.
    bool IsHalfWritten() const { return anyWritten && !allWritten; }

    /// For what the forwarding operations do not offer: deleting a value, the last report. Owned by the key.
    IProfileKeyImpl* GetImpl() { return impl.get(); }

  private:
    friend class VProfileKeyIterator;
    friend class VProfileFolderIterator;
    bool Note(bool written) {
        allWritten = allWritten && written;
        anyWritten = anyWritten || written;
        return written;
    }

    std::unique_ptr<IProfileKeyImpl> impl;
    bool allWritten = true;
    bool anyWritten = false;
};

/// Runs over the children of a key. A loop reuses one name from call to call.
class VProfileKeyIterator : public IProfileIteratorImpl {
  public:
    VProfileKeyIterator(VProfileKey& key, bool byKind);
    ~VProfileKeyIterator() override;
    VProfileKeyIterator(const VProfileKeyIterator&) = delete;
    VProfileKeyIterator& operator=(const VProfileKeyIterator&) = delete;

    bool NextWithKind(VUnicodeString& name, std::uint32_t& kind) override;
    bool Next(VUnicodeString& name) override;

  protected:
    explicit VProfileKeyIterator(std::unique_ptr<IProfileIteratorImpl> impl);

  private:
    std::unique_ptr<IProfileIteratorImpl> impl;
};

/// Runs over the children that are no sessions.
class VProfileFolderIterator : public VProfileKeyIterator {
  public:
    explicit VProfileFolderIterator(VProfileKey& key);
};

}  // namespace connectdialog
