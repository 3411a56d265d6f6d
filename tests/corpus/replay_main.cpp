// Feeds every file of a folder, and the empty input, to the fuzz target it is linked with.

#include "fuzz/fuzz.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char** argv)
{
    LLVMFuzzerTestOneInput(nullptr, 0);
    int count = 1;
    const std::filesystem::path folder = argc > 1 ? argv[1] : "";
    if (std::filesystem::is_directory(folder)) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                   bytes.size());
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return 0;
}
