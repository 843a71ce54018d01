#include "terminal/main_loop.h"

#include "display/gui_link.h"
#include "terminal/keep_game.h"
#include "terminal/prompt.h"
#include "terminal/signals.h"

void MainControl(Session& session) {
    PrepareInput();
    BeginPlay(session);
    std::string line;
    while (session.Play.QuitFlag == 0) {
        if (ComputerIsToMove(session)) {
            PlayComputerTurn(session);
            if (EndingSignal() != 0) {
                EndBySignal(EndingSignal(), session.Play);
            }
        } else if (PromptForLine(session, line)) {
            TypeLine(session, line);
        } else {
            KeepGame(session.Play);
            CloseGuiLink();
            return;
        }
    }
}
