#include "stores/memory/memorytree.h"

#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "stores/common/keyname.h"
#include "stores/common/profilestore.h"
#include "stores/memory/memorystore.h"

namespace connectdialog::stores {

std::unique_ptr<VProfileStoreFactory> MakeMemoryStoreFactory() {
    return std::make_unique<TreeStoreFactory>(std::make_shared<MemoryTree>());
}

bool MemoryTree::CommitUnit(VReportMessageParams& /*report*/) {
    undoLog.clear();
    return true;
}

void MemoryTree::RollbackUnit() {
    while (!undoLog.empty()) {
        undoLog.back()();
        undoLog.pop_back();
    }
    ++generation;
}

bool MemoryNode::CheckAlive(VReportMessageParams& report) const {
    return !isDeleted || report.Fail(platform::kKeyDeleted);
}

ProfileKind MemoryNode::GetKind() const {
    return values.contains(FoldText(kIsSessionValue)) ? ProfileKind::kSession : ProfileKind::kFolder;
}

bool MemoryNode::Read(const char16_t* valueName, ValueView& value, VReportMessageParams& report) {
    if (!CheckAlive(report)) return false;
    const auto found = values.find(FoldText(valueName));
    if (found == values.end()) return report.Fail(platform::kFileNotFound);
    value = {found->second.tag, found->second.bytes};
    return true;
}

void MemoryNode::LogValue(const std::u16string& folded) {
    const auto found = values.find(folded);
    if (found == values.end()) {
        tree.Log([this, folded] { values.erase(folded); });
    } else {
        tree.Log([this, folded, old = found->second] { values[folded] = old; });
    }
}

bool MemoryNode::Write(const char16_t* valueName, const ValueView& value, VReportMessageParams& report) {
    if (!CheckAlive(report)) return false;
    if (!IsValueName(valueName)) return report.Fail(platform::kInvalidParameter);
    const std::u16string folded = FoldText(valueName);
    LogValue(folded);
    const auto present = values.find(folded);
    const std::u16string spelled = present != values.end() ? present->second.spelled : std::u16string(valueName);
    values[folded] = {value.tag, std::string(value.bytes), spelled};
    return true;
}

bool MemoryNode::CopyValues(StoreNode& source, VReportMessageParams& report) {
    const auto& other = static_cast<const MemoryNode&>(source);
    if (!other.CheckAlive(report) || !CheckAlive(report)) return false;
    tree.Log([this, old = values] { values = old; });
    values = other.values;
    return true;
}

bool MemoryNode::Erase(const char16_t* valueName, VReportMessageParams& report) {
    if (!CheckAlive(report)) return false;
    const std::u16string folded = FoldText(valueName);
    if (!values.contains(folded)) return report.Fail(platform::kFileNotFound);
    LogValue(folded);
    values.erase(folded);
    return true;
}

NodePtr MemoryNode::Find(const KeyName& key, bool /*forCheck*/, VReportMessageParams& report) {
    if (!CheckAlive(report)) return nullptr;
    MemoryNode* at = this;
    std::shared_ptr<MemoryNode> result;
    for (std::u16string_view rest = key.folded; !rest.empty(); at = result.get()) {
        const auto found = at->children.find(std::u16string(TakeLevel(rest)));
        if (found == at->children.end()) {
            report.Fail(platform::kFileNotFound);
            return nullptr;
        }
        result = found->second;
    }
    return result;
}

NodePtr MemoryNode::Create(const KeyName& key, VReportMessageParams& report) {
    if (!CheckAlive(report)) return nullptr;
    MemoryNode* at = this;
    std::shared_ptr<MemoryNode> result;
    std::u16string_view spelled = key.spelled;
    for (std::u16string_view folded = key.folded; !folded.empty(); at = result.get()) {
        result = at->AddChild(TakeLevel(spelled), std::u16string(TakeLevel(folded)));
    }
    return result;
}

/// The child of the name, created when it is not there.
std::shared_ptr<MemoryNode> MemoryNode::AddChild(std::u16string_view spelled, const std::u16string& folded) {
    std::shared_ptr<MemoryNode>& child = children[folded];
    if (child != nullptr) return child;
    child = std::make_shared<MemoryNode>(tree, spelled);
    tree.NoteChange();
    tree.Log([this, folded, created = child] {
        created->undone = true;
        children.erase(folded);
    });
    return child;
}

bool MemoryNode::Remove(const KeyName& key, VReportMessageParams& report) {
    const NodePtr found = Find(key, true, report);
    if (found == nullptr) return false;
    MemoryNode* parent = this;
    std::u16string_view rest = key.folded;
    std::u16string level(TakeLevel(rest));
    for (; !rest.empty(); level = TakeLevel(rest)) parent = parent->children[level].get();
    const std::shared_ptr<MemoryNode> removed = parent->children[level];
    parent->children.erase(level);
    removed->SetDeleted(true);
    tree.NoteChange();
    tree.Log([parent, level, removed] {
        parent->children[level] = removed;
        removed->SetDeleted(false);
    });
    return true;
}

/// Recursion ends at kMaxKeyDepth.
void MemoryNode::SetDeleted(bool deleted) {
    isDeleted = deleted;
    for (const auto& [folded, child] : children) child->SetDeleted(deleted);
}

bool MemoryNode::ListLists(std::vector<StoreChild>& lists, VReportMessageParams& report) {
    if (!CheckAlive(report)) return false;
    for (const auto& [folded, value] : values)
        if (value.tag == ValueTag::kStrings) lists.push_back({VUnicodeString(value.spelled), ProfileKind::kListEntry});
    return true;
}

bool MemoryNode::List(std::size_t limit, ChildPage& page, VReportMessageParams& report) {
    page.children.clear();
    if (!CheckAlive(report)) return false;
    auto at = children.upper_bound(page.lastFolded);
    for (; at != children.end() && page.children.size() < limit; ++at) {
        if (page.skipsSessions && at->second->GetKind() == ProfileKind::kSession) continue;
        page.children.push_back({VUnicodeString(at->second->name), at->second->GetKind()});
        page.lastFolded = at->first;
    }
    page.isLast = at == children.end();
    return true;
}

}  // namespace connectdialog::stores
