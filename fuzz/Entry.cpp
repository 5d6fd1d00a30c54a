// Hands bytes to one target: the fuzzer's own, or where there is none every file of a folder.
#include "Input.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace larkspool::fuzz {
void LARKSPOOL_TARGET(std::string_view bytes);
void Nothing(std::string_view /*bytes*/) {} // the floor for the other targets' runs a second
} // namespace larkspool::fuzz

#ifdef LARKSPOOL_FUZZ
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    larkspool::fuzz::LARKSPOOL_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}
#else
int main(int, char** argv) {
    int seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        larkspool::fuzz::LARKSPOOL_TARGET(std::string{std::istreambuf_iterator<char>(file), {}});
        ++seeds;
    }
    std::printf("%d seeds\n", seeds);
    return seeds > 0 ? 0 : 1;
}
#endif
