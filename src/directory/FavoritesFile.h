#pragma once

#include "directory/ReceiverList.h"
#include "platform/FolderItem.h"
#include "platform/TextInputStream.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace larkspool {

// The user's own receivers: a text file with one a line, "host;port;name".
constexpr char FavoritesFileName[] = "favorite-kiwi.txt";

// A favourite as the user has typed it: host, port, name.
using FavoriteCells = std::array<std::string, 3>;

// The file's lines in two parts, each in the file's order.
struct FavoriteLines {
    ReceiverList receivers;             // a bad port is 0
    std::vector<FavoriteCells> written; // the same as they are in the file
    std::vector<std::string> others;    // comments, half-typed lines and the like

    std::vector<FavoriteCells> Rows() const; // the receivers
    // The rows, of which those that the file has too get the ports that are written there.
    std::vector<FavoriteCells> AsWritten(std::vector<FavoriteCells> rows) const;
};

FavoriteLines DecodeFavorites(TextInputStream& text);
// The other lines go behind the rows.
std::string EncodeFavorites(const std::vector<FavoriteCells>& rows,
                            const std::vector<std::string>& others);

// Nothing if there is a file that can't be read to its end, every line whole; no file is no
// favourites.
std::optional<FavoriteLines> ReadFavorites(const FolderItem& file);

// The rows that the user leaves, and behind them those that have come into the file from elsewhere
// since it was read.
std::vector<FavoriteCells> WithNewRows(std::vector<FavoriteCells> rows,
                                       std::vector<FavoriteCells> whenRead,
                                       const std::vector<FavoriteCells>& now);

} // namespace larkspool
