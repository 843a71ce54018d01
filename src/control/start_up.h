// From the start of the process to the first game.
#pragma once

// Fills GlobCfg, prints the start-up lines and seeds the random generator.
void ProgramInit();
