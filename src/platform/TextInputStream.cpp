#include "platform/TextInputStream.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

namespace larkspool {

namespace {

constexpr std::size_t PieceSize = std::size_t{16} * 1024;

} // namespace

std::optional<TextInputStream> TextInputStream::Open(const FolderItem& item) {
    FileHandle opened = OpenFile(item, FileAccess::Read);
    if (!opened || std::setvbuf(opened.get(), nullptr, _IONBF, 0) != 0) {
        return std::nullopt;
    }
    TextInputStream stream;
    stream.file = std::move(opened);
    stream.Refill();
    stream.SkipMark();
    return stream;
}

TextInputStream TextInputStream::FromText(std::string text) {
    TextInputStream stream;
    stream.buffer = std::move(text);
    stream.SkipMark();
    return stream;
}

std::string TextInputStream::ReadLine() {
    std::string line;
    while (!EndOfFile()) {
        const std::size_t end = std::min(buffer.find_first_of("\r\n", next), buffer.size());
        const std::size_t room = LongestLine - line.size();
        line.append(buffer, next, std::min(end - next, room));
        hasCutLines = hasCutLines || end - next > room;
        next = end;
        if (end == buffer.size()) {
            continue;
        }
        ++next;
        if (buffer[end] == '\r' && !EndOfFile() && buffer[next] == '\n') {
            ++next;
        }
        break;
    }
    return line;
}

bool TextInputStream::Refill() {
    if (!file) {
        return false;
    }
    buffer.resize(PieceSize);
    next = 0;
    buffer.resize(std::fread(buffer.data(), 1, PieceSize, file.get()));
    if (buffer.empty()) {
        failed = std::ferror(file.get()) != 0;
        file.reset();
    }
    return !buffer.empty();
}

void TextInputStream::SkipMark() {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (buffer.starts_with(Mark)) {
        next = Mark.size();
    }
}

} // namespace larkspool
