#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspool {

// Receivers by name, host and port. The three arrays are parallel: index i of each is one receiver.
struct ReceiverList {
    std::vector<std::string> names;  // UTF-8, unless the source is invalid
    std::vector<std::string> urls;   // host name or address, no scheme, no port
    std::vector<std::int64_t> ports; // TCP

    std::size_t Count() const { return names.size(); }
    void Append(std::string name, std::string url, std::int64_t port);
    void PutInFront(const ReceiverList& others); // in their own order
    void Reverse();

    bool operator==(const ReceiverList&) const = default;
};

// The two sides of the only colon in a text. Empty if there is no colon or more than one.
struct HostAndPort {
    std::string_view host;
    std::string_view port; // including what follows it, such as a path
};
std::optional<HostAndPort> SplitHostAndPort(std::string_view text);

} // namespace larkspool
