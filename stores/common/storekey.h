// Key handles and iterators, the same for every provider.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "foundation/vreportmessageparams.h"
#include "profile/iprofilestore.h"
#include "stores/common/keyname.h"
#include "stores/common/storetree.h"

namespace connectdialog::stores {

class StorePart;

/// Where a handle points: a name below another place, and the key found there.
///
/// A place binds to its key when it first finds or creates it, and stays with that key even when it is deleted and
/// another takes its name. It lets go only of a key whose creation was abandoned.
struct KeyPlace {
    std::shared_ptr<KeyPlace> parent;  ///< null for the root
    KeyName name;
    std::size_t depth = 0;
    bool validName = true;
    NodePtr node;
    std::uint64_t absentAt = 0;  ///< the tree's generation when the key was last found absent
};

/// Reads the children page by page, so that nothing stays open in the medium between two calls.
class StoreIterator : public IProfileIteratorImpl {
  public:
    enum class Over : std::uint8_t { kChildren, kListsAndChildren, kFolders };

    /// `node` may be null: no children. `report` is the key's, which outlives the iterator; a listing that breaks off
    /// leaves the reason there.
    StoreIterator(std::shared_ptr<StorePart> part, NodePtr node, Over over, VReportMessageParams& report);
    ~StoreIterator() override;

    bool NextWithKind(VUnicodeString& name, std::uint32_t& kind) override;
    bool Next(VUnicodeString& name) override;

  private:
    StoreChild* Advance();
    void ReadPage();

    std::shared_ptr<StorePart> part;
    NodePtr node;
    Over over;
    VReportMessageParams& report;
    ChildPage page;
    std::size_t next = 0;
    std::size_t pageSize = 8;
};

/// A handle on a key, or on a place where there is none yet.
class StoreKey : public IProfileKeyImpl {
  public:
    /// The root of the part's tree.
    StoreKey(std::shared_ptr<StorePart> part, bool readOnly);
    StoreKey(std::shared_ptr<StorePart> part, std::shared_ptr<KeyPlace> place, bool readOnly);
    ~StoreKey() override;

    bool ReadSecurity(const char16_t* name, VSecurityDescriptor& descriptor) override;
    bool ReadMultiString(const char16_t* name, VStringArray& strings) override;
    bool ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) override;
    bool ReadString(const char16_t* name, VUnicodeString& text) override;
    bool ReadDword(const char16_t* name, std::uint32_t& value) override;
    bool WriteSecurity(const char16_t* name, const VSecurityDescriptor& descriptor) override;
    bool WriteMultiString(const char16_t* name, const VStringArray& strings) override;
    bool WriteBinary(const char16_t* name, const void* data, std::uint32_t size) override;
    bool WriteString(const char16_t* name, const char16_t* text) override;
    bool WriteDword(const char16_t* name, std::uint32_t value) override;
    bool CopyValues(IProfileKeyImpl& source) override;
    bool DeleteValue(const char16_t* name) override;
    bool DeleteKey(const char16_t* name) override;
    bool KeyExists(const char16_t* name) override;
    bool IsWritable() override;
    bool SetKeySecurity(const VSecurityDescriptor* descriptor) override;
    VReportMessageParams* GetLastReport() override { return &report; }
    IProfileKeyImpl* OpenChild(const char16_t* name, std::uint32_t reserved, std::uint32_t folder) override;
    IProfileIteratorImpl* CreateIterator(bool byKind) override;
    IProfileIteratorImpl* CreateFolderIterator() override;

  private:
    IProfileIteratorImpl* Iterate(StoreIterator::Over over);
    StoreNode* Find(KeyPlace& at, bool forCheck = false);
    StoreNode* FindOrCreate(KeyPlace& at);
    std::shared_ptr<KeyPlace> PlaceBelow(const char16_t* name) const;
    bool Read(const char16_t* name, ValueView& value);
    bool Write(const char16_t* name, const ValueView& value);
    bool JoinForWriting();
    bool Succeed(std::uint32_t code);
    /// Success so far. A session has hundreds of values: a report that holds nothing is left alone.
    void Begin() {
        if (report.GetCode() != 0) report.Clear();
    }

    std::shared_ptr<StorePart> part;  // above the place: nodes end before their tree
    std::shared_ptr<KeyPlace> place;
    bool readOnly;
    VReportMessageParams report;
};

}  // namespace connectdialog::stores
