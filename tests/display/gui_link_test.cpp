// The mirror of the game on a graphical display, byte by byte and as a display would show it.
#include "display/gui_link.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <random>
#include <thread>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/time.h>

#include "common/display_peer.h"
#include "common/run_program.h"
#include "rules/referee.h"
#include "rules/setup.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

constexpr const char* ESTABLISHED = "Connection to GUI successfully established!\n";
constexpr const char* LOST = "Connection to GUI was lost!\nGUI is disabled!\n";

int OpenDescriptors() {
    return static_cast<int>(
        std::ranges::distance(std::filesystem::directory_iterator("/proc/self/fd")));
}

class GuiLinkTest : public testing::Test {
protected:
    void SetUp() override {
        SetDefaultConfiguration();
        GuiLast = {};
    }

    void TearDown() override { CloseGuiLink(); }

    void NewGame(int columns, int rows, int lifeStones) {
        GlobCfg.BoardXDim = columns;
        GlobCfg.BoardYDim = rows;
        GlobCfg.NumLifeStones = lifeStones;
        GenerateEmptyStartPosition(Record->PositionList[0]);
        Record->LastMove = 0;
    }

    // Adds a ply to the game: a pass when the side to move must, else `move`.
    void Play(const Move& move) {
        const int n = Record->LastMove;
        const Position& position = Record->PositionList[n];
        Position& next = Record->PositionList[n + 1];
        if (GetNumMoves(position) == 0) {
            Record->MoveList[n].Kind = MOVE_PASS;
            DoPass(position, next);
        } else if (position.SetupPhase != 0) {
            Record->MoveList[n] = move;
            DoSetupMove(position, move, next);
        } else {
            Record->MoveList[n] = move;
            DoMove(position, move, next);
        }
        Record->LastMove = n + 1;
    }

    void Connect(DisplayPeer& peer) {
        GlobCfg.GuiPort = peer.Port;
        CaptureStdout();
        ASSERT_EQ(OpenGuiLink(), 0);
        EXPECT_EQ(GetCapturedStdout(), ESTABLISHED);
        EXPECT_NE(GlobCfg.Gui, 0);
        AcceptConnection(peer);
    }

    // Shows position n and answers what arrives at the display.
    std::string Show(DisplayPeer& peer, int n) {
        GUIPrintPosition(*Record, n);
        return ReadUpdate(peer);
    }

    std::unique_ptr<GameRecord> Record = std::make_unique<GameRecord>();
};

Move Placement(int x) {
    return {MOVE_SETUP, x, 0, 0};
}

Move TowerMove(int x, int direction) {
    return {MOVE_TOWER, x, 0, direction};
}

// Five spaces in a row, C and D the life stones: A onto B, pass, E onto D, pass, B onto D.
TEST_F(GuiLinkTest, EveryByteOfASmallGame) {
    DisplayPeer peer;
    NewGame(5, 1, 2);
    Connect(peer);
    EXPECT_EQ(Show(peer, 0), "C\nL -1 -1 -1 -1\nN -1 -1 -1 -1\nTMove (0/0) WHITE is moving\nD\n");
    const struct {
        Move Ply;
        const char* Update;
    } plies[] = {
        {Placement(2), "L -1 -1 2 0\nN -1 -1 -1 -1\nS 2 0 1 2 1\nTMove (1/1) BLACK is moving\nD\n"},
        {Placement(3), "L -1 -1 3 0\nN -1 -1 -1 -1\nS 3 0 1 2 1\nTMove (2/2) WHITE is moving\nD\n"},
        {Placement(0), "L -1 -1 0 0\nN -1 -1 -1 -1\nS 0 0 1 0 0\nTMove (3/3) BLACK is moving\nD\n"},
        {Placement(1), "L -1 -1 1 0\nN -1 -1 -1 -1\nS 1 0 1 1 0\nTMove (4/4) WHITE is moving\nD\n"},
        {Placement(4), "L -1 -1 4 0\nN -1 -1 -1 -1\nS 4 0 1 0 0\nTMove (5/5) WHITE is moving\nD\n"},
        {TowerMove(0, 0), "L 0 0 1 0\nN -1 -1 -1 -1\nM 0 0 1 0\nS 0 0 0 3 0\n"
                          "TMove (6/6) BLACK is moving\nD\n"},
        {{}, "L 0 0 1 0\nN -1 -1 -1 -1\nTMove (7/7) WHITE is moving\nD\n"},
        {TowerMove(4, 3), "L 4 0 3 0\nN -1 -1 -1 -1\nM 4 0 3 0\nS 4 0 0 3 0\n"
                          "TMove (8/8) BLACK is moving\nD\n"},
        {{}, "L 4 0 3 0\nN -1 -1 -1 -1\nTMove (9/9) WHITE is moving\nD\n"},
        {TowerMove(1, 0), "L 1 0 3 0\nN -1 -1 -1 -1\nM 1 0 3 0\nS 1 0 0 3 0\n"
                          "TMove (10/10) Game finished!  SCORE: 4:0\nD\n"},
    };
    int n = 0;
    for (const auto& ply : plies) {
        Play(ply.Ply);
        EXPECT_EQ(Show(peer, ++n), ply.Update);
    }
    // The board again, then back, once more forward, over a pass, and back to the start.
    EXPECT_EQ(Show(peer, 10),
              "L 1 0 3 0\nN -1 -1 -1 -1\nTMove (10/10) Game finished!  SCORE: 4:0\nD\n");
    EXPECT_EQ(Show(peer, 5), "L -1 -1 4 0\nN 0 0 1 0\nS 0 0 1 0 0\nS 1 0 1 1 0\nS 2 0 1 2 1\n"
                             "S 3 0 1 2 1\nS 4 0 1 0 0\nTMove (5/10) WHITE is moving\nD\n");
    EXPECT_EQ(Show(peer, 6), "L 0 0 1 0\nN -1 -1 -1 -1\nM 0 0 1 0\nS 0 0 0 3 0\n"
                             "TMove (6/10) BLACK is moving\nD\n");
    EXPECT_EQ(Show(peer, 7), "L 0 0 1 0\nN 4 0 3 0\nTMove (7/10) WHITE is moving\nD\n");
    EXPECT_EQ(Show(peer, 4), "L -1 -1 1 0\nN -1 -1 4 0\nS 0 0 1 0 0\nS 1 0 1 1 0\nS 2 0 1 2 1\n"
                             "S 3 0 1 2 1\nS 4 0 0 3 0\nTMove (4/10) WHITE is moving\nD\n");
    EXPECT_EQ(Show(peer, 0), "L -1 -1 -1 -1\nN -1 -1 -1 -1\nS 0 0 0 3 0\nS 1 0 0 3 0\n"
                             "S 2 0 0 3 0\nS 3 0 0 3 0\nS 4 0 0 3 0\n"
                             "TMove (0/10) WHITE is moving\nD\n");
    GlobCfg.GuiHighlighting = 0;
    EXPECT_EQ(Show(peer, 1), "L -1 -1 -1 -1\nN -1 -1 -1 -1\nS 2 0 1 2 1\n"
                             "TMove (1/10) BLACK is moving\nD\n");
    EXPECT_TRUE(CloseGuiLink());
    EXPECT_FALSE(CloseGuiLink());
    EXPECT_EQ(GlobCfg.Gui, 0);
    EXPECT_EQ(ReadToEnd(peer), "Q\n");

    // The session that the document shows is this one.
    const std::string document = ReadFile(TALUREX_SOURCE_DIR "/docs/gui-protocol.md");
    const std::size_t begin = document.find("    L -1 -1 0 0\n");
    ASSERT_NE(begin, std::string::npos);
    std::string session = document.substr(begin, document.find("\n\n", begin) + 1 - begin);
    for (std::size_t i = 0; (i = session.find("    ", i)) != std::string::npos;) {
        session.erase(i, 4);
    }
    EXPECT_NE(peer.Received.find(session), std::string::npos) << session;
}

// A move that cuts A off from the life stone: its stone leaves the board in the same update.
TEST_F(GuiLinkTest, TowersRemovedByTheLifeRuleAreSent) {
    DisplayPeer peer;
    NewGame(5, 1, 1);
    Connect(peer);
    for (const int x : {2, 0, 1, 4, 3}) {
        Play(Placement(x));
        Show(peer, Record->LastMove);
    }
    Play(TowerMove(1, 0));
    EXPECT_EQ(Show(peer, 6), "L 1 0 2 0\nN -1 -1 -1 -1\nM 1 0 2 0\nS 0 0 0 3 0\nS 1 0 0 3 0\n"
                             "TMove (6/6) BLACK is moving\nD\n");
}

// WHITE must pass in the first position of the record: there is no move to highlight.
TEST_F(GuiLinkTest, PassInTheFirstPosition) {
    DisplayPeer peer;
    NewGame(3, 1, 1);
    Position& start = Record->PositionList[0];
    ResetAllButSpaces(start);
    start.Spaces[0][0] = SpaceWith(LIFE);
    start.Spaces[1][0] = SpaceWith(BLACK);
    Play({});
    Play(TowerMove(1, 3));
    Connect(peer);
    CaptureStdout();
    EXPECT_EQ(Show(peer, 1), "C\nL -1 -1 -1 -1\nN 1 0 0 0\nS 0 0 1 2 1\nS 1 0 1 1 0\n"
                             "TMove (1/2) BLACK is moving\nD\n");
    EXPECT_EQ(GetCapturedStdout(), "GUIPrintPosition: Bad logical error, Bug in program!\n");
}

// Only the sign of a zero tells the positions apart, and that is a difference.
TEST_F(GuiLinkTest, SignOfZeroIsADifference) {
    DisplayPeer peer;
    NewGame(1, 1, 1);
    Connect(peer);
    Show(peer, 0);
    EXPECT_EQ(Show(peer, 0), "L -1 -1 -1 -1\nN -1 -1 -1 -1\nTMove (0/0) WHITE is moving\nD\n");
    Record->PositionList[0].Value = -0.0;
    EXPECT_EQ(Show(peer, 0), "L -1 -1 -1 -1\nN -1 -1 -1 -1\nS 0 0 0 3 0\n"
                             "TMove (0/0) WHITE is moving\nD\n");
}

// Whole games on many boards, walked through in every way, as a display shows them.
class MirrorTest : public GuiLinkTest {
protected:
    int Draw(int n) { return static_cast<int>(Random() % static_cast<unsigned>(n)); }

    Move AnyPly(const Position& position) {
        if (position.SetupPhase != 0) {
            Move move;
            do {
                move = {MOVE_SETUP, Draw(GlobCfg.BoardXDim), Draw(GlobCfg.BoardYDim), 0};
            } while (!IsOnBoard(move.Column, move.Row) ||
                     position.Spaces[move.Column][move.Row].Owner != EMPTY);
            return move;
        }
        MoveArray moves;
        const int count = GetPossibleMoves(position, moves);
        return count == 0 ? Move{} : moves[Draw(count)];
    }

    // Shows position n and compares what the display makes of it with the game.
    void ShowAndCompare(int n) {
        const std::string update = Show(Peer, n);
        ++NumUpdates;
        NumMoved += update.find("\nM ") != std::string::npos ? 1 : 0;
        ASSERT_EQ(ApplyUpdate(Shown, update), "") << update;
        EXPECT_EQ(Shown.MoveNumber, n);
        EXPECT_EQ(Shown.LastMove, Record->LastMove);
        const Position& position = Record->PositionList[n];
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
                const Space& space = position.Spaces[x][y];
                const ShownSpace& shown = Shown.Spaces[x][y];
                ASSERT_TRUE(space.Height == shown.Height && space.Owner == shown.Owner &&
                            space.Life == shown.Life)
                    << x << ' ' << y << '\n'
                    << update;
            }
        }
    }

    // Forward from the start to the end, then a walk of jumps and single steps.
    void PlayAndWalk() {
        ShowAndCompare(0);
        while (!IsEndPosition(Record->PositionList[Record->LastMove])) {
            const Position& position = Record->PositionList[Record->LastMove];
            NumPasses += GetNumMoves(position) == 0 ? 1 : 0;
            Play(AnyPly(position));
            ShowAndCompare(Record->LastMove);
        }
        EXPECT_TRUE(Shown.State.starts_with("Game finished!  SCORE: "));
        int n = Record->LastMove;
        for (int i = 0; i < 60; ++i) {
            // Mostly single steps: those are the updates that leave most out.
            const int step = Draw(3) == 0 ? Draw(21) - 10 : Draw(4) - 1;
            n = std::clamp(n + step, 0, Record->LastMove);
            ShowAndCompare(n);
        }
    }

    std::mt19937 Random{20031031};
    DisplayPeer Peer;
    ShownBoard Shown;
    int NumUpdates = 0;
    int NumMoved = 0;
    int NumPasses = 0;
};

TEST_F(MirrorTest, LinesAloneRebuildTheBoard) {
    constexpr struct {
        int Columns;
        int Rows;
        int LifeStones;
    } boards[] = {{11, 5, 3}, {15, 9, 3}, {5, 1, 2}, {1, 1, 1}, {6, 6, 2}, {1, 5, 1},
                  {7, 4, 1},  {2, 9, 5},  {9, 9, 2}, {4, 3, 1}, {3, 2, 9}, {11, 5, 1}};
    NewGame(11, 5, 3);
    Connect(Peer);
    for (const auto& board : boards) {
        for (int game = 0; game < 3; ++game) {
            SCOPED_TRACE(std::to_string(board.Columns) + " by " + std::to_string(board.Rows));
            NewGame(board.Columns, board.Rows, board.LifeStones);
            PlayAndWalk();
            if (HasFatalFailure()) {
                return;
            }
        }
    }
    EXPECT_GT(NumPasses, 0);
    EXPECT_GT(NumMoved, 100);
    RecordProperty("updates", NumUpdates);
    RecordProperty("bytes", static_cast<int>(Peer.Received.size()));
}

TEST_F(GuiLinkTest, NobodyListens) {
    const ClosedPort closed;
    GlobCfg.GuiPort = closed.Port;
    const int before = OpenDescriptors();
    for (int i = 0; i < 3; ++i) {
        GlobCfg.Gui = 1;
        CaptureStdout();
        CaptureStderr();
        EXPECT_NE(OpenGuiLink(), 0);
        EXPECT_EQ(GetCapturedStderr(), "Socket connection to gui failed!\n");
        EXPECT_EQ(GetCapturedStdout(),
                  "Connection to GUI could not be established!\nGUI is disabled!\n");
        EXPECT_EQ(GlobCfg.Gui, 0);
    }
    EXPECT_EQ(OpenDescriptors(), before);
    const ScratchFolder folder;
    WriteFile(folder.File("talurex.cfg"), "GUI_PORT " + std::to_string(closed.Port) + "\n");
    const ProgramRun run = RunProgram({TALUREX_PROGRAM, "-gui", "-players=2"}, "", folder.Path());
    EXPECT_EQ(run.Errors, "Socket connection to gui failed!\n");
    EXPECT_NE(run.Output.find("Talurex KI-Level: 5000\n"
                              "Connection to GUI could not be established!\nGUI is disabled!\n"
                              "Using normal setup\n"),
              std::string::npos);
    EXPECT_EQ(run.ExitStatus, 0);
}

TEST_F(GuiLinkTest, DisplayThatClosesAtOnceAndComesBack) {
    DisplayPeer peer;
    NewGame(5, 1, 2);
    for (const int x : {2, 3, 0, 1, 4}) {
        Play(Placement(x));
    }
    const int before = OpenDescriptors();
    Connect(peer);
    HangUp(peer);
    CaptureStdout();
    for (int i = 0; i < 1000 && GlobCfg.Gui != 0; ++i) {
        GUIPrintPosition(*Record, 2);
    }
    EXPECT_EQ(GetCapturedStdout(), LOST);
    EXPECT_EQ(GlobCfg.Gui, 0);
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_EQ(GuiLast.LastMoveNr, 2);
    EXPECT_TRUE(SamePosition(GuiLast.LastPosition, Record->PositionList[2]));
    // The next update builds on what the display would have been sent.
    Connect(peer);
    EXPECT_EQ(Show(peer, 3), "L -1 -1 0 0\nN -1 -1 1 0\nS 0 0 1 0 0\n"
                             "TMove (3/5) BLACK is moving\nD\n");
}

TEST_F(GuiLinkTest, FarewellToADisplayThatIsGonePrintsNothing) {
    DisplayPeer peer;
    Connect(peer);
    HangUp(peer);
    SocketSendString(GlobCfg.GuiSocket, "x");  // the answer to this breaks the connection
    CaptureStdout();
    CaptureStderr();
    CloseGuiLink();
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_EQ(GlobCfg.Gui, 0);
}

void UseSmallSendBuffer() {
    const int size = 1;
    setsockopt(GlobCfg.GuiSocket, SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
}

// The display reads a few thousand bytes and goes, while more wait to be sent.
TEST_F(GuiLinkTest, DisplayThatGoesInMidUpdate) {
    DisplayPeer peer(1);
    NewGame(15, 9, 3);
    for (int x = 4; x < 10; ++x) {
        Play(Placement(x));
    }
    Connect(peer);
    UseSmallSendBuffer();
    std::thread display([&] {
        while (peer.Received.size() < 5000) {
            ReadSome(peer, 100);
        }
        HangUp(peer);
    });
    CaptureStdout();
    int n = 0;
    for (; GlobCfg.Gui != 0; n = (n + 3) % 6) {
        GUIPrintPosition(*Record, n);
    }
    display.join();
    EXPECT_EQ(GetCapturedStdout(), LOST);
    EXPECT_EQ(GuiLast.LastMoveNr, (n + 3) % 6);
}

int NumAlarms = 0;

// Interrupts system calls every fifth of a millisecond, for as long as the record lives.
struct Interruptions {
    Interruptions() {
        struct sigaction action {};
        action.sa_handler = [](int) { ++NumAlarms; };
        sigaction(SIGALRM, &action, &Before);
        const itimerval timer = {{0, 200}, {0, 200}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
    ~Interruptions() {
        const itimerval none = {};
        setitimer(ITIMER_REAL, &none, nullptr);
        sigaction(SIGALRM, &Before, nullptr);
    }
    struct sigaction Before {};
};

// A display that reads byte by byte makes every write wait, and signals cut the writes short.
TEST_F(GuiLinkTest, SlowDisplayLosesNoLine) {
    constexpr int NUM_UPDATES = 100;
    DisplayPeer peer(1);
    NewGame(15, 9, 3);
    for (int x = 4; x < 10; ++x) {
        Play(Placement(x));
    }
    Connect(peer);
    UseSmallSendBuffer();
    ShownBoard shown;
    int numRead = 0;
    std::string fault;
    sigset_t alarms;
    sigemptyset(&alarms);
    sigaddset(&alarms, SIGALRM);
    pthread_sigmask(SIG_BLOCK, &alarms, nullptr);
    std::thread display([&] {
        for (; numRead < NUM_UPDATES && fault.empty(); ++numRead) {
            fault = ApplyUpdate(shown, ReadUpdate(peer));
        }
        // A text too long for one write.
        while (ReadSome(peer, 1000)) {
        }
    });
    pthread_sigmask(SIG_UNBLOCK, &alarms, nullptr);
    const std::string longText(300000, 'x');
    {
        const Interruptions interruptions;
        for (int i = 0; i < NUM_UPDATES; ++i) {
            GUIPrintPosition(*Record, i * 3 % 6);
        }
        EXPECT_EQ(SocketSendString(GlobCfg.GuiSocket, longText), 0);
    }
    CloseGuiLink();
    display.join();
    EXPECT_GT(NumAlarms, 0);
    EXPECT_EQ(fault, "");
    EXPECT_EQ(numRead, NUM_UPDATES);
    EXPECT_TRUE(peer.Received.ends_with("\nD\n" + longText + "Q\n"));
}

}  // namespace
