// The game behind the pages: what is typed into it, what pages are told, and what is kept.
#include "page/page_game_fixture.h"

#include "common/random_games.h"
#include "gamefiles/saved_game.h"
#include "rules/notation.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

}  // namespace

TEST_F(PageGameTest, ReadsAsAtATerminal) {
    Begin(3, 1);
    Type("b1", RequestKind::Move);
    Type("/new", RequestKind::Replace);
    EXPECT_EQ(all_.Log, "Using normal setup\n"
                        "Move (0/0), your move: b1\n"
                        "Move (1/1), your move: /stop\n"
                        "Move (1/1), game stopped: /new\n"
                        "Move (0/0), your move: ");
    Type("/stop");
    Type("a1", RequestKind::Move);
    EXPECT_TRUE(all_.Log.ends_with("game stopped: /move a1\nMove (1/1), game stopped: "));
    EXPECT_EQ(Play().Record.LastMove, 1);
    EXPECT_EQ(all_.Plies.size(), 2U);
    EXPECT_EQ(State()["running"], false);
}

// A random start that is over at once, or a game stopped and started again: what is said is what is
// so.
TEST_F(PageGameTest, RunsWhenItRuns) {
    WriteFile("over.tlx", "DIM(3,1,1)\n: * 1 2\nB1-C1\n");
    Begin(3, 1);
    GlobCfg.GuiHighlighting = 0;
    Type("/load over", RequestKind::Replace);
    EXPECT_EQ(State()["gameOver"], true);
    EXPECT_EQ(State()["placing"], json());
    EXPECT_EQ(State()["running"], false);
    Type("/start");
    EXPECT_EQ(State()["running"], false);
    EXPECT_EQ(state_, GameState::Waiting);
}

// What ends the program at a terminal ends the line here.
TEST_F(PageGameTest, OutlivesErrors) {
    WriteFile("long.tlx", "DIM(4,4,2)\n" + std::string(300, 'x') + "\n");
    Begin(5, 1);
    Type("a1");
    Type("/stop");
    const auto before = std::make_unique<PlayState>(Play());
    Type("load long");
    EXPECT_NE(all_.Log.find("Input line too long"), std::string::npos);
    EXPECT_EQ(FirstDifference(before->Record, Play().Record), -1);
    EXPECT_EQ(GlobCfg.BoardXDim, 5);
    EXPECT_EQ(GlobCfg.GameRunFlag, 0);
    Type("start");
    Type("b1");
    EXPECT_EQ(Play().Record.LastMove, 2);
}

// An error in the computer's own turn would come again for ever.
TEST_F(PageGameTest, StopsWhenTheComputerFails) {
    Begin(1, 1);
    GlobCfg.NumHumanPlayers = 0;
    Position& position = game_->Game.Play.Record.PositionList[0];
    position.Spaces[0][0] = SpaceWith(LIFE);  // a setup without an empty space
    ASSERT_TRUE(HasComputerTurn(*game_));
    PlayPageTurn(*game_);
    EXPECT_NE(all_.Log.find("no moves left! (bug in program)"), std::string::npos);
    EXPECT_FALSE(HasComputerTurn(*game_));
    EXPECT_EQ(Play().CurrentMove, 0);
}

TEST_F(PageGameTest, KeepsEveryPly) {
    Begin(5, 3);
    EXPECT_FALSE(fs::exists("autosave.tlx"));
    std::mt19937 random(3);
    const auto loaded = std::make_unique<GameRecord>();
    while (GlobCfg.GameRunFlag == 1) {
        Move move;
        Position next;
        MakeRandomPly(random, ShownPosition(Play()), move, next);
        Type(GetMoveString(move, ShownPosition(Play())));
        const BoardSettingsGuard settings;
        ASSERT_EQ(LoadGame("autosave.tlx", *loaded), 0);
        ASSERT_EQ(FirstDifference(*loaded, Play().Record), -1);
    }
    EXPECT_GT(Play().Record.LastMove, 15);
    Type("/back 3");
    EXPECT_TRUE(ReadFile("autosave.tlx")
                    .ends_with("# Board: people 2, color white, level 5000, move " +
                               std::to_string(Play().CurrentMove) + "\n"));
}

// A game is put aside when another takes its place, unless a file of the user's has it; what was
// taken back by an undo is not missed.
TEST_F(PageGameTest, PutsReplacedGamesAside) {
    Begin(5, 3);
    for (const char* line : {"a1", "b1", "c1", "d2"}) {
        Type(line);
    }
    Type("/undo");
    Type("e2");
    EXPECT_FALSE(fs::exists("previous.tlx"));
    const std::string undone = ReadFile("autosave.tlx");
    Type("/back 1");
    Type("/start");
    Type("b2");
    EXPECT_EQ(ReadFile("previous.tlx"), undone.substr(0, undone.rfind("move")) + "move 2\n");
    Type("/new", RequestKind::Replace);
    EXPECT_FALSE(fs::exists("autosave.tlx"));
    EXPECT_NE(ReadFile("previous.tlx").find("A1  B1\nB2"), std::string::npos);
    EXPECT_TRUE(fs::exists("previous-2.tlx"));
    Type("a1");
    Type("/save mine");
    Type("/new", RequestKind::Replace);
    EXPECT_FALSE(fs::exists("autosave.tlx"));
    EXPECT_FALSE(fs::exists("previous-3.tlx"));
}
