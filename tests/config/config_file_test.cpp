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

std::string DefaultSettings() {
    SetDefaultConfiguration();
    return Settings();
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

// The ranges as a user knows them; the loop above trusts the table for them.
TEST_F(ConfigFileTest, RangesAndTheirMessages) {
    const struct {
        const char* Line;
        const char* Range;
    } refused[] = {
        {"COMPUTER_COLOR 3", "0-2"},
        {"NUM_HUMAN_PLAYERS -1", "0-2"},
        {"COMPUTER_LEVEL -1", ">=0"},
        {"SETUP_MODE 2", "0-1"},
        {"BOARD_X_DIM 16", "1-15"},
        {"BOARD_Y_DIM 10", "1-9"},
        {"NUM_LIFE_STONES 0", ">=1"},
        {"NUM_WHITE_STONES -2", ">= -1"},
        {"SINGLE_DISP_CHAR_FLAG 2", "0-1"},
        {"RANDOM_SEED -1", ">=0"},
        {"PRINT_STATUS_FLAG -1", "0-1"},
        {"GAME_RUN_FLAG 2", "0-1"},
        {"GUI_PORT 0", ">0"},
    };
    for (const auto& line : refused) {
        const LineResult result = Process(line.Line);
        EXPECT_EQ(result.Result, 1) << line.Line;
        EXPECT_NE(result.Errors.find(std::string("(must be ") + line.Range + ")\n"),
                  std::string::npos)
            << result.Errors;
    }
    for (const char* line : {"NUM_WHITE_STONES -1", "SPECIAL -7", "GUI 5", "GUI_HIGHLIGHTING -1"}) {
        EXPECT_EQ(Process(line).Result, 0) << line;
    }
}

TEST_F(ConfigFileTest, NumbersAreReadInThreeBases) {
    EXPECT_EQ(Process("COMPUTER_LEVEL 0x10").Result, 0);
    EXPECT_EQ(GlobCfg.ComputerLevel, 16);
    EXPECT_EQ(Process("\t NUM_LIFE_STONES\v010").Result, 0);
    EXPECT_EQ(GlobCfg.NumLifeStones, 8);
    EXPECT_EQ(Process("BOARD_X_DIM 7columns wide").Result, 0);
    EXPECT_EQ(GlobCfg.BoardXDim, 7);
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

TEST_F(ConfigFileTest, CommentsEmptyLinesAndUnknownWords) {
    for (const char* line : {"", "\n", " \t\r\n", "#", "  # GUI x\n"}) {
        EXPECT_EQ(Process(line).Result, 0) << line;
    }
    for (const char* word : {"board_x_dim", "BOARD_X_DIM=9", "GUI_", "BOARD", "\v#"}) {
        const LineResult result = Process(std::string(word) + " 9\n");
        EXPECT_EQ(result.Result, 1) << word;
        const char* read = word[0] == '\v' ? word + 1 : word;
        EXPECT_EQ(result.Errors, std::string("Error: Config line keyword \"") + read +
                                     "\" was not recognized !\n");
    }
    // Nothing but white space that is no line space: wrong, and nothing to say about it.
    const LineResult odd = Process(" \f\v\n");
    EXPECT_EQ(odd.Result, 1);
    EXPECT_EQ(odd.Errors, "");
    EXPECT_EQ(Settings(), DefaultSettings());
}

TEST_F(ConfigFileTest, FileIsAppliedLineByLine) {
    const TemporaryFolder folder;
    const std::string path = folder.Path + "/game.cfg";
    WriteFile(path, "# comment\n\n  BOARD_X_DIM 9\r\nBOARD_Y_DIM\t8\r\nSINGLE_DISP_CHAR 'o'\n"
                    "GUI_PORT 17\nBOARD_Y_DIM 7");
    ReadConfigFile(path);
    EXPECT_EQ(GlobCfg.BoardXDim, 9);
    EXPECT_EQ(GlobCfg.BoardYDim, 7);
    EXPECT_EQ(GlobCfg.SingleDispChar, 'o');
    EXPECT_EQ(GlobCfg.GuiPort, 17);
    EXPECT_EQ(GlobCfg.NumLifeStones, 3);
}

TEST_F(ConfigFileTest, MissingFileIsAWarning) {
    CaptureStdout();
    ReadConfigFile("/nowhere/at all.cfg");
    EXPECT_EQ(GetCapturedStdout(),
              "FileOpen: error: opening file (/nowhere/at all.cfg) with AccessMode (rb) failed !\n"
              "Warning! Config file could not be opened! Using default configuration!\n");
    EXPECT_EQ(Settings(), DefaultSettings());
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
