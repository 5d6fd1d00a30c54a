#pragma once

#include "platform/PopupMenu.h"
#include "platform/qt/WidgetView.h"

#include <QAbstractListModel>
#include <QComboBox>

#include <functional>

namespace larkspool {

// Reads the rows from the popup itself; stores only their number at the last Reset.
class PopupRows : public QAbstractListModel {
  public:
    using Text = std::function<QString(int row)>;

    explicit PopupRows(Text source) : text(std::move(source)) {}

    void Reset(int rows);
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    Text text;
    int count = 0;
};

class ComboBox : public QComboBox {
  public:
    using QComboBox::QComboBox;

    std::function<void()> aboutToPress; // by a mouse press, before the list opens

    void showPopup() override;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void initStyleOption(QStyleOptionComboBox* option) const override;

  private:
    int WidthOfRows() const;
};

// Updates its rows at most once per turn of the event loop.
class PopupMenuView : public ViewOf<PopupMenu, ComboBox> {
  public:
    PopupMenuView(PopupMenu& popup, Desktop& theDesktop, QWidget& content);

  protected:
    void Redraw(Aspect aspect) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void CatchUp();

    PopupRows rows;
    bool isStale = true;
};

} // namespace larkspool
