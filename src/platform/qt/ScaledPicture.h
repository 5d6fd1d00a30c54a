#pragma once

#include "platform/Picture.h"

#include <QImage>
#include <QPainter>

#include <cstdint>
#include <span>

namespace larkspool {

// A scrolling picture as the screen shows it, kept from paint to paint: the nearest pixel for each
// of the screen's, and each row is scaled once. Owned by a canvas's view.
class ScaledPicture {
  public:
    // What has happened to the picture since it was drawn last.
    void AllChanged() { image = QImage(); }
    void RowAdded() { ++rowsAdded; } // at the top; the others have moved down by one

    // place: in pixels of the screen, which the painter must paint on as they are.
    void Draw(QPainter& painter, const QRect& place, const Picture& picture);

  private:
    bool Shows(const QRect& place, const Picture& picture) const;
    void ScaleAll(const QSize& size, const Picture& picture);
    void AddRow(std::span<const std::uint32_t> row);
    void ScaleRow(int line, std::span<const std::uint32_t> row);

    QImage image; // its rows are a ring; null before the first paint
    int top = 0;  // the ring's uppermost row
    QSize source; // of the picture
    int rowsAdded = 0;
    int rest = 0; // screen rows that belong to the next picture row, in parts of its height
};

} // namespace larkspool
