// The tree of the memory provider.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "stores/common/storetree.h"

namespace connectdialog::stores {

class MemoryTree;

/// A key with its values and children, both by folded name, so that the maps keep the order of the store.
class MemoryNode : public StoreNode {
  public:
    MemoryNode(MemoryTree& tree, std::u16string_view name) : tree(tree), name(name) {}

    bool Read(const char16_t* name, ValueView& value, VReportMessageParams& report) override;
    bool Write(const char16_t* name, const ValueView& value, VReportMessageParams& report) override;
    bool CopyValues(StoreNode& source, VReportMessageParams& report) override;
    bool Erase(const char16_t* name, VReportMessageParams& report) override;
    NodePtr Find(const KeyName& name, bool forCheck, VReportMessageParams& report) override;
    NodePtr Create(const KeyName& name, VReportMessageParams& report) override;
    bool Remove(const KeyName& name, VReportMessageParams& report) override;
    bool ListLists(std::vector<StoreChild>& lists, VReportMessageParams& report) override;
    bool List(std::size_t limit, ChildPage& page, VReportMessageParams& report) override;

  private:
    struct Value {
        ValueTag tag;
        std::string bytes;
        std::u16string spelled;
    };

    bool CheckAlive(VReportMessageParams& report) const;
    ProfileKind GetKind() const;
    std::shared_ptr<MemoryNode> AddChild(std::u16string_view spelled, const std::u16string& folded);
    void SetDeleted(bool deleted);
    void LogValue(const std::u16string& folded);

    MemoryTree& tree;
    std::u16string name;
    std::map<std::u16string, Value> values;
    std::map<std::u16string, std::shared_ptr<MemoryNode>> children;
    bool isDeleted = false;
};

/// The root and the log of what abandoning a unit has to do.
class MemoryTree : public StoreTree {
  public:
    MemoryTree() : root(std::make_shared<MemoryNode>(*this, u"")) {}

    NodePtr GetRoot() override { return root; }
    bool IsWritable() override { return true; }
    bool BeginUnit(VReportMessageParams& /*report*/) override { return true; }
    bool CommitUnit(VReportMessageParams& report) override;
    void RollbackUnit() override;

    /// The steps run in the reverse order, so each finds the tree as it left it.
    void Log(std::function<void()> undo) { undoLog.push_back(std::move(undo)); }
    void NoteChange() { ++generation; }

  private:
    std::shared_ptr<MemoryNode> root;
    std::vector<std::function<void()>> undoLog;
};

}  // namespace connectdialog::stores
