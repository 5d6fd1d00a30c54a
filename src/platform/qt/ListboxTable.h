#pragma once

#include "platform/Listbox.h"

#include <QAbstractTableModel>
#include <QString>
#include <QTableView>

#include <functional>
#include <vector>

namespace larkspool {

// Reads and writes the cells in the listbox itself; stores only the number of rows at the last
// CatchUp. Owned by the view.
class ListboxCells : public QAbstractTableModel {
  public:
    // The listbox, or null after it is destroyed.
    using Source = std::function<Listbox*()>;
    using Writer = std::function<void(int row, int column, std::string text)>;

    ListboxCells(Source listbox, Writer writer)
        : source(std::move(listbox)), write(std::move(writer)) {}

    // Follows the listbox in as few steps as the row counts allow.
    void CatchUp();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    Source source;
    Writer write;
    int count = 0;
};

// The table of a listbox: divides its width among the columns, shows a cut text in a tooltip, ends
// an open edit on request.
class Table : public QTableView {
  public:
    explicit Table(QWidget* parent);

    void SetColumns(std::vector<Listbox::Column> described);
    void CommitEdit();

    QString placeholder; // shown while there is no row

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void ShareWidth();
    void ShowWhatIsCut(const QHelpEvent& event);

    std::vector<Listbox::Column> columns;
};

} // namespace larkspool
