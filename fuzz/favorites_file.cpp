// Any bytes as the favourites file: what has been read and written once stays the same for good.
#include "Input.h"
#include "directory/FavoritesFile.h"

namespace {

larkspool::FavoriteLines Decode(std::string text) {
    auto stream = larkspool::TextInputStream::FromText(std::move(text));
    return larkspool::DecodeFavorites(stream);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto lines = Decode(std::string(reinterpret_cast<const char*>(data), size));
    const auto& list = lines.receivers;
    using larkspool::fuzz::Require;
    Require(list.names.size() == list.urls.size() && list.names.size() == list.ports.size(),
            "a receiver has a name, a host and a port");
    for (const std::string& name : list.names) {
        Require(name.find_first_of(";\r\n") == std::string::npos,
                "a name is one field of one line");
    }
    const std::string text = larkspool::EncodeFavorites(lines.Rows(), lines.others);
    const auto again = Decode(text);
    Require(text.starts_with("\xEF\xBB\xBF") ||
                (again.receivers == list && again.others == lines.others),
            "what is written is read the same");
    return 0;
}
