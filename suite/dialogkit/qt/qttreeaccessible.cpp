#include "suite/dialogkit/qt/qttreeaccessible.h"

#include <QPointer>
#include <QScrollBar>

#include "suite/dialogkit/qt/qttext.h"
#include "suite/dialogkit/qt/qttree.h"

namespace connectdialog {

namespace {

/// How many rows that are gone may wait to be forgotten.
constexpr std::size_t kSlack = 256;

class RowAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    RowAccessible(QtTree& tree, TreeItem item) : tree(&tree), item(item) {}

    TreeItem GetItem() const { return item; }

    bool isValid() const override { return GetItems() != nullptr && GetItems()->IsValid(item); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(tree); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name && isValid() ? ToQt(GetItems()->GetText(item)) : QString();
    }

    QRect rect() const override {
        VRectangle label;
        if (!isValid() || !tree->GetItemRectangle(item, true, label)) return {};
        const QRect place = ToQt(label);
        return {tree->viewport()->mapToGlobal(place.topLeft()), place.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        if (!isValid()) return state;
        state.selectable = state.multiSelectable = state.focusable = true;
        state.selected = GetItems()->HasState(item, kTreeSelected);
        state.focused = GetItems()->GetCaret() == item && tree->hasFocus();
        state.expandable = GetItems()->HasChildrenOrExpander(item);
        state.expanded = state.expandable && GetItems()->HasState(item, kTreeExpanded);
        state.collapsed = state.expandable && !state.expanded;
        state.offscreen = rect().isNull();
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override {
        QStringList names{setFocusAction()};
        if (state().expandable) names += toggleAction();
        return names;
    }
    void doAction(const QString& name) override {
        if (!isValid() || !actionNames().contains(name)) return;
        tree->setFocus();
        tree->ActOn(item, name == toggleAction() ? TreePart::kExpander : TreePart::kLabel);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    const VTreeItems* GetItems() const { return tree != nullptr ? tree->GetItems() : nullptr; }

    QPointer<QtTree> tree;
    TreeItem item;
};

QAccessibleInterface* MakeReadable(const QString&, QObject* object) {
    auto* tree = dynamic_cast<QtTree*>(object);
    return tree != nullptr ? new QtTreeAccessible(*tree) : nullptr;
}

}  // namespace

void LetTreesBeRead() {
    QAccessible::removeFactory(MakeReadable);
    QAccessible::installFactory(MakeReadable);
}

QtTreeAccessible::QtTreeAccessible(QtTree& tree) : QAccessibleWidget(&tree, QAccessible::Tree) {}

QtTreeAccessible::~QtTreeAccessible() {
    for (const auto& [item, id] : made) QAccessible::deleteAccessibleInterface(id);
}

const QtTree& QtTreeAccessible::GetTree() const {
    return *static_cast<const QtTree*>(widget());
}

QAccessibleInterface* QtTreeAccessible::RowOf(TreeItem item) const {
    const VTreeItems* items = GetTree().GetItems();
    if (items == nullptr || !items->IsValid(item)) return nullptr;
    const auto known = made.find(item);
    if (known != made.end()) return QAccessible::accessibleInterface(known->second);
    if (made.size() > items->GetCount() + kSlack) LetGoneRowsGo();
    auto* row = new RowAccessible(*static_cast<QtTree*>(widget()), item);
    made.emplace(item, QAccessible::registerAccessibleInterface(row));
    return row;
}

void QtTreeAccessible::LetGoneRowsGo() const {
    const VTreeItems& items = *GetTree().GetItems();
    std::erase_if(made, [&](const auto& row) {
        if (items.IsValid(row.first)) return false;
        QAccessible::deleteAccessibleInterface(row.second);
        return true;
    });
}

int QtTreeAccessible::childCount() const {
    return GetTree().GetRows().GetCount();
}

QAccessibleInterface* QtTreeAccessible::child(int index) const {
    const QtTreeRows& rows = GetTree().GetRows();
    return index >= 0 && index < rows.GetCount() ? RowOf(rows[index].item) : nullptr;
}

int QtTreeAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* row = dynamic_cast<const RowAccessible*>(child);
    return row != nullptr ? GetTree().GetRows().Find(row->GetItem()) : -1;
}

QAccessibleInterface* QtTreeAccessible::childAt(int x, int y) const {
    const QPoint point = GetTree().viewport()->mapFromGlobal(QPoint(x, y));
    return RowOf(GetTree().HitTest(FromQt(point)).item);
}

QAccessibleInterface* QtTreeAccessible::focusChild() const {
    if (GetTree().GetItems() == nullptr || !GetTree().hasFocus()) return nullptr;
    return RowOf(GetTree().GetItems()->GetCaret());
}

}  // namespace connectdialog
