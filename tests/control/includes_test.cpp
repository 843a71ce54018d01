// The floors of the house: a file includes only from its own folder and from those that it may
// know.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// The folders from the ground floor up, and what each may know besides itself.
struct Floor {
    std::string_view Folder;
    std::string_view Knows;
};
constexpr std::array<Floor, 11> FLOORS = {{
    {"support", ""},
    {"config", "support"},
    {"rules", "config support"},
    {"display", "rules config support"},
    {"gamefiles", "rules config support"},
    {"kernel", "rules config support"},
    {"engine", "kernel rules config support"},
    {"control", "engine kernel gamefiles display rules config support"},
    {"page", "control engine kernel gamefiles display rules config support"},
    {"terminal", "control engine kernel gamefiles display rules config support"},
    {"board", "page control engine kernel gamefiles display rules config support"},
}};

std::string_view FolderOf(std::string_view path) {
    return path.substr(0, path.find('/'));
}

bool MayInclude(const Floor& floor, std::string_view folder) {
    return folder == floor.Folder || floor.Knows.find(folder) != std::string_view::npos;
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
        const auto floor = std::find_if(FLOORS.begin(), FLOORS.end(), [&](const Floor& some) {
            return some.Folder == FolderOf(file);
        });
        ASSERT_NE(floor, FLOORS.end()) << file << " is in no folder of the house";
        std::ifstream text(entry.path());
        for (std::string line; std::getline(text, line);) {
            if (!line.starts_with("#include \"")) {
                continue;
            }
            const std::string included = line.substr(10, line.rfind('"') - 10);
            EXPECT_TRUE(MayInclude(*floor, FolderOf(included))) << file << " includes " << included;
            EXPECT_TRUE(fs::exists(root / included)) << file << " includes " << included;
            ++numIncludes;
        }
    }
    EXPECT_GT(numIncludes, 0);
}
