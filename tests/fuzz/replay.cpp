// Runs a fuzz target on every file of the given folders: the seeds, and whatever was once found.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "common/scratch_folder.h"
#include "fuzz/fuzz_support.h"

int main(int argc, char** argv) {
    int numFiles = 0;
    std::vector<std::string> inputs;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : std::filesystem::directory_iterator(argv[i])) {
            inputs.push_back(ReadFile(file.path().string()));
        }
    }
    LLVMFuzzerInitialize(&argc, &argv);
    for (const std::string& input : inputs) {
        const std::vector<std::uint8_t> bytes(input.begin(), input.end());
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        ++numFiles;
    }
    return numFiles > 0 ? 0 : 1;
}
