// The floors of the house: a file includes only from its own folder and from those below it.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// From the ground floor up.
constexpr std::array<std::string_view, 7> FLOORS = {"support",   "config", "rules",  "display",
                                                    "gamefiles", "engine", "control"};

std::size_t FloorOf(std::string_view path) {
    const std::string_view folder = path.substr(0, path.find('/'));
    return std::find(FLOORS.begin(), FLOORS.end(), folder) - FLOORS.begin();
}

}  // namespace

TEST(Includes, GoDownOnly) {
    const fs::path root = fs::path(TALUREX_TESTS).parent_path() / "src";
    int numIncludes = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        const std::string file = fs::relative(entry.path(), root).generic_string();
        if (!file.ends_with(".h") && !file.ends_with(".cpp")) {
            continue;
        }
        ASSERT_LT(FloorOf(file), FLOORS.size()) << file << " is in no folder of the house";
        std::ifstream text(entry.path());
        for (std::string line; std::getline(text, line);) {
            if (!line.starts_with("#include \"")) {
                continue;
            }
            const std::string included = line.substr(10, line.rfind('"') - 10);
            EXPECT_LE(FloorOf(included), FloorOf(file)) << file << " includes " << included;
            EXPECT_TRUE(fs::exists(root / included)) << file << " includes " << included;
            ++numIncludes;
        }
    }
    EXPECT_GT(numIncludes, 0);
}
