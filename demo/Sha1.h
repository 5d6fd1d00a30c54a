#pragma once

#include <string>
#include <string_view>

namespace larkspool::demo {

// The 20 bytes of the digest that the WebSocket handshake needs; its strength does not matter here.
std::string Sha1(std::string_view text);

} // namespace larkspool::demo
