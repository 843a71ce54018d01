// Whole games at random, on every size of board and always the same ones.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "rules/plain_rules.h"
#include "rules/referee.h"
#include "rules/setup.h"

namespace {

// Fills the board at random by placements, as two people would.
Position PlaceStones(std::mt19937& random) {
    std::vector<Move> places;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            if (IsOnBoard(x, y)) {
                places.push_back({.Kind = MOVE_SETUP, .Column = x, .Row = y});
            }
        }
    }
    Position position;
    GenerateEmptyStartPosition(position);
    for (; !places.empty(); places.pop_back()) {
        std::swap(places[random() % places.size()], places.back());
        const Position parent = position;
        DoSetupMove(parent, places.back(), position);
    }
    return position;
}

// Calls `look(parent, move, child)` for every tower move of a random game.
template <typename Look>
void PlayRandomGame(std::mt19937& random, Look look) {
    Position position = PlaceStones(random);
    while (!IsEndPosition(position)) {
        const Position parent = position;
        MoveArray moves;
        const int count = GetPossibleMoves(parent, moves);
        if (count == 0) {
            DoPass(parent, position);
            continue;
        }
        const Move& move = moves[random() % count];
        DoMove(parent, move, position);
        look(parent, move, position);
    }
}

// Calls `play` with a generator of its own for every size of board.
template <typename Play>
void ForEachBoardSize(Play play) {
    for (int columns = 1; columns <= MAX_BOARD_X_DIM; ++columns) {
        for (int rows = 1; rows <= MAX_BOARD_Y_DIM; ++rows) {
            SCOPED_TRACE(testing::Message() << columns << " by " << rows);
            UseBoard(columns, rows);
            GlobCfg.NumLifeStones = 1 + (columns + rows) % 4;
            std::mt19937 random(columns * 100 + rows);
            play(random);
        }
    }
}

bool IsNeighbour(Place a, Place b) {
    for (int d = 0; d < NUM_DIRECTIONS; ++d) {
        const Place next = StepFrom(a.Column, a.Row, d, 1);
        if (next.Column == b.Column && next.Row == b.Row) {
            return true;
        }
    }
    return false;
}

// The board with every colour exchanged.
Position SwapColors(const Position& position) {
    Position swapped = position;
    swapped.ActivePlayer = OtherColor(position.ActivePlayer);
    for (auto& column : swapped.Spaces) {
        for (Space& space : column) {
            if (space.Owner == WHITE || space.Owner == BLACK) {
                space.Owner = OtherColor(space.Owner);
            }
        }
    }
    return swapped;
}

// The board turned by 180 degrees. Its shape is the same again, whether the rows are odd or even.
Position Turn(const Position& position) {
    Position turned = position;
    for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            turned.Spaces[x][y] =
                position.Spaces[GlobCfg.BoardXDim - 1 - x][GlobCfg.BoardYDim - 1 - y];
        }
    }
    return turned;
}

Move Turn(const Move& move) {
    return {.Kind = move.Kind,
            .Column = GlobCfg.BoardXDim - 1 - move.Column,
            .Row = GlobCfg.BoardYDim - 1 - move.Row,
            .Direction = (move.Direction + 3) % NUM_DIRECTIONS};
}

}  // namespace

TEST(RandomGames, FollowThePlainRules) {
    ForEachBoardSize([](std::mt19937& random) {
        PlayRandomGame(random, [](const Position& parent, const Move& move, const Position& child) {
            const PlainBoard board = PlainBoardOf(parent);
            MoveArray moves;
            const int count = GetPossibleMoves(parent, moves);
            std::vector<PlainMove> found;
            for (int i = 0; i < count; ++i) {
                found.push_back(PlainMoveOf(parent, moves[i]));
            }
            std::sort(found.begin(), found.end());
            ASSERT_EQ(found, PlainMoves(board, parent.ActivePlayer))
                << WriteBoardText("position", parent);
            ASSERT_EQ(PlainBoardOf(child), PlainAfter(board, PlainMoveOf(parent, move)))
                << WriteBoardText("position", parent);
        });
    });
}

// A move touches its source and its target; whatever else changes is a tower that went away whole,
// without a life stone, and no part of what the tower left is still without one.
TEST(RandomGames, StonesLeaveTheBoardByTheLifeRuleOnly) {
    int removed = 0;
    ForEachBoardSize([&removed](std::mt19937& random) {
        PlayRandomGame(random, [&removed](const Position& parent, const Move& move,
                                          const Position& child) {
            const Place source = {move.Column, move.Row};
            const Place target = MoveTarget(parent, move);
            for (int x = 0; x < MAX_BOARD_X_DIM; ++x) {
                for (int y = 0; y < MAX_BOARD_Y_DIM; ++y) {
                    const Space& before = parent.Spaces[x][y];
                    const Space& after = child.Spaces[x][y];
                    if (x == source.Column && y == source.Row) {
                        ASSERT_EQ(after, SpaceWith(EMPTY));
                    } else if (x == target.Column && y == target.Row && after.Height != 0) {
                        ASSERT_EQ(after.Height,
                                  before.Height + parent.Spaces[source.Column][source.Row].Height);
                    } else if (after != before) {
                        ASSERT_EQ(after, SpaceWith(EMPTY));
                        ASSERT_EQ(before.Life, 0);
                        ++removed;
                    }
                    if (after.Height != 0 && IsNeighbour(source, {x, y})) {
                        ASSERT_TRUE(TestOfLife(child, x, y)) << WriteBoardText("position", parent);
                    }
                }
            }
        });
    });
    EXPECT_GT(removed, 1000);
}

TEST(RandomGames, ColorsExchangedAreTheSameGame) {
    ForEachBoardSize([](std::mt19937& random) {
        PlayRandomGame(random, [](const Position& parent, const Move& move, const Position& child) {
            const Position swapped = SwapColors(parent);
            MoveArray moves;
            MoveArray swappedMoves;
            const int count = GetPossibleMoves(parent, moves);
            ASSERT_EQ(GetPossibleMoves(swapped, swappedMoves), count);
            ASSERT_TRUE(std::equal(moves.begin(), moves.begin() + count, swappedMoves.begin()));
            Position swappedChild;
            DoMove(swapped, move, swappedChild);
            ASSERT_EQ(swappedChild.Spaces, SwapColors(child).Spaces);
            ASSERT_EQ(swappedChild.ActivePlayer, parent.ActivePlayer);
        });
    });
}

TEST(RandomGames, TurnedBoardsAreTheSameGame) {
    ForEachBoardSize([](std::mt19937& random) {
        PlayRandomGame(random, [](const Position& parent, const Move& move, const Position& child) {
            const Position turned = Turn(parent);
            ASSERT_EQ(GetNumMoves(turned), GetNumMoves(parent));
            ASSERT_EQ(IsEndPosition(Turn(child)), IsEndPosition(child));
            const Move turnedMove = Turn(move);
            ASSERT_TRUE(MoveIsOk(turned, turnedMove, parent.Spaces[move.Column][move.Row].Height));
            Position turnedChild;
            DoMove(turned, turnedMove, turnedChild);
            ASSERT_EQ(PlainBoardOf(turnedChild), PlainBoardOf(Turn(child)));
        });
    });
}
