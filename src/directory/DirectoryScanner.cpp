#include "directory/DirectoryScanner.h"

#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace larkspool {

namespace {

constexpr std::string_view NameMarker = "'cl-name'";
constexpr std::string_view NameEnd = "</span>";
constexpr std::string_view AddressMarker = "<a href='http://";

} // namespace

void DirectoryScanner::ScanPage(std::string_view page) {
    std::size_t at = 0;
    while (at < page.size()) {
        if (!nextLineIsURL) {
            // Most lines hold no name: skip to the next one that does.
            at = page.find(NameMarker, at);
            if (at == std::string_view::npos) {
                return;
            }
        }
        const std::size_t end = std::min(page.find('\n', at), page.size());
        ProcessLine(page.substr(at, end - at));
        at = end + 1;
    }
}

void DirectoryScanner::ProcessLine(std::string_view line) {
    if (std::exchange(nextLineIsURL, false)) {
        TakeAddress(line);
    } else {
        TakeName(line);
    }
}

void DirectoryScanner::TakeName(std::string_view line) {
    constexpr std::size_t ClosingBracket = 1;
    const std::size_t marker = line.find(NameMarker);
    if (marker == std::string_view::npos) {
        return;
    }
    const std::size_t start = marker + NameMarker.size() + ClosingBracket;
    const std::size_t end = line.find(NameEnd, start);
    if (end != std::string_view::npos) {
        tempName.assign(line, start, end - start);
        nextLineIsURL = true;
    }
}

void DirectoryScanner::TakeAddress(std::string_view line) {
    const std::size_t marker = line.find(AddressMarker);
    if (marker == std::string_view::npos) {
        return;
    }
    const std::string_view rest = line.substr(marker + AddressMarker.size());
    const std::size_t end = rest.find('\'');
    if (end == std::string_view::npos) {
        return;
    }
    if (const auto address = SplitHostAndPort(rest.substr(0, end))) {
        list.Append(std::move(tempName), std::string(address->host), WholePart(Val(address->port)));
    }
}

} // namespace larkspool
