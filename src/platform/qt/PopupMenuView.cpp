#include "platform/qt/PopupMenuView.h"

#include "platform/Text.h"
#include "platform/qt/MakeChild.h"

#include <QListView>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStyledItemDelegate>
#include <QTimer>

#include <algorithm>

namespace larkspool {

namespace {

constexpr int MostRowsAtOnce = 20;
constexpr int RowMargins = 16;
constexpr int RowSpacing = 5;
constexpr std::size_t LongestRow = 500; // bytes; the layout of a longer one is slow

// Higher rows than Qt's own, which are easier to hit.
class RoomyRows : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, RowSpacing);
    }
};

} // namespace

void PopupRows::Reset(int rows) {
    beginResetModel();
    count = rows;
    endResetModel();
}

int PopupRows::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count; }

QVariant PopupRows::data(const QModelIndex& index, int role) const {
    return index.isValid() && role == Qt::DisplayRole ? QVariant(text(index.row())) : QVariant();
}

void ComboBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && aboutToPress) {
        aboutToPress();
    }
    QComboBox::mousePressEvent(event);
}

int ComboBox::WidthOfRows() const {
    int widest = 0;
    for (int row = 0; row < count(); ++row) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(row)));
    }
    return widest + RowMargins + view()->verticalScrollBar()->sizeHint().width();
}

void ComboBox::showPopup() {
    const int room = screen()->availableGeometry().width();
    view()->setMinimumWidth(std::clamp(WidthOfRows(), std::min(width(), room), room));
    QComboBox::showPopup();
}

void ComboBox::initStyleOption(QStyleOptionComboBox* option) const {
    QComboBox::initStyleOption(option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    option->currentText =
        option->fontMetrics.elidedText(option->currentText, Qt::ElideRight, field.width() - 2);
}

PopupMenuView::PopupMenuView(PopupMenu& popup, Desktop& theDesktop, QWidget& content)
    : ViewOf(popup, theDesktop, MakeChild<ComboBox>(content)), rows([this](int row) {
          return Held() == nullptr
                     ? QString()
                     : QString::fromStdString(CutUtf8(Held()->RowText(row), LongestRow));
      }) {
    shape.setModel(&rows);
    shape.setMaxVisibleItems(MostRowsAtOnce);
    shape.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (auto* list = qobject_cast<QListView*>(shape.view())) {
        list->setUniformItemSizes(true);
        list->setItemDelegate(new RoomyRows(list));
    }
    // On Linux a combo box's accessible name is the row that shows; its own name is its
    // description.
    shape.setAccessibleDescription(QString::fromStdString(popup.spokenName));
    CatchUp();
    shape.aboutToPress = [this] {
        Raise([this] { Held()->Press(); });
        CatchUp();
    };
    connect(&shape, &QComboBox::activated, this,
            [this](int row) { Raise([this, row] { Held()->Pick(row); }); });
}

void PopupMenuView::Redraw(Aspect aspect) {
    if (aspect == Aspect::Rows && !isStale) {
        isStale = true;
        QTimer::singleShot(0, this, [this] { CatchUp(); });
    } else if (aspect == Aspect::Value && !isStale) {
        const QSignalBlocker quiet(shape);
        shape.setCurrentIndex(Held()->ListIndex());
    }
}

void PopupMenuView::CatchUp() {
    if (!isStale || Held() == nullptr) {
        return;
    }
    isStale = false;
    const QSignalBlocker quiet(shape);
    rows.Reset(Held()->ListCount());
    shape.setCurrentIndex(Held()->ListIndex());
    shape.update();
}

bool PopupMenuView::eventFilter(QObject* watched, QEvent* event) {
    // A key may pick a row before the next turn of the loop.
    if (event->type() == QEvent::KeyPress) {
        CatchUp();
    }
    return ViewOf::eventFilter(watched, event);
}

} // namespace larkspool
