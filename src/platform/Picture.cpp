#include "platform/Picture.h"

#include "platform/Color.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace larkspool {

namespace {

constexpr int RoomToScroll = 32; // rows

} // namespace

Picture::Picture(int columns, int rows)
    : width(std::max(columns, 0)), height(std::max(rows, 0)), store(Size(), Color{}.Packed()) {}

std::size_t Picture::Index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x);
}

std::span<std::uint32_t> Picture::Row(int y) {
    if (!Holds(0, y)) {
        return {};
    }
    return Pixels().subspan(Index(0, y), static_cast<std::size_t>(width));
}

std::span<const std::uint32_t> Picture::Row(int y) const {
    if (!Holds(0, y)) {
        return {};
    }
    return Pixels().subspan(Index(0, y), static_cast<std::size_t>(width));
}

void Picture::ScrollDown(int rows) {
    if (rows <= 0 || rows >= height || width == 0) {
        return;
    }
    const std::size_t shift = Index(0, rows);
    if (start < shift) {
        MakeRoom(shift);
    }
    start -= shift;
    // The old top rows are below the new ones.
    std::copy_n(store.begin() + static_cast<std::ptrdiff_t>(start + shift), shift,
                store.begin() + static_cast<std::ptrdiff_t>(start));
}

void Picture::MakeRoom(std::size_t wanted) {
    const std::size_t before = start;
    const std::size_t room = std::max(wanted, Index(0, RoomToScroll));
    store.resize(std::max(store.size(), Size() + room));
    start = store.size() - Size();
    std::memmove(store.data() + start, store.data() + before, Size() * sizeof(std::uint32_t));
}

} // namespace larkspool
