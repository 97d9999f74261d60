#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Tries every file of the folders that are named once: a target without its fuzzer. A name comes before what it does,
/// so that the last one tells which file stopped the program. Fails when there is nothing to try.
int main(int argumentCount, char** arguments) {
    int tried = 0;
    for (int at = 1; at < argumentCount; ++at) {
        if (!std::filesystem::is_directory(arguments[at])) continue;
        for (const auto& entry : std::filesystem::directory_iterator(arguments[at])) {
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout);
            std::ifstream file(entry.path(), std::ios::binary);
            std::string bytes{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++tried;
        }
    }
    return tried > 0 ? 0 : 1;
}
