#include "platform/qt/ListboxView.h"

#include "platform/qt/MakeChild.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QTimer>

#include <vector>

namespace larkspool {

ListboxView::ListboxView(Listbox& listbox, Desktop& theDesktop, QWidget& content)
    : ViewOf(listbox, theDesktop, MakeChild<Table>(content)),
      cells([this] { return Held(); },
            [this](int row, int column, const std::string& text) { Write(row, column, text); }) {
    shape.setModel(&cells);
    shape.horizontalHeader()->setVisible(listbox.hasHeader);
    shape.SetColumns(listbox.columns);
    shape.placeholder = QString::fromStdString(listbox.placeholder);
    connect(shape.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { TakeSelection(); });
    connect(&shape, &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { ShowContextMenu(place); });
}

void ListboxView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Rows && !isStale) {
        isStale = true;
        if (shape.isVisible()) {
            QTimer::singleShot(0, this, [this] { CatchUp(); });
        }
    } else if (aspect == Aspect::Value && !isStale) {
        // Cells are read when they are drawn. A signal for each changed cell would also put the old
        // text back into an open edit.
        shape.viewport()->update();
        ShowSelection();
    }
}

void ListboxView::CatchUp() {
    if (!isStale || Held() == nullptr) {
        return;
    }
    isStale = false;
    const QScopedValueRollback following(isFollowing, true);
    cells.CatchUp();
    shape.viewport()->update();
    ShowSelection();
}

void ListboxView::ShowSelection() {
    const QScopedValueRollback following(isFollowing, true);
    const auto chosen = shape.selectionModel()->selectedRows();
    const int shown = chosen.isEmpty() ? -1 : chosen.front().row();
    const int wanted = Held()->ListIndex();
    if (shown == wanted) {
        return;
    }
    if (wanted < 0) {
        shape.clearSelection();
    } else {
        shape.selectRow(wanted);
    }
}

void ListboxView::TakeSelection() {
    if (isFollowing) {
        return;
    }
    const auto chosen = shape.selectionModel()->selectedRows();
    const int row = chosen.isEmpty() ? -1 : chosen.front().row();
    Raise([this, row] { Held()->SetListIndex(row); });
}

void ListboxView::Write(int row, int column, const std::string& text) {
    Raise([&] { Held()->SetCell(row, column, text); });
}

void ListboxView::ShowContextMenu(QPoint place) {
    std::vector<MenuItem> items;
    bool wanted = false;
    Raise([&] {
        const auto construct = Held()->constructContextualMenu;
        wanted = construct && construct(items);
    });
    if (!wanted || items.empty()) {
        return;
    }
    auto& menu = MakeChild<QMenu>(shape);
    menu.setAttribute(Qt::WA_DeleteOnClose);
    for (const MenuItem& item : items) {
        if (item.role == MenuRole::Separator) {
            menu.addSeparator();
            continue;
        }
        connect(menu.addAction(QString::fromStdString(item.caption)), &QAction::triggered, this,
                [this, item] {
                    Raise([this, item] {
                        if (const auto perform = Held()->contextualMenuAction) {
                            perform(item);
                        }
                    });
                });
    }
    menu.popup(shape.viewport()->mapToGlobal(place));
}

} // namespace larkspool
