// Any bytes as the public directory's page: reading it in one go must find what reading it line
// after line finds.
#include "Input.h"
#include "directory/DirectoryScanner.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view page(reinterpret_cast<const char*>(data), size);
    larkspool::ReceiverList whole;
    larkspool::DirectoryScanner(whole).ScanPage(page);
    larkspool::ReceiverList lineByLine;
    larkspool::DirectoryScanner scanner(lineByLine);
    for (std::size_t at = 0; at <= size;) {
        const std::size_t end = std::min(page.find('\n', at), size);
        scanner.ProcessLine(page.substr(at, end - at));
        at = end + 1;
    }
    larkspool::fuzz::Require(whole == lineByLine, "one go finds what line after line finds");
    return 0;
}
