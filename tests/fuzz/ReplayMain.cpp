// Stands for the fuzzer where there is none: goes through the files of a folder, then through broken ones
// that are made of them, which are the same in each run. What does harm is left in the working folder.

#include "FuzzTarget.h"
#include "Mutator.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

/// For an input that would go on for ever.
constexpr unsigned longestSeconds = 20;

std::string current;
std::string keptIn;

/// Called where the process is about to end: nothing more is to be relied on.
void keepCurrent() {
    if (std::FILE* file = std::fopen(keptIn.c_str(), "wb")) {
        std::fwrite(current.data(), 1, current.size(), file);
        std::fclose(file);
        std::fprintf(stderr, "The input is in %s\n", keptIn.c_str());
    }
}

void keepAtSignal(int signal) {
    keepCurrent();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void keepWhatDoesHarm(const std::filesystem::path& program) {
    keptIn = program.filename().string() + ".found";
    for (const int signal : {SIGABRT, SIGALRM})
        std::signal(signal, keepAtSignal);
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(keepCurrent);
#endif
}

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

/// Sorted, since the order of a folder is no order.
std::vector<std::filesystem::path> filesIn(const char* folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// The quoted words of a fuzzer's dictionary.
std::vector<std::string> tokensIn(const char* dictionary) {
    std::vector<std::string> tokens;
    std::ifstream stream(dictionary);
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with('"'))
            continue;
        std::string token;
        for (std::size_t i = 1; i + 1 < line.size(); ++i) {
            const bool isNumber = line.compare(i, 2, "\\x") == 0;
            token += isNumber ? static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16)) : line[i];
            i += isNumber ? 3 : 0;
        }
        tokens.push_back(token);
    }
    return tokens;
}

void run(std::string input) {
    current = std::move(input);
    alarm(longestSeconds);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current.data()), current.size());
}

} // namespace

/// FOLDER DICTIONARY COUNT, the last for how many broken inputs there are to be.
int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    keepWhatDoesHarm(argv[0]);
    std::vector<std::string> inputs;
    for (const auto& file : filesIn(argv[1])) {
        const std::string input = contentsOf(file);
        run(input);
        // What is made of one that takes all that it is allowed takes long as well.
        if (!file.filename().string().starts_with("slow-"))
            inputs.push_back(input);
    }
    const auto tokens = tokensIn(argv[2]);
    if (inputs.empty() || tokens.empty())
        return 2;
    Mutator mutator(inputs, tokens);
    const int count = std::stoi(argv[3]);
    for (int i = 0; i < count; ++i)
        run(mutator.next());
    std::printf("%zu files and %d broken inputs made of them did no harm\n", inputs.size(), count);
    return 0;
}
