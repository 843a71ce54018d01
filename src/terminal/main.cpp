#include <cstdlib>

#include <unistd.h>

#include "config/glob_cfg.h"
#include "control/start_up.h"
#include "display/gui_link.h"
#include "display/terminal_board.h"
#include "engine/self_play.h"
#include "support/fatal.h"
#include "support/files.h"
#include "terminal/keep_game.h"
#include "terminal/main_loop.h"
#include "terminal/progress_line.h"
#include "terminal/signals.h"

namespace {

// People can ask for a terminal without colours. Who reads a pipe gets them always.
bool WantsNoColors() {
    const char* wish = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) == 1 && wish != nullptr && wish[0] != '\0';
}

void PrepareTerminal(Session& session) {
    if (WantsNoColors()) {
        PrintedBoards = BoardStyle::Plain;
    }
    if (CanShowProgress()) {
        session.Report = ShowProgress;
    }
}

void RunTalurex(int argumentCount, char** arguments, Session& session) {
    OptionValues options;
    ProgramInit(argumentCount, arguments, options, session.Weights);
    if (options[OPTION_HELP].Given) {
        PrintCommandLineHelp(arguments[0]);
        return;
    }
    if (GlobCfg.Gui != 0) {
        OpenGuiLink();
    }
    switch (GlobCfg.Special) {
    case 1: return PlayMatch();
    case 2: TuneWeights();  // never returns
    default: return MainControl(session);
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    EnsureStandardStreams();
    ListenForMoveNow();
    static Session session;
    PrepareTerminal(session);
    try {
        RunTalurex(argumentCount, arguments, session);
        return 0;
    } catch (const ProgramEnd& end) {
        KeepGame(session.Play);
        return end.Status;
    }
}
