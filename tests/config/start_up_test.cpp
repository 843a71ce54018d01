// Whole starts of the program: which setting wins, and how a faulty start ends.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/run_program.h"
#include "config/options.h"

namespace {

using Arguments = std::vector<std::string>;

constexpr const char* BANNER = "Talurex V1.1, 2003-10-31, by the Talurex developers\n";
constexpr const char* NO_FILE =
    "FileOpen: error: opening file (talurex.cfg) with AccessMode (rb) failed !\n"
    "Warning! Config file could not be opened! Using default configuration!\n";
constexpr const char* USAGE =
    "\nusage: talurex {option(s)}\n"
    "-----------------------------------------------------\n"
    "Options:\n  -config=<path>                  : read config file from <path>\n"
    "  -color=[w|white|b|black|r|random]: set color of human player\n"
    "  -setup=[n|normal|r|random]       : set dvonn setup mode\n"
    "  -players=[0|1|2]                 : set the number of human players\n"
    "  -level=<level>                   : set computer playing strength\n"
    "  -gui                             : connect to graphical display\n"
    "  -help                            : print this help text\n"
    "\ntalurex version date: 2003-10-31\n";

std::string StartLines(int players, int level) {
    return BANNER + ("Number of human players: " + std::to_string(players) +
                     "\nTalurex KI-Level: " + std::to_string(level) + "\n");
}

class StartUpTest : public testing::Test {
protected:
    ProgramRun Run(const Arguments& arguments, const std::string& input = "") {
        Arguments command = {TALUREX_PROGRAM};
        command.insert(command.end(), arguments.begin(), arguments.end());
        return RunProgram(command, input, Folder.Path);
    }
    void Configure(const std::string& text) { WriteFile(Folder.Path + "/talurex.cfg", text); }

    TemporaryFolder Folder;
};

TEST_F(StartUpTest, HelpWithAndWithoutAConfigurationFile) {
    ProgramRun run = Run({"-help"});
    EXPECT_EQ(run.Output, NO_FILE + StartLines(1, 5000) + USAGE);
    EXPECT_EQ(run.Errors, "");
    EXPECT_EQ(run.ExitStatus, 0);
    Configure("COMPUTER_LEVEL 100\nSPECIAL 1\nGUI 1\n");
    run = Run({"-players=2", "-help"}, "e3\n");
    EXPECT_EQ(run.Output, StartLines(2, 100) + USAGE);
    EXPECT_EQ(run.Errors, "");
    EXPECT_EQ(run.ExitStatus, 0);
}

TEST_F(StartUpTest, OptionsOverrideTheFileAndTheFileTheDefaults) {
    WriteFile(Folder.Path + "/other.cfg", "NUM_HUMAN_PLAYERS 0\n");
    EXPECT_EQ(Run({"-help", "-config=other.cfg"}).Output, StartLines(0, 5000) + USAGE);
    Configure("COMPUTER_LEVEL 100\nNUM_HUMAN_PLAYERS 2\n");
    const struct {
        Arguments Given;
        int Players;
        int Level;
    } starts[] = {
        {{}, 2, 100},
        {{"-level=3000"}, 2, 3000},
        {{"-players=2x", "-level=0x20"}, 2, 32},
        {{"-level=-3", "-players=0"}, 0, -3},
        {{"-level=-99999999999", "-players=+1"}, 1, -2147483647 - 1},
        // A later value replaces the earlier one, a later option without a value keeps it.
        {{"-level=5", "-level=6", "-level"}, 2, 6},
        {{"-config"}, 2, 100},
        {{"-config=other.cfg"}, 0, 5000},
    };
    for (const auto& start : starts) {
        Arguments arguments = start.Given;
        arguments.push_back("-help");
        const ProgramRun run = Run(arguments);
        EXPECT_EQ(run.Output, StartLines(start.Players, start.Level) + USAGE)
            << start.Given.front();
        EXPECT_EQ(run.ExitStatus, 0);
    }
}

TEST_F(StartUpTest, WordsAndNumbersOfTheOtherOptions) {
    SetDefaultConfiguration();
    const struct {
        const char* Argument;
        int GlobalConfiguration::*Field;
        int Value;
    } settings[] = {
        {"-color=b", &GlobalConfiguration::ComputerColor, 0},
        {"-color=w", &GlobalConfiguration::ComputerColor, 1},
        {"-color=black", &GlobalConfiguration::ComputerColor, 0},
        {"-color=white", &GlobalConfiguration::ComputerColor, 1},
        {"-color=r", &GlobalConfiguration::ComputerColor, 2},
        {"-color=b", &GlobalConfiguration::ComputerColor, 0},
        {"-color=random", &GlobalConfiguration::ComputerColor, 2},
        {"-setup=r", &GlobalConfiguration::SetupMode, 1},
        {"-setup=n", &GlobalConfiguration::SetupMode, 0},
        {"-setup=random", &GlobalConfiguration::SetupMode, 1},
        {"-setup=normal", &GlobalConfiguration::SetupMode, 0},
        {"-special=2", &GlobalConfiguration::Special, 2},
        {"-special=-010", &GlobalConfiguration::Special, -8},
        {"-gui", &GlobalConfiguration::Gui, 1},
        {"-gui=0", &GlobalConfiguration::Gui, 0},
        {"-gui=5", &GlobalConfiguration::Gui, 5},
    };
    for (const auto& setting : settings) {
        const char* arguments[] = {"talurex", setting.Argument};
        OptionValues options;
        InitOptions(options);
        GetOptions(options, 2, arguments);
        ProcessOptions(options);
        EXPECT_EQ(GlobCfg.*setting.Field, setting.Value) << setting.Argument;
    }
}

TEST_F(StartUpTest, FaultyCommandLines) {
    const std::string hint =
        std::string("type \"") + TALUREX_PROGRAM + " -help\" to get usage info\n";
    const auto missing = [](const std::string& name) {
        return "Error: Parameter for option \"" + name + "\" is missing!\n";
    };
    const auto unknown = [](const std::string& argument) {
        return "Error in command line: Option \"" + argument + "\" is unknown!\n";
    };
    const std::string tooLong(200, 'x');
    // Found before the configuration file is opened.
    const struct {
        Arguments Given;
        std::string Errors;
        std::string Output;
    } early[] = {
        {{"-help", "level"},
         "Error in command line (\"level\" not recogniced)!\n",
         std::string("Type ") + TALUREX_PROGRAM + " -help for help.\n"},
        {{""},
         "Error in command line (\"\" not recogniced)!\n",
         std::string("Type ") + TALUREX_PROGRAM + " -help for help.\n"},
        {{"-"}, unknown("-"), hint},
        {{"-levels=3"}, unknown("-levels=3"), hint},
        {{"-helpgui"}, unknown("-helpgui"), hint},
        {{"--help"}, unknown("--help"), hint},
        {{"-Level=3"}, unknown("-Level=3"), hint},
        {{"-level="}, missing("level"), hint},
        {{"-config="}, missing("config"), hint},
        {{"-help="}, missing("help"), hint},
        {{"-config=" + tooLong}, missing("config"), hint},
        {{"-players=9", "-x"}, unknown("-x"), hint},
    };
    for (const auto& start : early) {
        const ProgramRun run = Run(start.Given, "e3\n");
        EXPECT_EQ(run.Errors, start.Errors);
        EXPECT_EQ(run.Output, start.Output);
        EXPECT_EQ(run.ExitStatus, 1);
    }
    // Found behind the file and before the banner.
    const auto invalid = [](const std::string& name) {
        return "Error: Argument for option \"" + name + "\" is invalid!\n";
    };
    const auto required = [](const std::string& name) {
        return "Error: Option \"" + name + "\" requires an argument!\n";
    };
    const std::string range = "Error: Argument for option \"players\" is out of range (0-2)!\n";
    const struct {
        Arguments Given;
        std::string Errors;
    } late[] = {
        {{"-color"}, required("color")},
        {{"-color=W"}, invalid("color")},
        {{"-color=whit"}, invalid("color")},
        {{"-setup"}, required("setup")},
        {{"-setup=w"}, invalid("setup")},
        {{"-players"}, required("players")},
        {{"-players=two"}, invalid("players")},
        {{"-players=3"}, range},
        {{"-players=-1"}, range},
        {{"-level"}, required("level")},
        {{"-level=-"}, invalid("level")},
        {{"-special"}, required("special")},
        {{"-special=x"}, invalid("special")},
        {{"-gui=abc"}, invalid("gui")},
        {{"-help", "-gui=x"}, invalid("gui")},
        // In the order of the table, not of the command line.
        {{"-gui=x", "-special", "-level=x", "-color"}, required("color")},
    };
    for (const auto& start : late) {
        const ProgramRun run = Run(start.Given, "e3\n");
        EXPECT_EQ(run.Errors, start.Errors);
        EXPECT_EQ(run.Output, NO_FILE);
        EXPECT_EQ(run.ExitStatus, 1);
    }
}

TEST_F(StartUpTest, ArgumentOfTheLargestLengthIsTaken) {
    const std::string path(199, 'x');
    const ProgramRun run = Run({"-config=" + path, "-help"});
    EXPECT_NE(run.Output.find("opening file (" + path + ") with"), std::string::npos);
    EXPECT_EQ(run.ExitStatus, 0);
}

TEST_F(StartUpTest, FaultyConfigurationFiles) {
    const std::string complaint =
        "Config file: \"talurex.cfg\" contains errors! Please correct, and try again\n";
    const struct {
        std::string Line;
        std::string Errors;
        std::string Output;
    } files[] = {
        {"BOARD_X_DIM 16",
         "Error: Config line value for \"BOARD_X_DIM\" is invalid! (must be 1-15)\n", complaint},
        {"GUI", "Error: Could not read config line value for \"GUI\"\n", complaint},
        {"level 5", "Error: Config line keyword \"level\" was not recognized !\n", complaint},
        {"\f", "", complaint},
        {"#" + std::string(199, 'x'),
         "FileReadLine: Error: Input line too long (more than 200 chars)\n", ""},
    };
    for (const auto& file : files) {
        // Only the first faulty line is looked at, and no option can mend it.
        Configure("COMPUTER_LEVEL 7\n" + file.Line + "\nNONSENSE\n");
        const ProgramRun run = Run({"-help", "-players=9"}, "e3\n");
        EXPECT_EQ(run.Errors, file.Errors);
        EXPECT_EQ(run.Output, file.Output);
        EXPECT_EQ(run.ExitStatus, 1);
    }
    Configure("#" + std::string(198, 'x') + "\nCOMPUTER_LEVEL 7\n");
    EXPECT_EQ(Run({"-help"}).Output, StartLines(1, 7) + USAGE);
}

}  // namespace
