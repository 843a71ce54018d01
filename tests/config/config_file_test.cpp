// Lines and files of settings.
#include "config/config_file.h"

#include <string>

#include <gtest/gtest.h>

#include "common/run_program.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

struct LineResult {
    int Result;
    std::string Errors;
};

LineResult Process(std::string_view line) {
    CaptureStderr();
    const int result = ProcessConfigLine(line);
    return {result, GetCapturedStderr()};
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

class ConfigFileTest : public testing::Test {
protected:
    void SetUp() override { SetDefaultConfiguration(); }
};

TEST_F(ConfigFileTest, EveryKeyIsTakenAtItsBoundsAndRefusedBeyond) {
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number == nullptr) {
            continue;
        }
        SCOPED_TRACE(key.Name);
        const std::string name = key.Name;
        for (const int bound : {key.Lowest, key.Highest}) {
            const LineResult taken = Process(name + ' ' + std::to_string(bound) + " rest\n");
            EXPECT_EQ(taken.Result, 0);
            EXPECT_EQ(taken.Errors, "");
            EXPECT_EQ(GlobCfg.*key.Number, bound);
        }
        const auto refuse = [&](long long value) {
            const std::string before = Settings();
            const LineResult refused = Process(name + ' ' + std::to_string(value) + '\n');
            EXPECT_EQ(refused.Result, 1);
            EXPECT_EQ(refused.Errors, "Error: Config line value for \"" + name +
                                          "\" is invalid! (must be " + key.Range + ")\n");
            EXPECT_EQ(Settings(), before);
        };
        if (key.Lowest != INT_LOWEST) {
            refuse(static_cast<long long>(key.Lowest) - 1);
            refuse(-99999999999);
        }
        if (key.Highest != INT_HIGHEST) {
            refuse(static_cast<long long>(key.Highest) + 1);
            refuse(99999999999);
        } else {
            EXPECT_EQ(Process(name + " 99999999999\n").Result, 0);
            EXPECT_EQ(GlobCfg.*key.Number, INT_HIGHEST);
        }
        for (const char* unreadable : {"", " ", " x", " = 1", " -", " '1'"}) {
            const LineResult result = Process(name + unreadable + '\n');
            EXPECT_EQ(result.Result, 1) << unreadable;
            EXPECT_EQ(result.Errors,
                      "Error: Could not read config line value for \"" + name + "\"\n");
        }
    }
}

TEST_F(ConfigFileTest, DisplayCharacterStandsInQuotes) {
    for (const char mark : {'o', ' ', '\'', '#', '\xe9'}) {
        const std::string value = std::string("'") + mark + "'";
        EXPECT_EQ(Process("SINGLE_DISP_CHAR \t\r" + value + " rest\n").Result, 0) << mark;
        EXPECT_EQ(GlobCfg.SingleDispChar, mark);
    }
    GlobCfg.SingleDispChar = '*';
    for (const char* value : {"", " o", " ''", " 'o", " \"o\"", " 'oo'", " \v'o'"}) {
        const LineResult result = Process(std::string("SINGLE_DISP_CHAR") + value + "\n");
        EXPECT_EQ(result.Result, 1) << value;
        EXPECT_EQ(result.Errors,
                  "Error: Could not read config line value for \"SINGLE_DISP_CHAR\"\n");
    }
    EXPECT_EQ(GlobCfg.SingleDispChar, '*');
}

// The file in the project's root shows every key, and starting there is like starting without one.
TEST_F(ConfigFileTest, DeliveredFileHoldsTheDefaults) {
    const std::string path = TALUREX_SOURCE_DIR "/talurex.cfg";
    const std::string defaults = Settings();
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (key.Number != nullptr) {
            GlobCfg.*key.Number = 123456;
        }
    }
    GlobCfg.SingleDispChar = '?';
    ReadConfigFile(path);
    EXPECT_EQ(Settings(), defaults);
}

}  // namespace
