#pragma once

#include "directory/ReceiverList.h"
#include "platform/FolderItem.h"
#include "platform/TextInputStream.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace larkspool {

// The user's own receivers: a text file with one a line, "host;port;name", and nothing else.
constexpr char FavoritesFileName[] = "favorite-kiwi.txt";

// A favourite as the user has typed it: host, port, name.
using FavoriteCells = std::array<std::string, 3>;

// The lines that say a receiver, in the file's order. A bad port is 0.
ReceiverList DecodeFavorites(TextInputStream& text);
std::string EncodeFavorites(const std::vector<FavoriteCells>& rows);

// Nothing if there is a file that can't be read to its end; no file is no favourites.
std::optional<ReceiverList> ReadFavorites(const FolderItem& file);

} // namespace larkspool
