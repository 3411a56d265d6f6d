// Feeds to the fuzz target it is linked with: the empty input, bytes at random, every file of the
// folders, and as many changed ones as asked for, the same in every run:
//   replay_NAME COUNT FOLDER...

#include "fuzz/fuzz.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

// Some bytes changed, pieces taken out or cut off, or pieces of other inputs put in.
Bytes Changed(const std::vector<Bytes>& inputs, std::mt19937& random)
{
    const auto below = [&](std::size_t limit) {
        return static_cast<std::ptrdiff_t>(limit == 0 ? 0 : random() % limit);
    };
    Bytes input = inputs[random() % inputs.size()];
    for (auto changes = 1 + random() % 8; changes > 0; --changes) {
        const Bytes& other = inputs[random() % inputs.size()];
        const auto from = other.begin() + below(other.size());
        const auto place = input.begin() + below(input.size());
        const auto kind = random() % 16;
        if (kind < 8)
            input.insert(place, from, from + below(std::min<std::size_t>(other.end() - from, 50)));
        else if (kind < 13 && place != input.end())
            *place = static_cast<std::uint8_t>(random());
        else
            input.erase(place, kind == 15
                                   ? input.end()
                                   : place + below(std::min<std::size_t>(input.end() - place, 50)));
    }
    return input;
}

} // namespace

int main(int argc, char** argv)
{
    std::mt19937 random(1);
    std::vector<Bytes> inputs(2);
    for (int i = 0; i < 2000; ++i)
        inputs[1].push_back(static_cast<std::uint8_t>(random()));
    const int changed = argc > 1 ? std::atoi(argv[1]) : 0;
    std::vector<std::filesystem::path> files;
    std::error_code none; // a target without a corpus
    for (int i = 2; i < argc; ++i)
        for (const auto& file : std::filesystem::directory_iterator(argv[i], none))
            files.push_back(file);
    std::sort(files.begin(), files.end()); // whatever order the system lists them in
    for (const auto& file : files) {
        std::ifstream in(file, std::ios::binary);
        inputs.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    for (const Bytes& input : inputs)
        LLVMFuzzerTestOneInput(input.data(), input.size());
    for (int i = 0; i < changed; ++i) {
        const Bytes input = Changed(inputs, random);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d inputs\n", static_cast<int>(inputs.size()) + changed);
    return 0;
}
