#include "rules/notation.h"

#include <algorithm>

#include "rules/referee.h"
#include "support/output.h"

namespace {

bool AtLineEnd(std::string_view text) {
    return text.empty() || text.front() == '\n' || text.front() == '\0';
}

int SayIncomplete() {
    PrintRefusal("Error: Incomplete Input!\n");
    return 1;
}

// Reads one space from the front of `text` and steps past it. `role` names the space in the
// messages. Answers 0, or 1 after a message.
int ReadSpace(std::string_view& text, const char* role, Place& place) {
    if (AtLineEnd(text)) {
        return SayIncomplete();
    }
    // Character codes are 0 to 255; whatever lies above the capitals is taken for a small letter.
    int letter = static_cast<unsigned char>(text.front());
    if (letter > 96) {
        letter -= 32;
    }
    place.Column = letter - 'A';
    if (place.Column < 0 || place.Column >= GlobCfg.BoardXDim) {
        PrintRefusal("Error: Column letter ('%c') of %s is not valid! (Range: A-%c)\n", letter,
                     role, ColumnLetter(GlobCfg.BoardXDim - 1));
        return 1;
    }
    text.remove_prefix(1);
    if (AtLineEnd(text)) {
        return SayIncomplete();
    }
    const int digit = static_cast<unsigned char>(text.front());
    place.Row = GlobCfg.BoardYDim - (digit - '0');
    if (place.Row < 0 || place.Row >= GlobCfg.BoardYDim) {
        PrintRefusal("Error: Row number ('%c') of %s is not valid! (Range: 1-%c)\n", digit, role,
                     '0' + GlobCfg.BoardYDim);
        return 1;
    }
    text.remove_prefix(1);
    return 0;
}

void StepPast(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

}  // namespace

int RowNumber(int y) {
    return GlobCfg.BoardYDim - y;
}

std::string SpaceText(Place place) {
    return ColumnLetter(place.Column) + std::to_string(RowNumber(place.Row));
}

int GetPlayerMove(std::string_view line, Notation notation, Move& move, int& distance) {
    StepPast(line, " ");
    Place source;
    if (ReadSpace(line, "source tower", source) != 0) {
        return 1;
    }
    move.Column = source.Column;
    move.Row = source.Row;
    move.Kind = MOVE_SETUP;
    if (notation == Notation::Placement) {
        return 0;
    }
    move.Kind = MOVE_TOWER;
    StepPast(line, " -");
    Place target;
    if (ReadSpace(line, "target space", target) != 0) {
        return 1;
    }
    Way way;
    if (!FindWay(target.Column - source.Column, target.Row - source.Row, way)) {
        PrintRefusal("Error: Target space '%s' can not be reached by source tower '%s'!\n",
                     SpaceText(target).c_str(), SpaceText(source).c_str());
        return 1;
    }
    move.Direction = way.Direction;
    distance = way.Distance;
    return 0;
}

std::string GetMoveString(const Move& move, const Position& position) {
    const Place source = {move.Column, move.Row};
    if (position.SetupPhase != 0) {
        return SpaceText(source);
    }
    if (GetNumMoves(position) == 0) {
        return "PASS ";
    }
    return SpaceText(source) + "-" + SpaceText(MoveTarget(position, move));
}

void PrintScore(const Position& position) {
    int white = 0;
    int black = 0;
    if (GetScore(position, white, black)) {
        Print("The game has NOT ended yet (current score: %i:%i)\n", white, black);
        return;
    }
    const char* result = white > black ? "WHITE wins" : "BLACK wins";
    Print("The game ended %i:%i (%s)\n", white, black, white == black ? "standoff" : result);
}
