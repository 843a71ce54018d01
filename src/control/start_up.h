// From the start of the process to the first game.
#pragma once

#include "config/options.h"
#include "kernel/weights.h"

// Fills GlobCfg from its defaults, the configuration file and the command line, each over the one
// before; prints the start-up lines, seeds the random generator and sets the computer's level.
// `options` holds what the command line gave. A faulty file or command line ends the program.
void ProgramInit(int argumentCount, const char* const* arguments, OptionValues& options,
                 EvalWeights& weights);
