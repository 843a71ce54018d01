#include "display/gui_update.h"

#include "display/highlight.h"
#include "rules/referee.h"
#include "rules/setup.h"
#include "support/output.h"

namespace {

std::string PlaceText(Place place) {
    return ' ' + std::to_string(place.Column) + ' ' + std::to_string(place.Row);
}

std::string StepLine(char kind, const FromTo& step) {
    return kind + PlaceText(step.Source) + PlaceText(step.Target) + '\n';
}

std::string HighlightLines(const GameRecord& record, int n) {
    const bool highlighting = GlobCfg.GuiHighlighting != 0 && n != 0;
    if (highlighting && n == 1 && GetNumMoves(record.PositionList[0]) == 0) {
        Print("GUIPrintPosition: Bad logical error, Bug in program!\n");
    }
    return StepLine('L', highlighting ? LastStep(record, n) : FromTo{}) +
           StepLine('N', highlighting ? NextStep(record, n) : FromTo{});
}

// Lets the display move the tower of the last move, unless the step was a placement or a pass. The
// mirrored target grows with it, so that it is not told again as a changed space.
std::string AnimationLine(Position& mirrored, const GameRecord& record, int n) {
    const Position& before = record.PositionList[n - 1];
    if (before.SetupPhase != 0 || GetNumMoves(before) == 0) {
        return "";
    }
    const Move& move = record.MoveList[n - 1];
    const Place target = MoveTarget(mirrored, move);
    // The display may show another game than this one, whose tower reaches beyond the board.
    if (target.Column >= 0 && target.Column < MAX_BOARD_X_DIM && target.Row >= 0 &&
        target.Row < MAX_BOARD_Y_DIM) {
        mirrored.Spaces[target.Column][target.Row].Height +=
            mirrored.Spaces[move.Column][move.Row].Height;
    }
    return StepLine('M', {{move.Column, move.Row}, target});
}

// One step forward changes a space only together with its height; any other step tells all spaces.
std::string SpaceLines(const Position& mirrored, const Position& position, bool oneStep) {
    std::string text;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            const Space& space = position.Spaces[x][y];
            if (oneStep && space.Height == mirrored.Spaces[x][y].Height) {
                continue;
            }
            text += 'S' + PlaceText({x, y}) + ' ' + std::to_string(space.Height) + ' ' +
                    std::to_string(space.Owner) + ' ' + std::to_string(space.Life) + '\n';
        }
    }
    return text;
}

std::string StateText(const Position& position) {
    int white = 0;
    int black = 0;
    if (!GetScore(position, white, black)) {
        return "Game finished!  SCORE: " + std::to_string(white) + ':' + std::to_string(black);
    }
    return position.ActivePlayer == BLACK ? "BLACK is moving" : "WHITE is moving";
}

std::string StatusLine(const GameRecord& record, int n) {
    return "TMove (" + std::to_string(n) + '/' + std::to_string(record.LastMove) + ") " +
           StateText(record.PositionList[n]) + '\n';
}

}  // namespace

std::string UpdateText(GuiMirror& mirror, const GameRecord& record, int moveNumber) {
    std::string text;
    if (!mirror.Started) {
        mirror.Started = true;
        GenerateEmptyStartPosition(mirror.LastPosition);
        text = "C\n";
    }
    text += HighlightLines(record, moveNumber);
    const bool oneStep = moveNumber == mirror.LastMoveNr + 1;
    if (oneStep) {
        text += AnimationLine(mirror.LastPosition, record, moveNumber);
    }
    const Position& position = record.PositionList[moveNumber];
    if (!SamePosition(mirror.LastPosition, position)) {
        text += SpaceLines(mirror.LastPosition, position, oneStep);
    }
    mirror.LastPosition = position;
    mirror.LastMoveNr = moveNumber;
    return text + StatusLine(record, moveNumber) + "D\n";
}
