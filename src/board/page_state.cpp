#include "board/page_state.h"

#include <array>
#include <vector>

#include <nlohmann/json.hpp>

#include "rules/moves.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"

namespace {

using nlohmann::ordered_json;

constexpr std::array COLOR_NAMES = {"white", "black", "life", "empty"};
constexpr std::array COLOR_TITLES = {"White", "Black"};

std::string Dump(const ordered_json& value) {
    // What Talurex prints need not be UTF-8: file names, for one.
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

// What may be done in a picture, and by whom.
struct Choices {
    bool Over = false;
    bool MustPass = false;
    bool MayAct = false;
    int Placing = EMPTY;  // the stone that can be placed
    // Indexed [column][row]: where the tower there can go.
    std::array<std::array<std::vector<Place>, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM> Targets;
};

Choices FindChoices(const PageInput& input) {
    const Position& position = input.View.Shown.Board;
    Choices choices;
    choices.Over = IsEndPosition(position);
    choices.MayAct = input.State == PlayState::Waiting && !input.Watching && !choices.Over &&
                     input.View.Drawn.has_value();
    if (position.SetupPhase != 0) {
        if (choices.MayAct) {
            choices.Placing =
                position.SetupPhase > 1 ? static_cast<int>(LIFE) : position.ActivePlayer;
        }
        return choices;
    }
    MoveArray moves;
    const int count = GetPossibleMoves(position, moves);
    choices.MustPass = count == 0 && !choices.Over;
    for (int i = 0; i < count && choices.MayAct; ++i) {
        choices.Targets[moves[i].Column][moves[i].Row].push_back(MoveTarget(position, moves[i]));
    }
    return choices;
}

std::string LabelOf(Place place, const Space& space, const Choices& choices, bool canMove) {
    std::string label = SpaceText(place) + ", ";
    if (space.Owner == EMPTY) {
        label += "empty";
        return choices.Placing != EMPTY ? label + ", a stone can be placed" : label;
    }
    if (space.Owner == LIFE) {
        return label + "life stone";
    }
    label += std::string(COLOR_NAMES[space.Owner]) + " tower of " + std::to_string(space.Height);
    label += space.Life != 0 ? " with a life stone" : "";
    return canMove ? label + ", can move" : label;
}

ordered_json SpaceState(Place place, const Position& position, const Choices& choices) {
    const Space& space = position.Spaces[place.Column][place.Row];
    const auto& targets = choices.Targets[place.Column][place.Row];
    ordered_json state;
    state["space"] = SpaceText(place);
    state["x"] = place.Column;
    state["y"] = place.Row;
    state["height"] = space.Height;
    state["owner"] = COLOR_NAMES[space.Owner];
    state["life"] = space.Life;
    state["label"] = LabelOf(place, space, choices, !targets.empty());
    ordered_json names = ordered_json::array();
    for (const Place target : targets) {
        names.push_back(SpaceText(target));
    }
    state["targets"] = names;
    if (space.Owner == EMPTY && choices.Placing != EMPTY) {
        state["place"] = true;
    }
    return state;
}

ordered_json SpaceStates(const Picture& shown, const Choices& choices) {
    ordered_json states = ordered_json::array();
    for (int y = 0; y < shown.Rows; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            states.push_back(SpaceState({x, y}, shown.Board, choices));
        }
    }
    return states;
}

ordered_json NameOrNull(Place place) {
    return IsOnBoard(place.Column, place.Row) ? ordered_json(SpaceText(place)) : ordered_json();
}

ordered_json FromToState(const FromTo& step) {
    if (!IsOnBoard(step.Target.Column, step.Target.Row)) {
        return nullptr;
    }
    return {{"source", NameOrNull(step.Source)}, {"target", NameOrNull(step.Target)}};
}

ordered_json StepState(const PlyStep& step) {
    if (step.Pass) {
        return nullptr;
    }
    ordered_json state = FromToState(step.Made);
    state["removed"] = ordered_json::array();
    for (const Place place : step.Removed) {
        state["removed"].push_back(SpaceText(place));
    }
    return state;
}

std::string SideTitle(int side) {
    return COLOR_TITLES[side == BLACK ? 1 : 0];
}

std::string ScoreText(int white, int black) {
    const std::string score = std::to_string(white) + " : " + std::to_string(black);
    if (white == black) {
        return "The game ended " + score + ", a draw";
    }
    return SideTitle(white > black ? WHITE : BLACK) + " wins " + score;
}

// What the side to move is to do.
std::string TaskText(const Position& position, const Choices& choices) {
    const std::string side = SideTitle(position.ActivePlayer);
    if (position.SetupPhase != 0) {
        return side + (position.SetupPhase > 1 ? " places a life stone" : " places a stone");
    }
    return side + (choices.MustPass ? " must pass" : " to move");
}

std::string StatusText(const PageInput& input, const Choices& choices, int white, int black) {
    const Position& position = input.View.Shown.Board;
    if (input.Watching && !input.View.Connected) {
        return "Waiting for a Talurex";
    }
    if (input.State == PlayState::Ended) {
        return "Talurex has ended";
    }
    if (choices.Over) {
        return ScoreText(white, black);
    }
    std::string task = TaskText(position, choices);
    if (input.Watching) {
        return task;
    }
    if (input.State == PlayState::Thinking) {
        return task + " \u2013 Talurex is thinking";
    }
    return input.View.Running ? task : "Stopped \u2013 " + task;
}

// What has just happened, in words. The number makes it differ from the text before.
std::string Announcement(const Picture& before, const Picture& shown,
                         const std::optional<PlyStep>& step) {
    const std::string number = "Move " + std::to_string(shown.Move);
    if (!step) {
        const bool same = SameStones(before, shown) && before.Move == shown.Move &&
                          before.LastMove == shown.LastMove;
        return same ? "" : number + " of " + std::to_string(shown.LastMove) + " is shown";
    }
    const std::string side = SideTitle(before.Board.ActivePlayer);
    if (step->Pass) {
        return number + ": " + side + " passes";
    }
    const Place place = step->Made.Target;
    const Space& target = shown.Board.Spaces[place.Column][place.Row];
    if (!IsSomewhere(step->Made.Source)) {
        return number + ": " + side + " places a " + (target.Owner == LIFE ? "life " : "") +
               "stone on " + SpaceText(place);
    }
    std::string text = number + ": " + side + " " + SpaceText(step->Made.Source) + " to " +
                       SpaceText(place) + ", tower of " + std::to_string(target.Height);
    if (!step->Removed.empty()) {
        text += ", " + std::to_string(step->Removed.size()) + " removed";
    }
    return text;
}

ordered_json Buttons(const PageInput& input, const Choices& choices) {
    const Picture& shown = input.View.Shown;
    const bool usable = !input.Watching && input.State != PlayState::Ended;
    const bool waiting = usable && input.State == PlayState::Waiting;
    const bool atEnd = shown.Move == shown.LastMove;
    const Picture& end = input.View.End;
    const bool isOver = end.LastMove == shown.LastMove && IsEndPosition(end.Board);
    ordered_json buttons;
    buttons["new"] = usable;
    buttons["undo"] = waiting && shown.Move >= 2;
    buttons["back"] = waiting && shown.Move > 0;
    buttons["forward"] = waiting && !atEnd;
    buttons["first"] = waiting && shown.Move > 0;
    buttons["last"] = waiting && !atEnd;
    buttons["continue"] = waiting && !input.View.Running && !isOver;
    buttons["pass"] = waiting && choices.MustPass;
    buttons["evaluate"] = waiting && !choices.Over;
    buttons["save"] = usable;
    buttons["load"] = usable;
    buttons["movenow"] = usable && !waiting;
    return buttons;
}

ordered_json SettingsState(const PageInput& input) {
    const GameSettings& settings = input.View.Settings;
    ordered_json state;
    state["level"] = settings.Level;
    state["players"] = settings.Players;
    state["color"] = settings.ComputerColor == RANDOM_COLOR
                         ? "random"
                         : COLOR_NAMES[settings.ComputerColor == WHITE ? BLACK : WHITE];
    state["side"] = COLOR_NAMES[input.View.ComputerSide == WHITE ? BLACK : WHITE];
    state["randomsetup"] = settings.RandomSetup;
    state["lifestones"] = settings.LifeStones;
    state["columns"] = input.View.Shown.Columns;
    state["rows"] = input.View.Shown.Rows;
    return state;
}

bool IsEmptied(const Picture& before, const Picture& after, Place place) {
    return before.Board.Spaces[place.Column][place.Row].Owner != EMPTY &&
           after.Board.Spaces[place.Column][place.Row].Owner == EMPTY;
}

PlyStep TowerStep(const Picture& before, const Picture& after, const Move& move) {
    PlyStep step;
    step.Made = {{move.Column, move.Row}, MoveTarget(before.Board, move)};
    for (int y = 0; y < before.Rows; ++y) {
        for (int x = 0; x < before.Columns; ++x) {
            if ((x != move.Column || y != move.Row) && IsEmptied(before, after, {x, y})) {
                step.Removed.push_back({x, y});
            }
        }
    }
    return step;
}

std::optional<PlyStep> FindTowerStep(const Picture& before, const Picture& after) {
    MoveArray moves;
    const int count = GetPossibleMoves(before.Board, moves);
    if (count == 0 && SameStones(before, after)) {
        return PlyStep{.Pass = true, .Made = {}, .Removed = {}};
    }
    Picture child = before;
    for (int i = 0; i < count; ++i) {
        if (!IsEmptied(before, after, {moves[i].Column, moves[i].Row})) {
            continue;
        }
        DoMove(before.Board, moves[i], child.Board);
        if (SameStones(child, after)) {
            return TowerStep(before, after, moves[i]);
        }
    }
    return {};
}

std::optional<PlyStep> FindPlacement(const Picture& before, const Picture& after) {
    Picture child = before;
    Place placed = {-1, -1};
    for (int y = 0; y < before.Rows; ++y) {
        for (int x = 0; x < before.Columns; ++x) {
            if (IsEmptied(after, before, {x, y})) {
                placed = {x, y};
            }
        }
    }
    if (!IsSomewhere(placed)) {
        return {};
    }
    Space& space = child.Board.Spaces[placed.Column][placed.Row];
    space = after.Board.Spaces[placed.Column][placed.Row];
    if (space.Height != 1 || !SameStones(child, after)) {
        return {};
    }
    return PlyStep{.Pass = false, .Made = {{-1, -1}, placed}, .Removed = {}};
}

}  // namespace

std::optional<PlyStep> FindStep(const Picture& before, const Picture& after) {
    if (before.Columns != after.Columns || before.Rows != after.Rows ||
        after.Move != before.Move + 1) {
        return {};
    }
    UseBoardOf(before);
    return before.Board.SetupPhase != 0 ? FindPlacement(before, after)
                                        : FindTowerStep(before, after);
}

std::string StateMessage(const PageInput& input, const Picture* before, int serial) {
    const Picture& shown = input.View.Shown;
    std::optional<PlyStep> step;
    if (before != nullptr) {
        step = FindStep(*before, shown);
    }
    UseBoardOf(shown);
    const Choices choices = FindChoices(input);
    int white = 0;
    int black = 0;
    GetScore(shown.Board, white, black);

    ordered_json state;
    state["type"] = "state";
    state["serial"] = serial;
    constexpr std::array STATES = {"waiting", "thinking", "ended"};
    state["state"] = STATES[static_cast<std::size_t>(input.State)];
    state["watching"] = input.Watching;
    state["connected"] = input.View.Connected;
    state["columns"] = shown.Columns;
    state["rows"] = shown.Rows;
    state["spaces"] = SpaceStates(shown, choices);
    state["placing"] =
        choices.Placing == EMPTY ? ordered_json() : ordered_json(COLOR_NAMES[choices.Placing]);
    state["toMove"] = COLOR_NAMES[shown.Board.ActivePlayer];
    state["mustPass"] = choices.MustPass;
    state["running"] = input.View.Running;
    state["gameOver"] = choices.Over;
    state["last"] = FromToState(shown.Last);
    state["next"] = FromToState(shown.Next);
    state["step"] = step ? StepState(*step) : ordered_json();
    state["move"] = shown.Move;
    state["lastMove"] = shown.LastMove;
    state["score"] = {{"white", white}, {"black", black}};
    state["status"] = StatusText(input, choices, white, black);
    state["announce"] = before != nullptr ? Announcement(*before, shown, step) : "";
    state["buttons"] = Buttons(input, choices);
    state["settings"] = SettingsState(input);
    if (input.State == PlayState::Ended) {
        state["exitStatus"] = input.ExitStatus;
        state["message"] = input.LastWords;
    }
    return Dump(state);
}

std::string LogMessage(const std::string& text, bool reset) {
    return Dump({{"type", "log"}, {"text", text}, {"reset", reset}});
}

std::string ErrorMessage(const std::string& text) {
    return Dump({{"type", "error"}, {"text", text}});
}
