// What pages are told of a game, against the game itself and the rules: over random games on boards
// of many sizes.
#include "page/page_state.h"

#include <memory>
#include <set>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "common/board_text.h"
#include "common/captured.h"
#include "common/random_games.h"
#include "page/plies.h"
#include "rules/notation.h"
#include "rules/referee.h"

namespace {

using nlohmann::json;

const std::array<std::string, 4> OWNERS = {"white", "black", "life", "empty"};

// All moves that the referee lets pass, as "A1-B1".
std::set<std::string> MovesByTheReferee(const Position& position) {
    std::set<std::string> moves;
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            for (int d = 0; d < NUM_DIRECTIONS; ++d) {
                const Move move = {.Column = x, .Row = y, .Direction = d};
                if (MoveIsOk(position, move, position.Spaces[x][y].Height)) {
                    moves.insert(SpaceText({x, y}) + '-' + SpaceText(MoveTarget(position, move)));
                }
            }
        }
    }
    return moves;
}

std::set<std::string> MovesOfState(const json& state) {
    std::set<std::string> moves;
    for (const json& space : state["spaces"]) {
        for (const json& target : space["targets"]) {
            moves.insert(space["space"].get<std::string>() + '-' + target.get<std::string>());
        }
    }
    return moves;
}

void ExpectSpaces(const json& state, const Position& position) {
    ASSERT_EQ(state["spaces"].size(), static_cast<std::size_t>(NumBoardSpaces()));
    for (const json& told : state["spaces"]) {
        const Space& space = position.Spaces[told["x"]][told["y"]];
        EXPECT_EQ(told["space"], SpaceText({told["x"], told["y"]}));
        EXPECT_EQ(told["height"], space.Height);
        EXPECT_EQ(told["owner"], OWNERS[space.Owner]);
        EXPECT_EQ(told["life"], space.Life);
        const bool canBePlaced = position.SetupPhase != 0 && space.Owner == EMPTY;
        EXPECT_EQ(told.contains("place"), canBePlaced);
    }
}

std::string StoneToPlace(const Position& position) {
    return position.SetupPhase > 1 ? "life" : OWNERS[position.ActivePlayer];
}

// The state of the shown position of `play`, with a line awaited.
void ExpectState(const PlayState& play) {
    const Position& position = ShownPosition(play);
    const json state = json::parse(StateMessage(ViewOf(play, GameState::Waiting)));
    ExpectSpaces(state, position);
    const bool isPlacing = position.SetupPhase != 0;
    const bool isOver = IsEndPosition(position);
    std::set<std::string> moves;
    StdoutOf([&] { moves = isPlacing ? moves : MovesByTheReferee(position); });
    EXPECT_EQ(MovesOfState(state), moves);
    EXPECT_EQ(state["placing"], isPlacing ? json(StoneToPlace(position)) : json());
    EXPECT_EQ(state["gameOver"], isOver);
    EXPECT_EQ(state["mustPass"], !isPlacing && !isOver && moves.empty());
    EXPECT_EQ(state["toMove"], OWNERS[position.ActivePlayer]);
    EXPECT_EQ(state["columns"], GlobCfg.BoardXDim);
    EXPECT_EQ(state["rows"], GlobCfg.BoardYDim);
    EXPECT_EQ(state["move"], play.CurrentMove);
    EXPECT_EQ(state["lastMove"], play.Record.LastMove);
    EXPECT_EQ(state["running"], GlobCfg.GameRunFlag == 1);
    EXPECT_EQ(state["buttons"]["pass"], state["mustPass"]);
}

int Stones(const json& ply) {
    int stones = 0;
    for (const int code : ply["stones"]) {
        stones += code / 8;
    }
    return stones;
}

// The picture of every ply is the position that it led to.
void ExpectPlies(const GameRecord& record) {
    json before;
    for (int n = 0; n <= record.LastMove; ++n) {
        const Position& position = record.PositionList[n];
        const json ply = json::parse(PlyText(record, n));
        std::size_t i = 0;
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            for (int x = BoardColumns(y).First; x < BoardColumns(y).End; ++x) {
                const Space& space = position.Spaces[x][y];
                const int code = ply["stones"].at(i++);
                ASSERT_EQ(code / 8, space.Height);
                ASSERT_EQ(code / 4 % 2, space.Life);
                ASSERT_EQ(code % 4, space.Owner);
            }
        }
        if (n > 0) {
            const Position& parent = record.PositionList[n - 1];
            const std::string text = GetMoveString(record.MoveList[n - 1], parent);
            EXPECT_EQ(ply["text"], text.substr(0, text.find(' ')));
            EXPECT_EQ(ply["side"], OWNERS[parent.ActivePlayer]);
            const int placed = parent.SetupPhase != 0 ? 1 : 0;
            EXPECT_EQ(ply["cut"], Stones(before) + placed - Stones(ply));
            EXPECT_EQ(ply["target"].is_null(), text.starts_with("PASS"));
        }
        before = ply;
    }
}

}  // namespace

TEST(PageState, IsTheRecord) {
    std::mt19937 random(11);
    const auto play = std::make_unique<PlayState>();
    for (int game = 0; game < 60; ++game) {
        UseBoard(1 + RandomBelow(random, 15), 1 + RandomBelow(random, 9));
        SCOPED_TRACE(testing::Message() << "game " << game);
        GlobCfg.NumLifeStones = 1 + RandomBelow(random, 4);
        GlobCfg.GameRunFlag = RandomBelow(random, 2);
        if (game % 2 == 0) {
            GenerateEmptyStartPosition(play->Record.PositionList[0]);
        } else {
            FillBoardAtRandom(random, play->Record.PositionList[0]);
        }
        PlayRandomGame(random, GAME_RECORD_SIZE - 1, play->Record);
        ExpectPlies(play->Record);
        for (int n = RandomBelow(random, 4); n <= play->Record.LastMove; n += 4) {
            play->CurrentMove = n;
            ExpectState(*play);
            ASSERT_FALSE(HasFailure()) << "ply " << n;
        }
        play->CurrentMove = play->Record.LastMove;
        ExpectState(*play);
    }
}

// The one position in which more than one thing could be meant: a full board of one stone a ply
// with no move left, and highlighting off.
TEST(PageState, AGameThatIsOverAsksForNothing) {
    UseBoard(3, 1);
    GlobCfg.NumLifeStones = 1;
    GlobCfg.GuiHighlighting = 0;
    GlobCfg.GameRunFlag = 0;
    const auto play = std::make_unique<PlayState>();
    ResetAllButSpaces(play->Record.PositionList[0]);
    const BoardText over = ReadBoardText("over 3 1 black : . r .");
    play->Record.PositionList[0] = over.Board;
    const json state = json::parse(StateMessage(ViewOf(*play, GameState::Waiting)));
    EXPECT_EQ(state["gameOver"], true);
    EXPECT_EQ(state["placing"], json());
    EXPECT_EQ(state["status"], "The game ended 0 : 0, a draw");
}
