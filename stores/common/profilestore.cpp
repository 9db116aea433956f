#include "stores/common/profilestore.h"

#include "platform/lasterror.h"
#include "stores/common/storekey.h"

namespace connectdialog::stores {

StorePart::StorePart(std::shared_ptr<StoreTree> storeTree) : tree(std::move(storeTree)) {
    tree->StoreOpened();
}

bool StorePart::Join(VReportMessageParams& report) {
    if (closed) return report.Fail(platform::kInvalidHandle);
    if (!tree->BeginUnit(report)) return false;
    if (!joined) ++tree->participants;
    joined = true;
    return true;
}

bool StorePart::Leave(VReportMessageParams& report) {
    if (closed) return true;
    closed = true;
    tree->StoreClosed();
    return !joined || --tree->participants > 0 || tree->CommitUnit(report);
}

ProfileStore::ProfileStore(std::shared_ptr<StoreTree> tree) : part(std::make_shared<StorePart>(std::move(tree))) {}

ProfileStore::~ProfileStore() {
    part->Leave(report);
}

IProfileKeyImpl* ProfileStore::CreateRootKey(bool readOnly) {
    return new StoreKey(part, readOnly);
}

bool ProfileStore::JoinUnitOfWork() {
    report.Clear();
    return part->Join(report);
}

bool ProfileStore::Commit() {
    report.Clear();
    return part->GetTree().CommitUnit(report);
}

void ProfileStore::Abandon() {
    report.Clear();
    part->GetTree().RollbackUnit();
}

bool ProfileStore::Close() {
    report.Clear();
    return part->Leave(report);
}

}  // namespace connectdialog::stores
