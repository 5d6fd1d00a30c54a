#include "directory/ReceiverList.h"

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

template <typename T>
void InsertInFront(std::vector<T>& array, const std::vector<T>& others) {
    array.insert(array.begin(), others.begin(), others.end());
}

} // namespace

void ReceiverList::Append(std::string name, std::string url, std::int64_t port) {
    names.push_back(std::move(name));
    urls.push_back(std::move(url));
    ports.push_back(port);
}

void ReceiverList::PutInFront(const ReceiverList& others) {
    InsertInFront(names, others.names);
    InsertInFront(urls, others.urls);
    InsertInFront(ports, others.ports);
}

void ReceiverList::Reverse() {
    std::reverse(names.begin(), names.end());
    std::reverse(urls.begin(), urls.end());
    std::reverse(ports.begin(), ports.end());
}

std::optional<HostAndPort> SplitHostAndPort(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || text.find(':', colon + 1) != std::string_view::npos) {
        return std::nullopt;
    }
    return HostAndPort{text.substr(0, colon), text.substr(colon + 1)};
}

} // namespace larkspool
