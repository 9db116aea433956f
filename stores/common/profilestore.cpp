#include "stores/common/profilestore.h"

#include <utility>

#include "platform/lasterror.h"
#include "stores/common/storekey.h"

namespace connectdialog::stores {

StorePart::StorePart(std::shared_ptr<StoreTree> storeTree) : tree(std::move(storeTree)) {
    tree->StoreOpened();
}

bool StorePart::Join(VReportMessageParams& report) {
    if (closed) return report.Fail(platform::kInvalidHandle);
    if (WasDropped()) return report.Fail(platform::kCancelled);
    if (!tree->BeginUnit(report)) return false;
    if (!joined) ++tree->participants;
    joined = true;
    joinedAfter = tree->droppedUnits;
    return true;
}

bool StorePart::Commit(VReportMessageParams& report) {
    if (WasDropped()) return report.Fail(platform::kCancelled);
    if (tree->CommitUnit(report)) return true;
    NoteDrop();
    return false;
}

void StorePart::Abandon() {
    tree->RollbackUnit();
    NoteDrop();
}

/// This part knows of it; the others are told when they next write or close.
void StorePart::NoteDrop() {
    joinedAfter = ++tree->droppedUnits;
}

void StorePart::HoldView() {
    if (closed || std::exchange(holdsView, true)) return;
    tree->BeginView();
}

bool StorePart::Leave(VReportMessageParams& report) {
    if (closed) return true;
    closed = true;
    if (holdsView) tree->EndView();
    tree->StoreClosed();
    if (!joined) return true;
    const bool isKept = !WasDropped();
    const bool isLast = --tree->participants == 0;
    if (isLast && !tree->CommitUnit(report)) return false;
    return isKept || report.Fail(platform::kCancelled);
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
    return part->Commit(report);
}

void ProfileStore::Abandon() {
    report.Clear();
    part->Abandon();
}

bool ProfileStore::Close() {
    report.Clear();
    return part->Leave(report);
}

}  // namespace connectdialog::stores
