// The tree for those who do not see it: screen readers and tools that drive applications.
#pragma once

#include <QAccessibleWidget>
#include <unordered_map>

#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

class QtTree;

/// From now on every QtTree can be read. Harmless when called again.
void LetTreesBeRead();

/// A flat list of the rows as they stand on the screen, as the toolkit's own trees tell themselves. Rows are made when
/// they are asked for.
class QtTreeAccessible : public QAccessibleWidget {
  public:
    explicit QtTreeAccessible(QtTree& tree);
    ~QtTreeAccessible() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

  private:
    const QtTree& GetTree() const;
    QAccessibleInterface* RowOf(TreeItem item) const;
    void LetGoneRowsGo() const;

    mutable std::unordered_map<TreeItem, QAccessible::Id> made;
};

}  // namespace connectdialog
