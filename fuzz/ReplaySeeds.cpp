// Stands in for the fuzzer where there is none: hands every file of a folder to the target.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    const std::filesystem::path folder(argc > 1 ? argv[1] : ".");
    int seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++seeds;
    }
    std::printf("%d seeds\n", seeds);
    return seeds > 0 ? 0 : 1;
}
