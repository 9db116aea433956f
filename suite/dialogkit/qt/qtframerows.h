// The list of a main window: a view over the rows, without an object a row.
#pragma once

#include <QAbstractTableModel>
#include <QTreeView>
#include <functional>
#include <span>
#include <vector>

#include "imports/dialogkit/iframewindow.h"

namespace connectdialog {

class QtFrameRows : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetColumns(std::span<const VUnicodeString> headings);
    /// Rows at the same places stay the same to who watches.
    void SetRows(std::span<const FrameRow> shown);

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<VUnicodeString> columns;
    std::vector<FrameRow> rows;
};

class QtFrameList : public QTreeView {
  public:
    explicit QtFrameList(QWidget* parent);

    /// A row was double-clicked, or Return pressed on it.
    std::function<void(int row)> activated;
    std::function<void(QPoint screen)> menuWanted;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void AskForMenu();
};

}  // namespace connectdialog
