// Stands for the fuzzer where there is none: goes through the files of the folders that it is given.

#include "FuzzTarget.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

void replay(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout);
            replay(entry.path());
            ++count;
        }
    }
    return count > 0 ? 0 : 1;
}
