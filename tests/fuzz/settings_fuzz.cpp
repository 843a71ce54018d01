// Any text read as the lines of a configuration file, and as the arguments of the command line, one
// in each line. Faulty arguments end the program by design: here they only end the input.
#include <sstream>
#include <vector>

#include "config/config_file.h"
#include "config/options.h"
#include "fuzz/fuzz_support.h"
#include "support/fatal.h"

namespace {

void RequireSaneSettings() {
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number != nullptr) {
            const int value = GlobCfg.*key.Number;
            Require(value >= key.Lowest && value <= key.Highest, key.Name);
        }
    }
}

void ReadConfigLines(const std::string& text) {
    SetDefaultConfiguration();
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const int color = GlobCfg.ComputerColor;
        const bool isFaulty = ProcessConfigLine(line) != 0;
        Require(!isFaulty || GlobCfg.ComputerColor == color, "a faulty line changes nothing");
        RequireSaneSettings();
    }
}

void ReadArguments(const std::string& text) {
    std::vector<std::string> words = {"talurex"};
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        words.emplace_back(line.c_str());  // a NUL byte ends an argument
    }
    std::vector<const char*> arguments;
    for (const std::string& word : words) {
        arguments.push_back(word.c_str());
    }
    SetDefaultConfiguration();
    OptionValues values;
    InitOptions(values);
    try {
        GetOptions(values, static_cast<int>(arguments.size()), arguments.data());
        ProcessOptions(values);
    } catch (const ProgramEnd&) {
    }
    Require(GlobCfg.ComputerColor >= 0 && GlobCfg.ComputerColor <= RANDOM_COLOR, "-color");
    Require(GlobCfg.SetupMode == 0 || GlobCfg.SetupMode == 1, "-setup");
    Require(GlobCfg.NumHumanPlayers >= 0 && GlobCfg.NumHumanPlayers <= 2, "-players");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = TextOfInput(data, size, 199);
    ReadConfigLines(text);
    ReadArguments(text);
    return 0;
}
