#include "rules/notation.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "rules/setup.h"

namespace {

struct Entered {
    int Result = 0;
    Move Read;
    int Distance = -77;
    std::string Said;
};

Entered Enter(std::string_view line, Notation notation) {
    Entered entered;
    entered.Said = StdoutOf(
        [&] { entered.Result = GetPlayerMove(line, notation, entered.Read, entered.Distance); });
    return entered;
}

struct Mistake {
    std::string_view Line;
    const char* Reason;
};

void CheckMistakes(Notation notation, std::initializer_list<Mistake> mistakes) {
    for (const Mistake& mistake : mistakes) {
        const Entered entered = Enter(mistake.Line, notation);
        EXPECT_EQ(entered.Said, std::string("Error: ") + mistake.Reason + "\n") << mistake.Line;
        EXPECT_EQ(entered.Result, 1);
    }
}

}  // namespace

TEST(Notation, ReadsOneMoveInManyForms) {
    UseBoard(11, 5);
    for (const char* line :
         {"e3-e4", "E3 E4", "e3e4", "e3 - -e4", "  E3---   e4 and more", "e3-e4\n", "e3-e45"}) {
        const Entered entered = Enter(line, Notation::TowerMove);
        EXPECT_EQ(entered.Result, 0);
        EXPECT_EQ(entered.Said, "");
        EXPECT_EQ(entered.Read, (Move{.Kind = MOVE_TOWER, .Column = 4, .Row = 2, .Direction = 4}))
            << line;
        EXPECT_EQ(entered.Distance, 1);
    }
}

TEST(Notation, ReadsOnlyTheFirstSpaceOfAPlacement) {
    UseBoard(11, 5);
    for (const char* line : {"a3", " A3", "a3-b3", "a3?"}) {
        const Entered entered = Enter(line, Notation::Placement);
        EXPECT_EQ(entered.Result, 0);
        EXPECT_EQ(entered.Read, (Move{.Kind = MOVE_SETUP, .Column = 0, .Row = 2})) << line;
        EXPECT_EQ(entered.Distance, -77);
    }
}

TEST(Notation, SaysWhatItDidNotUnderstand) {
    UseBoard(11, 5);
    CheckMistakes(
        Notation::TowerMove,
        {
            {"", "Incomplete Input!"},
            {"   ", "Incomplete Input!"},
            {"e", "Incomplete Input!"},
            {"e3", "Incomplete Input!"},
            {"e3 -", "Incomplete Input!"},
            {"e3-e", "Incomplete Input!"},
            {"e3\ne4", "Incomplete Input!"},
            {"pass", "Column letter ('P') of source tower is not valid! (Range: A-K)"},
            {"l3-e4", "Column letter ('L') of source tower is not valid! (Range: A-K)"},
            {"3e-e4", "Column letter ('3') of source tower is not valid! (Range: A-K)"},
            {"@3-e4", "Column letter ('@') of source tower is not valid! (Range: A-K)"},
            {"\t3-e4", "Column letter ('\t') of source tower is not valid! (Range: A-K)"},
            // Whatever lies above the capitals is moved down like a small letter, to its 256th
            // code.
            {"`3-e4", "Column letter ('`') of source tower is not valid! (Range: A-K)"},
            {"{3-e4", "Column letter ('[') of source tower is not valid! (Range: A-K)"},
            {"\xe1\x33", "Column letter ('\xc1') of source tower is not valid! (Range: A-K)"},
            {"e0-e1", "Row number ('0') of source tower is not valid! (Range: 1-5)"},
            {"e6-e1", "Row number ('6') of source tower is not valid! (Range: 1-5)"},
            {"e 3-e4", "Row number (' ') of source tower is not valid! (Range: 1-5)"},
            {"ee-e4", "Row number ('e') of source tower is not valid! (Range: 1-5)"},
            {"e3\xb3", "Column letter ('\x93') of target space is not valid! (Range: A-K)"},
            {"e3+e4", "Column letter ('+') of target space is not valid! (Range: A-K)"},
            {"e3-z4", "Column letter ('Z') of target space is not valid! (Range: A-K)"},
            {"e3-e9", "Row number ('9') of target space is not valid! (Range: 1-5)"},
            {"e3-e-4", "Row number ('-') of target space is not valid! (Range: 1-5)"},
            {"a1-c2", "Target space 'C2' can not be reached by source tower 'A1'!"},
            {"c3-c3", "Target space 'C3' can not be reached by source tower 'C3'!"},
            {"b2-c1", "Target space 'C1' can not be reached by source tower 'B2'!"},
        });
    CheckMistakes(Notation::Placement,
                  {{"", "Incomplete Input!"},
                   {"a", "Incomplete Input!"},
                   {"l1", "Column letter ('L') of source tower is not valid! (Range: A-K)"},
                   {"a6", "Row number ('6') of source tower is not valid! (Range: 1-5)"}});
}

TEST(Notation, KnowsTheSizeOfTheBoard) {
    UseBoard(15, 9);
    EXPECT_EQ(Enter("o9", Notation::Placement).Read, (Move{.Column = 14, .Row = 0}));
    CheckMistakes(Notation::Placement,
                  {{"p9", "Column letter ('P') of source tower is not valid! (Range: A-O)"},
                   {"o0", "Row number ('0') of source tower is not valid! (Range: 1-9)"}});
    UseBoard(11, 7);
    CheckMistakes(Notation::TowerMove,
                  {{"a7-c6", "Target space 'C6' can not be reached by source tower 'A7'!"}});
    UseBoard(1, 1);
    CheckMistakes(Notation::Placement,
                  {{"b1", "Column letter ('B') of source tower is not valid! (Range: A-A)"},
                   {"a2", "Row number ('2') of source tower is not valid! (Range: 1-1)"}});
}

// The position decides what a move looks like, not its kind.
TEST(Notation, WritesMovesByThePosition) {
    const BoardText board =
        ReadBoardText("write 7 3 white : - . . . . r .; w4 . . . b1 . .; . . . . b2 . -");
    UseBoard(board);
    const Move move = {.Kind = MOVE_PASS, .Column = 0, .Row = 1, .Direction = 0};
    EXPECT_EQ(GetMoveString(move, board.Board), "A2-E2");
    Position position = board.Board;
    position.Spaces[4][1] = SingleStone(EMPTY);
    EXPECT_EQ(GetMoveString(move, position), "PASS ");
    GenerateEmptyStartPosition(position);
    EXPECT_EQ(GetMoveString(move, position), "A2");
}

TEST(Notation, PrintsTheScore) {
    const auto score = [](const char* line) {
        const BoardText board = ReadBoardText(line);
        UseBoard(board);
        return StdoutOf([&board] { PrintScore(board.Board); });
    };
    EXPECT_EQ(score("s 5 1 white : w5 . . b2 ."), "The game ended 5:2 (WHITE wins)\n");
    EXPECT_EQ(score("s 5 1 white : w5 . . b11 ."), "The game ended 5:11 (BLACK wins)\n");
    EXPECT_EQ(score("s 5 1 white : w5 . . b5 ."), "The game ended 5:5 (standoff)\n");
    EXPECT_EQ(score("s 5 1 white : w5 . b1 b5 ."),
              "The game has NOT ended yet (current score: 5:6)\n");
}
