#include "config/glob_cfg.h"
#include "control/main_loop.h"
#include "control/start_up.h"
#include "engine/weights.h"
#include "support/files.h"

int main() {
    EnsureStandardStreams();
    ProgramInit();
    EvalWeights weights;
    SetLevel(GlobCfg.ComputerLevel, weights);
    MainControl(weights);
    return 0;
}
