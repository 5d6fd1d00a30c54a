#include "platform/qt/ListboxTable.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

constexpr int RowSpacing = 6;
constexpr int Narrowest = 40; // of a column that shares the width which the fixed ones leave

} // namespace

void ListboxCells::CatchUp() {
    const Listbox* listbox = source();
    const int wanted = listbox == nullptr ? 0 : listbox->ListCount();
    if (wanted > count) {
        beginInsertRows({}, count, wanted - 1);
        count = wanted;
        endInsertRows();
    } else if (wanted < count) {
        beginResetModel();
        count = wanted;
        endResetModel();
    }
}

int ListboxCells::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count; }

int ListboxCells::columnCount(const QModelIndex& parent) const {
    const Listbox* listbox = source();
    return parent.isValid() || listbox == nullptr ? 0 : static_cast<int>(listbox->columns.size());
}

QVariant ListboxCells::data(const QModelIndex& index, int role) const {
    const Listbox* listbox = source();
    if (listbox == nullptr || !index.isValid() ||
        (role != Qt::DisplayRole && role != Qt::EditRole)) {
        return {};
    }
    return QString::fromStdString(listbox->Cell(index.row(), index.column()));
}

QVariant ListboxCells::headerData(int section, Qt::Orientation orientation, int role) const {
    const Listbox* listbox = source();
    if (listbox == nullptr || orientation != Qt::Horizontal || role != Qt::DisplayRole ||
        section < 0 || section >= columnCount()) {
        return {};
    }
    return QString::fromStdString(listbox->columns[static_cast<std::size_t>(section)].heading);
}

Qt::ItemFlags ListboxCells::flags(const QModelIndex& index) const {
    const Listbox* listbox = source();
    const auto plain = QAbstractTableModel::flags(index);
    const bool editable = listbox != nullptr && index.isValid() &&
                          listbox->columns[static_cast<std::size_t>(index.column())].editable;
    return editable ? plain | Qt::ItemIsEditable : plain;
}

bool ListboxCells::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid()) {
        return false;
    }
    if (value == data(index, Qt::EditRole)) {
        return true; // unchanged: bytes that can't be shown stay as they are
    }
    write(index.row(), index.column(), value.toString().toStdString());
    return true;
}

Table::Table(QWidget* parent) : QTableView(parent) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + RowSpacing);
    QFont headings = font();
    headings.setPixelSize(headings.pixelSize() - 1);
    horizontalHeader()->setFont(headings);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void Table::SetColumns(std::vector<Listbox::Column> described) {
    columns = std::move(described);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const bool hidden = columns[column].width == 0 && columns[column].weight == 0;
        setColumnHidden(static_cast<int>(column), hidden && columns.size() > 1);
    }
    ShareWidth();
}

void Table::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    ShareWidth();
}

void Table::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model()->rowCount() == 0 && !placeholder.isEmpty()) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, placeholder);
    }
}

bool Table::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        ShowWhatIsCut(static_cast<const QHelpEvent&>(*event));
        return true;
    }
    return QTableView::viewportEvent(event);
}

void Table::ShowWhatIsCut(const QHelpEvent& event) {
    const QModelIndex cell = indexAt(event.pos());
    const bool isCut =
        cell.isValid() && sizeHintForIndex(cell).width() > columnWidth(cell.column());
    QToolTip::showText(event.globalPos(), isCut ? cell.data().toString() : QString(), this,
                       visualRect(cell));
}

void Table::ShareWidth() {
    int rest = viewport()->width();
    int weights = 0;
    for (const auto& column : columns) {
        rest -= column.width;
        weights += column.weight;
    }
    for (std::size_t index = 0; index < columns.size(); ++index) {
        const auto& column = columns[index];
        int width = column.width;
        if (column.weight > 0 && weights > 0) {
            // Each takes its share of the rest, so that rounding loses no pixel.
            const int share = rest * column.weight / weights;
            rest -= share;
            weights -= column.weight;
            width = std::max(Narrowest, column.width + share);
        } else if (columns.size() == 1 && width == 0) {
            width = rest;
        }
        setColumnWidth(static_cast<int>(index), width);
    }
}

void Table::CommitEdit() {
    for (QLineEdit* editor : viewport()->findChildren<QLineEdit*>()) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

} // namespace larkspool
