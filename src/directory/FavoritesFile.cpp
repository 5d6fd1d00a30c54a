#include "directory/FavoritesFile.h"

#include "platform/OnOneLine.h"
#include "platform/Text.h"

namespace larkspool {

ReceiverList DecodeFavorites(TextInputStream& text) {
    ReceiverList list;
    while (!text.EndOfFile()) {
        const std::string line = text.ReadLine();
        const auto parts = SplitB(line, ";");
        if (parts.size() == 3) {
            list.Append(std::string(parts[2]), std::string(parts[0]), WholePart(Val(parts[1])));
        }
    }
    return list;
}

std::string EncodeFavorites(const std::vector<FavoriteCells>& rows) {
    std::string text;
    for (const auto& [host, port, name] : rows) {
        text += OnOneLine(host) + ";" + OnOneLine(port) + ";" + OnOneLine(name) + "\n";
    }
    return text;
}

std::optional<ReceiverList> ReadFavorites(const FolderItem& file) {
    if (!file.Exists()) {
        return ReceiverList();
    }
    auto text = TextInputStream::Open(file);
    if (!text) {
        return std::nullopt;
    }
    ReceiverList list = DecodeFavorites(*text);
    if (text->Failed()) {
        return std::nullopt;
    }
    return list;
}

} // namespace larkspool
