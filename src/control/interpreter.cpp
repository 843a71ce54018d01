#include "control/interpreter.h"

#include "control/file_commands.h"
#include "control/game_commands.h"
#include "control/help.h"
#include "control/setting_commands.h"
#include "support/fatal.h"
#include "support/output.h"

void ExecuteCommand(CommandId id, const std::string& argument, Session& session) {
    PlayState& state = session.Play;
    switch (id) {
    case COMMAND_NONE: return;
    case COMMAND_LOAD: return DoLoad(argument, state);
    case COMMAND_SAVE: return DoSave(argument, state);
    case COMMAND_REDRAW: return ShowPosition(state);
    case COMMAND_UNDO: return DoUndo(state);
    case COMMAND_BACK: return DoBack(argument, state);
    case COMMAND_FORWARD: return DoForward(argument, state);
    case COMMAND_START: return DoStart(state);
    case COMMAND_STOP: return DoStop();
    case COMMAND_CONT: return DoCont(state);
    case COMMAND_NEW: return DoNew(state);
    case COMMAND_BOARDSIZE: return DoBoardSize(argument, state);
    case COMMAND_LIFESTONES: return DoLifeStones(argument);
    case COMMAND_LEVEL: return DoLevel(argument, session);
    case COMMAND_PLAYERS: return DoPlayers(argument);
    case COMMAND_COLOR: return DoColor(argument, state);
    case COMMAND_RANDOMSETUP: return DoRandomSetup(argument);
    case COMMAND_IMPORT: return DoImport(argument, state);
    case COMMAND_EVALUATE: return DoEvaluate(argument, session);
    case COMMAND_MOVE: return DoMoveCommand(argument, state);
    case COMMAND_ANALYZE:
        PrintRefusal("I am sorry! Not yet implemented! Please check next version.\n");
        return;
    case COMMAND_STATUS: return DoStatus(argument);
    case COMMAND_HELP: return PrintHelp(argument);
    case COMMAND_QUIT: return DoQuit(state);
    case COMMAND_GUI: return DoGui(argument);
    case COMMAND_HIGHLIGHTING: return DoHighlighting(argument);
    case COMMAND_ABOUT: return PrintAbout();
    case UNKNOWN_COMMAND: PrintRefusal("unknown command! (Try /help for help)\n"); return;
    }
    ErrorExit("ExecuteCommand: Illegal default case reached! (bug in calling routine)\n");
}
