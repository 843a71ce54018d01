// The table of settings; what whole files lead to stands in the transcripts.
#include "config/config_file.h"

#include <algorithm>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

#include "common/captured.h"

namespace {

// What the line is refused with: nothing, when it is taken.
std::string Refusal(const std::string& line) {
    return StderrOf([&line] { std::ignore = ProcessConfigLine(line + '\n'); });
}

// Every setting as text, so that whole configurations can be compared.
std::string Settings() {
    std::string text(1, GlobCfg.SingleDispChar);
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number != nullptr) {
            text += ' ' + std::to_string(GlobCfg.*key.Number);
        }
    }
    return text;
}

}  // namespace

TEST(ConfigFile, EveryKeyIsTakenAtItsBoundsAndRefusedBeyond) {
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number == nullptr) {
            continue;
        }
        const std::string name = key.Name;
        int expected = GlobCfg.*key.Number;
        for (const long long value : {key.Lowest + 0LL, key.Lowest - 1LL, -99999999999LL,
                                      key.Highest + 0LL, key.Highest + 1LL, 99999999999LL}) {
            const int nearest =
                static_cast<int>(std::clamp<long long>(value, INT_LOWEST, INT_HIGHEST));
            const bool good = nearest >= key.Lowest && nearest <= key.Highest;
            expected = good ? nearest : expected;
            EXPECT_EQ(Refusal(name + ' ' + std::to_string(value) + " rest"),
                      good ? ""
                           : "Error: Config line value for \"" + name + "\" is invalid! (must be " +
                                 key.Range + ")\n");
            EXPECT_EQ(GlobCfg.*key.Number, expected) << name << ' ' << value;
        }
        for (const char* unreadable : {"", " ", " x", " = 1", " -", " '1'"}) {
            EXPECT_EQ(Refusal(name + unreadable),
                      "Error: Could not read config line value for \"" + name + "\"\n");
        }
    }
}

// The file in the project's root shows every key, and starting there is like starting without one.
TEST(ConfigFile, DeliveredFileHoldsTheDefaults) {
    SetDefaultConfiguration();
    const std::string defaults = Settings();
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number != nullptr) {
            GlobCfg.*key.Number = 123456;
        }
    }
    GlobCfg.SingleDispChar = '?';
    ReadConfigFile(TALUREX_SOURCE_DIR "/talurex.cfg");
    EXPECT_EQ(Settings(), defaults);
}
