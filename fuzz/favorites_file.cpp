// Any bytes as the favourites file: what has been read and written once stays the same for good.
#include "Input.h"
#include "directory/FavoritesFile.h"
#include "platform/Text.h"

namespace {

larkspool::ReceiverList Decode(std::string text) {
    auto stream = larkspool::TextInputStream::FromText(std::move(text));
    return larkspool::DecodeFavorites(stream);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = Decode(std::string(reinterpret_cast<const char*>(data), size));
    using larkspool::fuzz::Require;
    Require(list.names.size() == list.urls.size() && list.names.size() == list.ports.size(),
            "a receiver has a name, a host and a port");
    std::vector<larkspool::FavoriteCells> rows;
    for (std::size_t i = 0; i < list.Count(); ++i) {
        Require(list.names[i].find_first_of(";\r\n") == std::string::npos,
                "a name is one field of one line");
        rows.push_back({list.urls[i], larkspool::Str(list.ports[i]), list.names[i]});
    }
    const std::string text = larkspool::EncodeFavorites(rows);
    Require(text.starts_with("\xEF\xBB\xBF") || Decode(text) == list,
            "what is written is read the same");
    return 0;
}
