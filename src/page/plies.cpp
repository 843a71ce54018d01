#include "page/plies.h"

#include <vector>

#include "page/page_state.h"
#include "rules/notation.h"

namespace {

using nlohmann::ordered_json;

bool SameMove(const Move& a, const Move& b) {
    return a.Column == b.Column && a.Row == b.Row && a.Direction == b.Direction;
}

bool SamePicture(const Position& a, const Position& b) {
    return a.Spaces == b.Spaces && a.ActivePlayer == b.ActivePlayer && a.SetupPhase == b.SetupPhase;
}

// The stones on the board, one number a space in the order of the page's spaces.
ordered_json StonesOf(const Position& position) {
    ordered_json stones = ordered_json::array();
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& space = position.Spaces[x][y];
            stones.push_back(space.Height * 8 + space.Life * 4 + space.Owner);
        }
    }
    return stones;
}

int CountStones(const Position& position) {
    int stones = 0;
    for (const auto& column : position.Spaces) {
        for (const Space& space : column) {
            stones += space.Height;
        }
    }
    return stones;
}

// The spaces whose towers died by the step.
std::vector<Place> RemovedBy(const Position& before, const Position& after, Place source) {
    std::vector<Place> removed;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (before.Spaces[x][y].Owner != EMPTY && after.Spaces[x][y].Owner == EMPTY &&
                (x != source.Column || y != source.Row)) {
                removed.push_back({x, y});
            }
        }
    }
    return removed;
}

// The step as it is written in a saved game.
std::string WrittenStep(const FromTo& step) {
    if (!IsSomewhere(step.Target)) {
        return "PASS";
    }
    const std::string target = SpaceText(step.Target);
    return IsSomewhere(step.Source) ? SpaceText(step.Source) + '-' + target : target;
}

// The step in words, for those who do not see the board.
std::string SpokenStep(const Position& before, const Position& after, const FromTo& step,
                       std::size_t numRemoved) {
    const std::string side = SideTitle(before.ActivePlayer);
    if (!IsSomewhere(step.Target)) {
        return side + " passes";
    }
    const std::string target = SpaceText(step.Target);
    const Space& tower = after.Spaces[step.Target.Column][step.Target.Row];
    if (!IsSomewhere(step.Source)) {
        return side + " places a " + (tower.Owner == LIFE ? "life " : "") + "stone on " + target;
    }
    std::string text = side + " " + SpaceText(step.Source) + " to " + target;
    if (tower.Height > 0) {
        text += ", tower of " + std::to_string(tower.Height);
    }
    return numRemoved == 0 ? text : text + ", " + std::to_string(numRemoved) + " removed";
}

// What ply `n` moved.
FromTo StepOfPly(const GameRecord& record, int n) {
    const Position& before = record.PositionList[n - 1];
    return before.SetupPhase == 0 && GetNumMoves(before) == 0 ? FromTo{} : LastStep(record, n);
}

}  // namespace

int FirstNewPly(const GameRecord& known, const GameRecord& record) {
    int n = 0;
    while (n <= record.LastMove && n <= known.LastMove &&
           SamePicture(known.PositionList[n], record.PositionList[n]) &&
           (n == 0 || SameMove(known.MoveList[n - 1], record.MoveList[n - 1]))) {
        ++n;
    }
    return n;
}

std::string PictureText(const Position& position) {
    return JsonText({{"stones", StonesOf(position)}});
}

std::string PlyText(const GameRecord& record, int n) {
    const Position& position = record.PositionList[n];
    if (n == 0) {
        return PictureText(position);
    }
    const Position& before = record.PositionList[n - 1];
    return PlyTextOf(before, position, StepOfPly(record, n));
}

std::string PlyTextOf(const Position& before, const Position& after, const FromTo& step) {
    const std::vector<Place> removed = RemovedBy(before, after, step.Source);
    ordered_json ply;
    ply["text"] = WrittenStep(step);
    ply["side"] = ColorName(before.ActivePlayer);
    ply["say"] = SpokenStep(before, after, step, removed.size());
    ply["source"] = NameOrNull(step.Source);
    ply["target"] = NameOrNull(step.Target);
    ply["removed"] = ordered_json::array();
    for (const Place place : removed) {
        ply["removed"].push_back(SpaceText(place));
    }
    const bool isPlacement = IsSomewhere(step.Target) && !IsSomewhere(step.Source);
    ply["cut"] = isPlacement ? 0 : CountStones(before) - CountStones(after);
    ply["stones"] = StonesOf(after);
    return JsonText(ply);
}
