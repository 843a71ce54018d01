#include "control/start_up.h"

#include "config/config_file.h"
#include "config/glob_cfg.h"
#include "support/output.h"
#include "support/random.h"

void ProgramInit(int argumentCount, const char* const* arguments, OptionValues& options,
                 EvalWeights& weights) {
    InitOptions(options);
    SetDefaultConfiguration();
    // The command line is looked at first, for it may name the file, and applied last.
    GetOptions(options, argumentCount, arguments);
    const std::string& path = options[OPTION_CONFIG].Argument;
    ReadConfigFile(path.empty() ? GlobCfg.ConfigFileName : path);
    ProcessOptions(options);
    Print("Talurex V%s, %s, by the Talurex developers\n", TALUREX_VERSION, TALUREX_VERSION_DATE);
    Print("Number of human players: %i\n", GlobCfg.NumHumanPlayers);
    Print("Talurex KI-Level: %i\n", GlobCfg.ComputerLevel);
    InitRandom(GlobCfg.RandomSeed);
    SetLevel(GlobCfg.ComputerLevel, weights);
}
