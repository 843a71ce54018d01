#include "page/page_state.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "page/buttons.h"
#include "rules/moves.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "rules/setup.h"

using nlohmann::ordered_json;

namespace {

// What may be done in the shown position.
struct Choices {
    bool Over = false;
    bool MustPass = false;
    bool MayAct = false;
    int Placing = EMPTY;  // the stone that can be placed
    // Indexed [column][row]: where the tower there can go.
    std::array<std::array<std::vector<Place>, MAX_BOARD_Y_DIM>, MAX_BOARD_X_DIM> Targets;
};

Choices FindChoices(const PageView& view) {
    const Position& position = view.Shown;
    Choices choices;
    choices.Over = IsEndPosition(position);
    choices.MayAct = view.State == GameState::Waiting && !view.Watching && !choices.Over;
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
    label += std::string(ColorName(space.Owner)) + " tower of " + std::to_string(space.Height);
    label += space.Life != 0 ? " with a life stone" : "";
    return canMove ? label + ", can move" : label;
}

// Why nothing can be done with a space in the move phase; empty where that is plain to see.
std::string ReasonAt(Place place, const Position& position) {
    const Space& space = position.Spaces[place.Column][place.Row];
    if (space.Owner == EMPTY) {
        return "";
    }
    if (space.Owner == LIFE) {
        return "A life stone by itself does not move.";
    }
    if (space.Owner != position.ActivePlayer) {
        return "This tower is " + SideTitle(space.Owner) + "'s.";
    }
    return IsFree(position, place.Column, place.Row)
               ? "There is no tower at the distance of its height."
               : "It is surrounded on all six sides.";
}

ordered_json SpaceState(Place place, const Position& position, const Choices& choices) {
    const Space& space = position.Spaces[place.Column][place.Row];
    const auto& targets = choices.Targets[place.Column][place.Row];
    ordered_json state;
    state["space"] = SpaceText(place);
    state["x"] = place.Column;
    state["y"] = place.Row;
    state["height"] = space.Height;
    state["owner"] = ColorName(space.Owner);
    state["life"] = space.Life;
    state["label"] = LabelOf(place, space, choices, !targets.empty());
    ordered_json names = ordered_json::array();
    for (const Place target : targets) {
        names.push_back(SpaceText(target));
    }
    state["targets"] = names;
    if (choices.MayAct && position.SetupPhase == 0 && targets.empty()) {
        if (std::string reason = ReasonAt(place, position); !reason.empty()) {
            state["why"] = std::move(reason);
        }
    }
    if (space.Owner == EMPTY && choices.Placing != EMPTY) {
        state["place"] = true;
    }
    return state;
}

ordered_json SpaceStates(const Position& position, const Choices& choices) {
    ordered_json states = ordered_json::array();
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            states.push_back(SpaceState({x, y}, position, choices));
        }
    }
    return states;
}

ordered_json FromToState(const FromTo& step) {
    if (!IsOnBoard(step.Target.Column, step.Target.Row)) {
        return nullptr;
    }
    return {{"source", NameOrNull(step.Source)}, {"target", NameOrNull(step.Target)}};
}

std::string ScoreText(int white, int black) {
    const auto [less, more] = std::minmax(white, black);
    const std::string score = std::to_string(more) + " : " + std::to_string(less);
    return white == black ? "The game ended " + score + ", a draw"
                          : SideTitle(white > black ? WHITE : BLACK) + " wins " + score;
}

// What the side to move is to do.
std::string TaskText(const Position& position, const Choices& choices) {
    const std::string side = SideTitle(position.ActivePlayer);
    if (position.SetupPhase != 0) {
        return side + (position.SetupPhase > 1 ? " places a life stone" : " places a stone");
    }
    return side + (choices.MustPass ? " must pass" : " to move");
}

std::string StatusText(const PageView& view, const Choices& choices, int white, int black) {
    if (view.Watching && !view.Connected) {
        return "Waiting for a Talurex";
    }
    if (view.State == GameState::Ended) {
        return "Talurex has ended";
    }
    if (choices.Over) {
        return ScoreText(white, black);
    }
    std::string task = TaskText(view.Shown, choices);
    if (view.Watching) {
        return task;
    }
    if (view.State == GameState::Thinking) {
        return task +
               (view.IsEvaluating ? " \u2013 Talurex evaluates" : " \u2013 Talurex is thinking");
    }
    return view.Running ? task : "Stopped \u2013 " + task;
}

// What of the needs of buttons is there.
unsigned NeedsMet(const PageView& view, const Choices& choices) {
    unsigned met = view.State == GameState::Waiting ? NEED_LINE : NEED_THOUGHT;
    const auto add = [&](bool holds, ButtonNeed need) { met |= holds ? need : NEED_NOTHING; };
    add(view.CanUndo, NEED_CHOICE);
    add(!view.Running, NEED_STOPPED);
    add(choices.MustPass, NEED_PASS);
    add(!choices.Over, NEED_OPEN);
    add(view.Shown.SetupPhase != 0, NEED_SETUP);
    add(view.FoundMove >= 0, NEED_FOUND);
    add(view.CanTakeBack, NEED_REPLACED);
    return met;
}

ordered_json ButtonStates(const PageView& view, const Choices& choices) {
    const bool isPlayed = !view.Watching && view.State != GameState::Ended;
    const unsigned met = NeedsMet(view, choices);
    ordered_json states;
    for (const PageButton& button : PAGE_BUTTONS) {
        states[std::string(button.Name)] = isPlayed && (button.Needs & ~met) == 0;
    }
    return states;
}

ordered_json SettingsState(const PageView& view) {
    ordered_json state;
    state["level"] = GlobCfg.ComputerLevel;
    state["players"] = GlobCfg.NumHumanPlayers;
    state["color"] = GlobCfg.ComputerColor == RANDOM_COLOR
                         ? "random"
                         : ColorName(OtherColor(GlobCfg.ComputerColor));
    state["side"] = ColorName(OtherColor(view.ComputerSide));
    state["randomsetup"] = GlobCfg.SetupMode;
    state["lifestones"] = GlobCfg.NumLifeStones;
    state["columns"] = GlobCfg.BoardXDim;
    state["rows"] = GlobCfg.BoardYDim;
    return state;
}

}  // namespace

PageView ViewOf(const PlayState& play, GameState state) {
    const GameRecord& record = play.Record;
    PageView view;
    view.Shown = ShownPosition(play);
    view.Move = play.CurrentMove;
    view.LastMove = record.LastMove;
    if (GlobCfg.GuiHighlighting != 0 && view.Move > 0) {
        view.Last = LastStep(record, view.Move);
        view.Next = NextStep(record, view.Move);
    }
    view.Running = GlobCfg.GameRunFlag == 1;
    view.ComputerSide = play.ComputerSide;
    view.State = state;
    return view;
}

std::string StateMessage(const PageView& view) {
    const Choices choices = FindChoices(view);
    int white = 0;
    int black = 0;
    GetScore(view.Shown, white, black);

    ordered_json state;
    state["type"] = "state";
    constexpr std::array STATES = {"waiting", "thinking", "ended"};
    state["state"] = STATES[static_cast<std::size_t>(view.State)];
    state["evaluating"] = view.IsEvaluating;
    state["watching"] = view.Watching;
    state["connected"] = view.Connected;
    state["columns"] = GlobCfg.BoardXDim;
    state["rows"] = GlobCfg.BoardYDim;
    state["spaces"] = SpaceStates(view.Shown, choices);
    state["placing"] =
        choices.Placing == EMPTY ? ordered_json() : ordered_json(ColorName(choices.Placing));
    state["toMove"] = ColorName(view.Shown.ActivePlayer);
    state["mustPass"] = choices.MustPass;
    state["running"] = view.Running;
    state["gameOver"] = choices.Over;
    state["last"] = FromToState(view.Last);
    state["next"] = FromToState(view.Next);
    state["move"] = view.Move;
    state["lastMove"] = view.LastMove;
    state["score"] = {{"white", white}, {"black", black}};
    state["status"] = StatusText(view, choices, white, black);
    state["resume"] = view.FoundMove < 0 ? ordered_json() : ordered_json(view.FoundMove);
    state["buttons"] = ButtonStates(view, choices);
    state["settings"] = SettingsState(view);
    if (view.State == GameState::Ended) {
        state["exitStatus"] = view.ExitStatus;
        state["message"] = view.LastWords;
    }
    return JsonText(state);
}

std::string PliesMessage(int first, std::span<const std::string> plies) {
    std::string message = R"({"type":"plies","first":)" + std::to_string(first) + R"(,"plies":[)";
    for (std::size_t i = 0; i < plies.size(); ++i) {
        message += (i == 0 ? "" : ",") + plies[i];
    }
    return message + "]}";
}

std::string LogMessage(const std::string& text, bool reset) {
    return JsonText({{"type", "log"}, {"text", text}, {"reset", reset}});
}

std::string ErrorMessage(const std::string& text) {
    return JsonText({{"type", "error"}, {"text", text}});
}

std::string AskMessage(const char* what, const std::string& fileName) {
    return JsonText({{"type", "ask"}, {"what", what}, {"name", fileName}});
}

std::string GamesMessage(std::span<const StoredGame> games) {
    ordered_json list = ordered_json::array();
    for (const StoredGame& game : games) {
        list.push_back({{"name", game.Name},
                        {"written", game.Written},
                        {"columns", game.Columns},
                        {"rows", game.Rows},
                        {"plies", game.NumPlies},
                        {"over", game.IsOver},
                        {"white", game.White},
                        {"black", game.Black}});
    }
    return JsonText({{"type", "games"}, {"games", list}});
}

std::string FileMessage(const std::string& content) {
    return JsonText({{"type", "file"}, {"content", content}});
}

std::string JsonText(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

const char* ColorName(int color) {
    constexpr std::array COLOR_NAMES = {"white", "black", "life", "empty"};
    return COLOR_NAMES[color];
}

std::string SideTitle(int side) {
    return side == BLACK ? "Black" : "White";
}

ordered_json NameOrNull(Place place) {
    return IsOnBoard(place.Column, place.Row) ? ordered_json(SpaceText(place)) : ordered_json();
}
