#pragma once

#include <string>
#include <string_view>

namespace larkspool::demo {

// The 20 bytes of the digest that the WebSocket handshake demands; nothing here rests on
// its strength.
std::string Sha1(std::string_view text);

} // namespace larkspool::demo
