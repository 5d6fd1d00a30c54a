#pragma once

#include "directory/ReceiverList.h"
#include "platform/FolderItem.h"
#include "platform/TextInputStream.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace larkspool {

// The user's own receivers: a text file with one receiver per line, "host;port;name".
constexpr char FavoritesFileName[] = "favorite-kiwi.txt";

enum FavoriteColumn { HostColumn, PortColumn, NameColumn };
constexpr std::size_t FavoriteColumns = NameColumn + 1;

// A favorite as the user has typed it.
using FavoriteCells = std::array<std::string, FavoriteColumns>;

// The file's lines in two parts, each in the file's order.
struct FavoriteLines {
    ReceiverList receivers;          // a bad port is 0
    std::vector<std::string> others; // comments, half-typed lines and the like

    std::vector<FavoriteCells> Rows() const; // the receivers
};

FavoriteLines DecodeFavorites(TextInputStream& text);
// The other lines follow the rows.
std::string EncodeFavorites(const std::vector<FavoriteCells>& rows,
                            const std::vector<std::string>& others);

// Empty if the file can't be read to its end, or if a line is too long to be kept whole. A missing
// file gives an empty list.
std::optional<FavoriteLines> ReadFavorites(const FolderItem& file);

// The rows of the editor, followed by those that other programs have added to the file since it was
// read. rows: as the user leaves them; whenRead and now: the file's rows, before and after.
std::vector<FavoriteCells> WithNewRows(std::vector<FavoriteCells> rows,
                                       std::vector<FavoriteCells> whenRead,
                                       const std::vector<FavoriteCells>& now);

} // namespace larkspool
