#include "directory/FavoritesFile.h"

#include "platform/OnOneLine.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace larkspool {

std::vector<FavoriteCells> FavoriteLines::Rows() const {
    std::vector<FavoriteCells> rows;
    rows.reserve(receivers.Count());
    for (std::size_t i = 0; i < receivers.Count(); ++i) {
        rows.push_back({receivers.urls[i], Str(receivers.ports[i]), receivers.names[i]});
    }
    return rows;
}

FavoriteLines DecodeFavorites(TextInputStream& text) {
    FavoriteLines lines;
    while (!text.EndOfFile()) {
        std::string line = text.ReadLine();
        const auto parts = SplitB(line, ";");
        if (parts.size() == FavoriteColumns) {
            lines.receivers.Append(std::string(parts[2]), std::string(parts[0]),
                                   WholePart(Val(parts[1])));
        } else {
            lines.others.push_back(std::move(line));
        }
    }
    return lines;
}

std::string EncodeFavorites(const std::vector<FavoriteCells>& rows,
                            const std::vector<std::string>& others) {
    std::string text;
    for (const auto& [host, port, name] : rows) {
        text += OnOneLine(host) + ";" + OnOneLine(port) + ";" + OnOneLine(name) + "\n";
    }
    for (const std::string& line : others) {
        text += line + "\n";
    }
    return text;
}

std::optional<FavoriteLines> ReadFavorites(const FolderItem& file) {
    if (!file.Exists()) {
        return FavoriteLines();
    }
    auto text = TextInputStream::Open(file);
    if (!text) {
        return std::nullopt;
    }
    FavoriteLines lines = DecodeFavorites(*text);
    if (text->Failed() || text->HasCutLines()) {
        return std::nullopt;
    }
    return lines;
}

std::vector<FavoriteCells> WithNewRows(std::vector<FavoriteCells> rows,
                                       std::vector<FavoriteCells> whenRead,
                                       const std::vector<FavoriteCells>& now) {
    for (const FavoriteCells& cells : now) {
        const auto known = std::ranges::find(whenRead, cells);
        if (known != whenRead.end()) {
            whenRead.erase(known);
        } else if (std::ranges::find(rows, cells) == rows.end()) {
            rows.push_back(cells);
        }
    }
    return rows;
}

} // namespace larkspool
