#include "config/glob_cfg.h"
#include "control/main_loop.h"
#include "control/start_up.h"
#include "display/gui_link.h"
#include "engine/self_play.h"
#include "support/files.h"
#include "support/signals.h"

int main(int argumentCount, char** arguments) {
    EnsureStandardStreams();
    ListenForMoveNow();
    OptionValues options;
    EvalWeights weights;
    ProgramInit(argumentCount, arguments, options, weights);
    if (options[OPTION_HELP].Given) {
        PrintCommandLineHelp(arguments[0]);
        return 0;
    }
    if (GlobCfg.Gui != 0) {
        OpenGuiLink();
    }
    switch (GlobCfg.Special) {
    case 1:
        PlayMatch();
        return 0;
    case 2:
        TuneWeights();  // never returns
    default:
        MainControl(weights);
        return 0;
    }
}
