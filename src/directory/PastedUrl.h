#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspool {

// The receiver in a web address such as "http://192.0.2.10:8073/": the texts of the two
// fields. Empty if the text is no such address or has no port.
struct PastedUrl {
    std::string host;
    std::string port; // in decimal; "0" if it is no number
};
std::optional<PastedUrl> ParsePastedUrl(std::string_view text);

// What a person means by the texts of the two fields: "host:8073", a web address or an IPv6 address
// in brackets becomes a host and its port. If the address has no port, the port stays unchanged.
PastedUrl TidyReceiver(std::string_view address, std::string_view port);

// A receiver in one cell: "sdr.example.net:8073", an IPv6 address in brackets. Blanks around it
// don't count; nothing without exactly one colon outside the brackets. The port is as it was typed.
std::optional<PastedUrl> ParseReceiverCell(std::string_view text);
std::string ReceiverCell(const PastedUrl& receiver);

} // namespace larkspool
