#include "control/setting_commands.h"

#include <optional>

#include "config/glob_cfg.h"
#include "control/help.h"
#include "display/gui_link.h"
#include "support/numbers.h"
#include "support/output.h"

namespace {

// What an argument asks of a setting, and what came of it.
enum class Request { Show, Set, Refused };

// Stores the number that the argument gives, brought into the range, in `setting`. An argument that
// is not a number is answered with the command's usage line, if it has one.
Request ReadSetting(CommandId id, const std::string& argument, int low, int high, int& setting) {
    if (argument.empty()) {
        return Request::Show;
    }
    const std::optional<int> number = ReadInt(argument);
    if (!number) {
        if (CommandList[id].ErrorPattern != nullptr) {
            PrintUsageError(id);
        }
        return Request::Refused;
    }
    setting = Max(low, Min(high, *number));
    return Request::Set;
}

// The texts of a setting that is on or off.
struct SwitchTexts {
    const char* IsOn;
    const char* IsOff;
    const char* TurnedOn;
    const char* TurnedOff;
};

void DoSwitch(CommandId id, const std::string& argument, const SwitchTexts& texts, int& setting) {
    switch (ReadSetting(id, argument, 0, 1, setting)) {
    case Request::Show: PrintText(setting != 0 ? texts.IsOn : texts.IsOff); return;
    case Request::Set: PrintText(setting != 0 ? texts.TurnedOn : texts.TurnedOff); return;
    case Request::Refused: return;
    }
}

void ShowColor(int computerSide) {
    switch (GlobCfg.NumHumanPlayers) {
    case 0: Print("The Computer is playing both colors.\n"); return;
    case 1:
        Print("You are playing the %s stones\n", computerSide == BLACK ? "WHITE" : "BLACK");
        return;
    case 2: Print("You are playing both colors,\n"); return;
    default: Print("Error: Illegal Default case reached! (ExecuteCommand, case COLORS)\n"); return;
    }
}

}  // namespace

void DoLifeStones(const std::string& argument) {
    int& stones = GlobCfg.NumLifeStones;
    switch (ReadSetting(COMMAND_LIFESTONES, argument, 1, INT_HIGHEST, stones)) {
    case Request::Show: Print("Number of Dvonn Stones is %i\n", stones); return;
    case Request::Set:
        Print("Number of Dvonn-stones set to %i\n", stones);
        Print("The new value will be used, when a new game is started.\n");
        return;
    case Request::Refused: return;
    }
}

void DoRandomSetup(const std::string& argument) {
    DoSwitch(COMMAND_RANDOMSETUP, argument,
             {"Random setup mode is enabled\n", "Random setup mode is disabled\n",
              "Random setup mode was switched on for the next games.\n",
              "Random setup mode was switched off for the next games.\n"},
             GlobCfg.SetupMode);
}

void DoLevel(const std::string& argument, Session& session) {
    int& level = GlobCfg.ComputerLevel;
    switch (ReadSetting(COMMAND_LEVEL, argument, 0, INT_HIGHEST, level)) {
    case Request::Show: Print("Current Level is %i.\n", level); return;
    case Request::Set:
        SetLevel(level, session.Weights);
        Print("The KI-playing level have been changed to %i.\n", level);
        session.Play.SearchDepth = 0;
        return;
    case Request::Refused: return;
    }
}

void DoPlayers(const std::string& argument) {
    int& players = GlobCfg.NumHumanPlayers;
    switch (ReadSetting(COMMAND_PLAYERS, argument, 0, 2, players)) {
    case Request::Show: Print("Number of human players is %i.\n", players); return;
    case Request::Set:
        Print("The number of human players have been changed to %i.\n", players);
        return;
    case Request::Refused: return;
    }
}

void DoColor(const std::string& argument, PlayState& state) {
    switch (argument.empty() ? '\0' : argument.front()) {
    case '\0': ShowColor(state.ComputerSide); return;
    case 'w':
    case 'W':
        GlobCfg.ComputerColor = BLACK;
        state.ComputerSide = BLACK;
        Print("Your playing color was set to WHITE.\n");
        return;
    case 'b':
    case 'B':
        GlobCfg.ComputerColor = WHITE;
        state.ComputerSide = WHITE;
        Print("Your playing color was set to BLACK.\n");
        return;
    case 'r':
    case 'R':
        GlobCfg.ComputerColor = RANDOM_COLOR;
        Print("Your playing color will be determined randomly in the next game.\n");
        return;
    default: PrintUsageError(COMMAND_COLOR); return;
    }
}

void DoStatus(const std::string& argument) {
    DoSwitch(COMMAND_STATUS, argument,
             {"Status display is enabled.\n", "Status display is disabled.\n",
              "Status display ENABLED\n", "Status display DISABLED\n"},
             GlobCfg.PrintStatusFlag);
}

void DoHighlighting(const std::string& argument) {
    DoSwitch(COMMAND_HIGHLIGHTING, argument,
             {"Move highlighting in GUI is enabled.\n", "Move highlighting in GUI is disabled.\n",
              "Move highlighting in GUI ENABLED\n", "Move highlighting in GUI DISABLED\n"},
             GlobCfg.GuiHighlighting);
}

void DoGui(const std::string& argument) {
    int wanted = 0;
    switch (ReadSetting(COMMAND_GUI, argument, 0, 1, wanted)) {
    case Request::Show:
        Print("GUI usage is %s.\n", GlobCfg.Gui != 0 ? "enabled" : "disabled");
        return;
    case Request::Refused: return;
    case Request::Set: break;
    }
    if (wanted == 0) {
        Print(CloseGuiLink() ? "GUI usage was disabled!\n" : "GUI usage is already disabled!\n");
    } else if (GlobCfg.Gui != 0) {
        Print("GUI usage is already enabled!\n");
    } else {
        Print("trying to enable GUI...\n");
        OpenGuiLink();
    }
}

void PrintAbout() {
    Print("\nTalurex v%s (%s):\n"
          "Written by the Talurex developers.\n"
          "Builds for other operating systems are the work of those who care for them.\n"
          "This program allows you to play Dvonn against your computer.\n"
          "Dvonn is a board game for two players; the credit for it belongs to its designer.\n"
          "\nIf you have questions, suggestions, feature requests etc.\n"
          "feel free to send me a mail.\n"
          "\nHave fun with Talurex :-)\n"
          "\n    The Talurex developers\n\n",
          TALUREX_VERSION, TALUREX_VERSION_DATE);
}
