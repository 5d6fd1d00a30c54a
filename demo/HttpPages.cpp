#include "demo/HttpPages.h"

#include "demo/Antenna.h"

#include <algorithm>
#include <charconv>

namespace larkspool::demo {
namespace {

constexpr std::string_view Html = "text/html; charset=utf-8";

std::string Response(std::string_view status, std::string_view type, std::string_view body) {
    std::string out = "HTTP/1.1 ";
    out += status;
    out += "\r\nContent-Type: ";
    out += type;
    out += "\r\nContent-Length: " + std::to_string(body.size());
    out += "\r\nConnection: close\r\n\r\n";
    return out.append(body);
}

// The host that the client reached us by, if it is a plain name or address.
std::string HostOf(const Request& request, const std::string& otherwise) {
    const std::string_view named = request.Header("host");
    const std::string_view host = named.substr(0, named.find(':'));
    const bool plain = !host.empty() && host.size() < 254 &&
                       host.find_first_not_of(
                           "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-") ==
                           std::string_view::npos;
    return plain ? std::string(host) : otherwise;
}

std::string Entry(std::string_view name, std::string_view address) {
    return "<div class='cl-entry'>\n<span class='cl-name'>" + std::string(name) +
           "</span>\n<a href='" + std::string(address) +
           "' target='_blank'>open</a>\n<div class='cl-info'>0/12 users, 0-30 MHz</div>\n</div>\n";
}

// Receivers that don't exist: their addresses are reserved for examples.
std::string InventedEntries() {
    return Entry("Harbour light, long wire", "http://192.0.2.10:8073/") +
           Entry("Grüße vom Bodensee, Loop 60 cm", "http://192.0.2.44:8074") +
           Entry("北の受信所 ループアンテナ", "http://198.51.100.7:8073/?f=9750am") +
           Entry("Ħal Lark, vertical on the roof", "http://lark.example:8075") +
           Entry("Northern fells, two wires & a pre-amp", "http://203.0.113.5:18073");
}

// What a scraper must leave out: no port, not the next line, more than one colon, no address.
std::string OddEntries() {
    return Entry("No port given", "http://192.0.2.60/") +
           "<span class='cl-name'>Address too far down</span>\n\n"
           "<a href='http://192.0.2.61:8073'>open</a>\n" +
           Entry("Numbers with colons", "http://[2001:db8::1]:8073/") +
           Entry("Not on the plain web", "https://192.0.2.62:8073/") +
           "<span class='cl-name'>Never finished\n"
           "<span class='cl-name'>Moved away</span>\n<i>closed until spring</i>\n";
}

std::string DirectoryPage(const std::string& host, const PageSettings& settings) {
    std::string page = "<!DOCTYPE html>\n<html><head><meta charset='utf-8'>"
                       "<title>Receivers</title></head>\n<body>\n";
    for (std::size_t i = 0; i < settings.ports.size(); ++i) {
        page +=
            Entry(Antennas()[i].name, "http://" + host + ":" + std::to_string(settings.ports[i]));
    }
    return page + InventedEntries() + OddEntries() + "</body></html>\n";
}

std::string WelcomePage(const std::string& host, const PageSettings& settings) {
    std::string page = R"(<!DOCTYPE html>
<html><head><meta charset='utf-8'><title>Larkspool demo receivers</title></head>
<body>
<h1>Larkspool demo receivers</h1>
<p>Seven receivers run on this computer. They share one made-up band from long wave to
30 MHz; each hears it through an antenna of its own. Nothing here is on the air.</p>
<h2>First steps</h2>
<ol>
<li>In Larkspool pick one of the demo receivers in the list, or type its address and port.</li>
<li>Press Connect.</li>
<li>Try these frequencies: 10000 kHz in am (a tone, and a pip on each second),
10020 kHz in am (a bare carrier) or 10019 kHz in usb (its beat note, 1000 Hz),
6160 kHz in am (a tune), 9580 kHz in am (a voice of sorts),
14099.5 kHz in cw (Morse: VVV DE LARK), 7055 kHz in lsb and 14195 kHz in usb (voices),
29600 kHz in nbfm.</li>
<li>Click on a trace in the waterfall to tune to it. Record a minute of it.</li>
</ol>
<h2>The receivers</h2>
<ul>
)";
    for (std::size_t i = 0; i < settings.ports.size(); ++i) {
        page += "<li>" + std::string(Antennas()[i].name) + ": " + host + ", port " +
                std::to_string(settings.ports[i]) + "</li>\n";
    }
    return page + "</ul>\n<p>The list in the form of a public directory: "
                  "<a href='/public/'>/public/</a></p>\n</body></html>\n";
}

// The version that runs, as the digits behind the product's four: "0001130M1207" runs 130.
int AskedDigits(std::string_view target) {
    constexpr std::string_view Key = "p=";
    const std::size_t query = target.find('?');
    const std::size_t found = query == std::string_view::npos ? query : target.find(Key, query);
    if (found == std::string_view::npos || target.size() < found + Key.size() + 7) {
        return 0;
    }
    const std::string_view digits = target.substr(found + Key.size() + 4, 3);
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

int DigitsOf(std::string_view version) {
    std::string digits(version);
    std::erase(digits, '.');
    digits.resize(std::min<std::size_t>(digits.size(), 3));
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

} // namespace

std::string HttpError(std::string_view status) {
    return Response(status, "text/plain", std::string(status) + "\n");
}

std::string HttpResponse(const Request& request, const PageSettings& settings) {
    if (request.method != "GET") {
        return HttpError("405 Method Not Allowed");
    }
    const std::string host = HostOf(request, settings.host);
    const std::string_view target = request.target;
    const std::string_view path = target.substr(0, target.find('?'));
    if (path == "/public/" || path == "/public") {
        return Response("200 OK", Html, DirectoryPage(host, settings));
    }
    if (path == "/version/versionb.html") {
        const bool newer = DigitsOf(settings.newest) > AskedDigits(target);
        return Response("200 OK", "text/plain", newer ? settings.newest : "LATEST");
    }
    if (path == "/" || path == "/index.html") {
        return Response("200 OK", Html, WelcomePage(host, settings));
    }
    return HttpError("404 Not Found");
}

} // namespace larkspool::demo
