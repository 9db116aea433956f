#include "support/faultystore.h"

#include <memory>
#include <utility>

#include "foundation/vreportmessageparams.h"

namespace connectdialog::test {

namespace {

constexpr std::uint32_t kDiskFull = 112;

/// Every operation of a key, forwarded; writes ask the plan first.
class FaultyKey : public IProfileKeyImpl {
  public:
    FaultyKey(IProfileKeyImpl* inner, FaultPlan& plan) : inner(inner), plan(plan) {}

    bool ReadSecurity(const char16_t* name, VSecurityDescriptor& out) override {
        return inner->ReadSecurity(name, out);
    }
    bool ReadMultiString(const char16_t* name, VStringArray& out) override { return inner->ReadMultiString(name, out); }
    bool ReadBinary(const char16_t* name, void* buffer, std::uint32_t& size) override {
        return inner->ReadBinary(name, buffer, size);
    }
    bool ReadString(const char16_t* name, VUnicodeString& out) override { return inner->ReadString(name, out); }
    bool ReadDword(const char16_t* name, std::uint32_t& out) override { return inner->ReadDword(name, out); }
    bool WriteSecurity(const char16_t* name, const VSecurityDescriptor& value) override {
        return MayWrite() && inner->WriteSecurity(name, value);
    }
    bool WriteMultiString(const char16_t* name, const VStringArray& value) override {
        return MayWrite() && inner->WriteMultiString(name, value);
    }
    bool WriteBinary(const char16_t* name, const void* data, std::uint32_t size) override {
        return MayWrite() && inner->WriteBinary(name, data, size);
    }
    bool WriteString(const char16_t* name, const char16_t* value) override {
        return MayWrite() && inner->WriteString(name, value);
    }
    bool WriteDword(const char16_t* name, std::uint32_t value) override {
        return MayWrite() && inner->WriteDword(name, value);
    }
    bool CopyValues(IProfileKeyImpl& source) override {
        return MayWrite() && inner->CopyValues(*static_cast<FaultyKey&>(source).inner);
    }
    bool DeleteValue(const char16_t* name) override { return MayWrite() && inner->DeleteValue(name); }
    bool DeleteKey(const char16_t* name) override { return MayWrite() && inner->DeleteKey(name); }
    bool KeyExists(const char16_t* name) override { return inner->KeyExists(name); }
    bool IsWritable() override { return inner->IsWritable(); }
    bool SetKeySecurity(const VSecurityDescriptor* value) override {
        return MayWrite() && inner->SetKeySecurity(value);
    }
    VReportMessageParams* GetLastReport() override { return inner->GetLastReport(); }
    IProfileKeyImpl* OpenChild(const char16_t* name, std::uint32_t reserved, std::uint32_t folder) override {
        const bool mayCreate = folder == 0 || inner->KeyExists(name) || MayWrite();
        return new FaultyKey(inner->OpenChild(name, reserved, mayCreate ? folder : 0), plan);
    }
    IProfileIteratorImpl* CreateIterator(bool byKind) override { return inner->CreateIterator(byKind); }
    IProfileIteratorImpl* CreateFolderIterator() override { return inner->CreateFolderIterator(); }

  private:
    bool MayWrite() {
        plan.RunBeforeLock();
        if (plan.failAll || (plan.failWrite > 0 && --plan.failWrite == 0))
            return inner->GetLastReport()->Fail(kDiskFull);
        ++plan.writes;
        return true;
    }

    std::unique_ptr<IProfileKeyImpl> inner;
    FaultPlan& plan;
};

class FaultyStore : public IProfileStoreImpl {
  public:
    FaultyStore(IProfileStoreImpl* inner, FaultPlan& plan, int& openStores)
        : inner(inner), plan(plan), openStores(openStores) {
        ++openStores;
    }
    ~FaultyStore() override { Leave(); }

    IProfileKeyImpl* CreateRootKey(bool readOnly) override {
        return new FaultyKey(inner->CreateRootKey(readOnly), plan);
    }
    bool JoinUnitOfWork() override {
        plan.RunBeforeLock();
        return inner->JoinUnitOfWork();
    }
    bool Commit() override { return MayCommit() && inner->Commit(); }
    void Abandon() override { inner->Abandon(); }
    bool Close() override { return (!Leave() || MayCommit()) && inner->Close(); }
    VReportMessageParams* GetLastReport() override { return inner->GetLastReport(); }

  private:
    bool MayCommit() {
        if (!plan.failCommit) return true;
        inner->Abandon();
        return inner->GetLastReport()->Fail(kDiskFull);
    }
    /// Whether it was the last one, whose end commits.
    bool Leave() { return std::exchange(isOpen, false) && --openStores == 0; }

    std::unique_ptr<IProfileStoreImpl> inner;
    FaultPlan& plan;
    int& openStores;
    bool isOpen = true;
};

}  // namespace

IProfileStoreImpl* FaultyStoreFactory::CreateStore() {
    return new FaultyStore(inner.CreateStore(), plan, openStores);
}

}  // namespace connectdialog::test
