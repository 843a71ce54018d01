// What is typed to Talurex and when, and what of its answers people get to see.
#include "board/conversation.h"

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/captured.h"
#include "display/terminal_board.h"
#include "rules/setup.h"

namespace {

void Print(Conversation& talk, const std::string& output) {
    for (const OutputPart& part : ReadOutput(talk.Output, output)) {
        TakePart(talk, part);
    }
}

void Send(Conversation& talk, std::string_view bytes) {
    std::string line;
    while (!bytes.empty()) {
        TakeDisplayBytes(talk, line, bytes);
    }
}

std::string BoardWith(int numStones) {
    Position position;
    GenerateEmptyStartPosition(position);
    for (int x = 0; x < numStones; ++x) {
        position.Spaces[x][0] = SpaceWith(LIFE);
    }
    position.ActivePlayer = numStones % 2 == 0 ? WHITE : BLACK;
    return StdoutOf([&] {
        std::printf("\n");
        PrintPosition(position);
    });
}

Conversation Begun() {
    SetDefaultConfiguration();
    UseBoard(5, 1);
    GlobCfg.NumHumanPlayers = 2;
    Conversation talk = NewConversation();
    Print(talk, BoardWith(0) + "Move (0/0), your move: ");
    return talk;
}

}  // namespace

TEST(Conversation, TypesOneLineAtAPrompt) {
    Conversation talk = Begun();
    ASSERT_TRUE(QueueLine(talk, {"a1", LineKind::Move}));
    ASSERT_TRUE(QueueLine(talk, {"/new", LineKind::Replace}));
    EXPECT_EQ(NextInput(talk), "a1\n");
    EXPECT_EQ(NextInput(talk), "");
    Print(talk, BoardWith(1) + "Move (1/1), your ");
    EXPECT_EQ(NextInput(talk), "");
    Print(talk, "move: ");
    EXPECT_EQ(talk.View.Shown.Move, 1);
    EXPECT_TRUE(talk.View.Unsaved);
    EXPECT_EQ(NextInput(talk), "/stop\n");
    Print(talk, "Move (1/1), game stopped: ");
    EXPECT_EQ(NextInput(talk), "/new\n");
    Print(talk, BoardWith(0) + "Move (0/0), your move: ");
    EXPECT_FALSE(talk.View.Unsaved);
    EXPECT_EQ(talk.Log, "Move (0/0), your move: a1\n"
                        "Move (1/1), your move: /stop\n"
                        "Move (1/1), game stopped: /new\n"
                        "Move (0/0), your move: ");
}

TEST(Conversation, PlaysByTheMoveCommandWhileTheGameIsStopped) {
    Conversation talk = Begun();
    Print(talk, "Move (0/0), game stopped: ");
    ASSERT_TRUE(QueueLine(talk, {"a1", LineKind::Move}));
    EXPECT_EQ(NextInput(talk), "/move a1\n");
}

// Talurex reads a line of the greatest length before its line feed comes, and would take that for
// an empty line.
TEST(Conversation, TypesTheLongestLineWithoutALineFeed) {
    Conversation talk = Begun();
    const std::string longest(MAX_TYPED_LENGTH, 'x');
    EXPECT_EQ(RefusalOf(longest), "");
    EXPECT_NE(RefusalOf(longest + 'x'), "");
    ASSERT_TRUE(QueueLine(talk, {longest, LineKind::Typed}));
    EXPECT_EQ(NextInput(talk), longest);
}

TEST(Conversation, RefusesControlCharacters) {
    for (const char* line : {"e3\n/quit", "\x1b[2J", "a\x7f", "\xc2\x9b"}) {
        EXPECT_NE(RefusalOf(line), "") << line;
    }
    EXPECT_EQ(RefusalOf("/save \xc3\xa9t\xc3\xa9"), "");
}

// A loaded game brings its number of life stones; nothing that is printed tells it.
TEST(Conversation, AsksBehindALoadAndKeepsItFromTheLog) {
    Conversation talk = Begun();
    Print(talk, "Move (0/0), game stopped: ");
    ASSERT_TRUE(QueueLine(talk, {"lo some", LineKind::Typed}));
    EXPECT_EQ(NextInput(talk), "lo some\n");
    Print(talk, "loading game was successful.\n" + BoardWith(1) + "Move (1/1), game stopped: ");
    EXPECT_FALSE(IsSettled(talk));
    EXPECT_FALSE(talk.View.Unsaved);
    EXPECT_EQ(talk.View.Shown.Board.SetupPhase, 2);
    const std::string log = talk.Log;
    EXPECT_EQ(NextInput(talk), "/lifestones\n");
    Print(talk, "Number of Dvonn Stones is 1\nMove (1/1), game stopped: ");
    EXPECT_TRUE(IsSettled(talk));
    EXPECT_EQ(talk.View.Shown.Board.SetupPhase, 1);
    EXPECT_EQ(talk.Log, log);
}

// The computer thinks before the drawing of one's own move comes through the pipe; behind a load
// the link mixes two games.
TEST(Conversation, FollowsTheLinkWhileItIsExact) {
    Conversation talk = Begun();
    NoteConnection(talk.View, true);
    Send(talk, "C\nL -1 -1 -1 -1\nN -1 -1 -1 -1\nTMove (0/0) WHITE is moving\nD\n");
    const std::string placement = "L -1 -1 0 0\nN -1 -1 -1 -1\nS 0 0 1 2 1\n"
                                  "TMove (1/1) BLACK is moving\nD\n";
    ASSERT_TRUE(QueueLine(talk, {"/load some", LineKind::Typed}));
    EXPECT_EQ(NextInput(talk), "/load some\n");
    Send(talk, placement);
    EXPECT_EQ(talk.View.Shown.Move, 0);
    Print(talk, "Loading game failed!\nMove (0/0), your move: ");
    EXPECT_EQ(talk.View.Shown.Move, 0);

    talk = Begun();
    NoteConnection(talk.View, true);
    Send(talk, "C\nL -1 -1 -1 -1\nN -1 -1 -1 -1\nTMove (0/0) WHITE is moving\nD\n");
    ASSERT_TRUE(QueueLine(talk, {"a1", LineKind::Move}));
    EXPECT_EQ(NextInput(talk), "a1\n");
    Send(talk, placement);
    EXPECT_EQ(talk.View.Shown.Move, 1);
    EXPECT_EQ(talk.View.Shown.Board.Spaces[0][0], SpaceWith(LIFE));
    EXPECT_EQ(talk.View.Shown.Board.ActivePlayer, BLACK);
}
