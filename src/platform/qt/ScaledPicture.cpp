#include "platform/qt/ScaledPicture.h"

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

// The index, among so many, that is nearest to the middle of one of so many places.
int Nearest(int place, int places, int count) {
    return static_cast<int>((2LL * place + 1) * count / (2LL * places));
}

} // namespace

void ScaledPicture::Draw(QPainter& painter, const QRect& place, const Picture& picture) {
    if (place.isEmpty() || picture.Width() == 0 || picture.Height() == 0) {
        return;
    }
    const int added = std::exchange(rowsAdded, 0);
    if (!Shows(place, picture) || added >= picture.Height()) {
        ScaleAll(place.size(), picture);
    } else {
        for (int row = added - 1; row >= 0; --row) {
            AddRow(picture.Row(row));
        }
    }
    const int upper = image.height() - top;
    painter.drawImage(place.topLeft(), image, QRect(0, top, image.width(), upper));
    painter.drawImage(place.topLeft() + QPoint(0, upper), image, QRect(0, 0, image.width(), top));
}

bool ScaledPicture::Shows(const QRect& place, const Picture& picture) const {
    return image.size() == place.size() && source == QSize(picture.Width(), picture.Height());
}

void ScaledPicture::ScaleAll(const QSize& size, const Picture& picture) {
    image = QImage(size, QImage::Format_RGB32);
    source = QSize(picture.Width(), picture.Height());
    top = 0;
    rest = 0;
    for (int line = 0; line < image.height(); ++line) {
        ScaleRow(line, picture.Row(Nearest(line, image.height(), picture.Height())));
    }
}

// Where the scale is no whole number, some rows take a line of the screen more than others, and
// each keeps its own on its way down.
void ScaledPicture::AddRow(std::span<const std::uint32_t> row) {
    rest += image.height();
    for (; rest >= source.height(); rest -= source.height()) {
        top = (top + image.height() - 1) % image.height();
        ScaleRow(top, row);
    }
}

void ScaledPicture::ScaleRow(int line, std::span<const std::uint32_t> row) {
    auto* const pixels = reinterpret_cast<std::uint32_t*>(image.scanLine(line));
    for (int x = 0; x < image.width(); ++x) {
        pixels[x] = row[static_cast<std::size_t>(Nearest(x, image.width(), source.width()))];
    }
}

} // namespace larkspool
