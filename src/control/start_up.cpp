#include "control/start_up.h"

#include <cstdio>

#include "config/glob_cfg.h"
#include "support/random.h"

void ProgramInit() {
    SetDefaultConfiguration();
    std::printf("Talurex V%s, %s, by the Talurex developers\n", TALUREX_VERSION,
                TALUREX_VERSION_DATE);
    std::printf("Number of human players: %i\n", GlobCfg.NumHumanPlayers);
    std::printf("Talurex KI-Level: %i\n", GlobCfg.ComputerLevel);
    InitRandom(GlobCfg.RandomSeed);
}
