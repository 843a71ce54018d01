// What pages ask for: the lines that come of it, and what is refused and changes nothing.
#include "page/page_game_fixture.h"

#include <vector>

#include "common/random_games.h"
#include "page/page_request.h"
#include "rules/notation.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class PageLinesTest : public PageGameTest {
protected:
    // Does something, and answers the lines that were typed, one behind the other.
    template <typename Work>
    std::string LinesOf(Work work) {
        const std::size_t before = all_.Log.rfind("Move (");
        work();
        std::string lines;
        for (std::size_t at = before; at != std::string::npos;
             at = all_.Log.find("\nMove (", at + 1)) {
            const std::size_t text = all_.Log.find(": ", at) + 2;
            const std::size_t end = all_.Log.find('\n', text);
            if (end != std::string::npos) {
                lines += all_.Log.substr(text, end - text) + "; ";
            }
        }
        return lines;
    }
    std::string LinesOf(const PageRequest& request) {
        return LinesOf([&] { Ask(request); });
    }

    // What the page was answered last, by its kind: "error: why", for one.
    std::string Answer() {
        const json answer =
            all_.Answers.empty() ? json::object() : json::parse(all_.Answers.back());
        all_.Answers.clear();
        return answer.empty() ? ""
                              : answer["type"].get<std::string>() + ": " +
                                    answer.value("text", answer.value("name", ""));
    }

    void AnswerWithComputer() {
        ASSERT_TRUE(HasComputerTurn(*game_));
        PlayPageTurn(*game_);
    }
};

constexpr char SMALL_GAME[] = "DIM(3,1,1)\nB1 A1\nC1\nBREAK\n";

}  // namespace

TEST_F(PageLinesTest, UndoLeadsToOnesOwnChoice) {
    Begin(5, 3);
    EXPECT_EQ(State()["buttons"]["undo"], false);
    Type("a1");
    Type("b1");
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Undo}), "/back 1; /start; ");
    Type("/level 0");
    Type("/color white");
    Type("/players 1");
    AnswerWithComputer();
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Undo}), "/back 2; /start; ");
    EXPECT_EQ(Play().CurrentMove, 0);
    EXPECT_FALSE(fs::exists("previous.tlx"));
    // Where somebody had to pass, the choice was the other one's.
    std::mt19937 random(5);
    Type("/players 2");
    Type("/start");
    while (State()["mustPass"] == false) {
        if (State()["gameOver"] == true) {
            Ask({.Kind = RequestKind::Replace, .Text = "/new"});
        }
        Move move;
        Position next;
        MakeRandomPly(random, ShownPosition(Play()), move, next);
        Type(GetMoveString(move, ShownPosition(Play())));
    }
    Type("pass");
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Undo}), "/back 2; /start; ");
}

// Whatever was changed since is as it was.
TEST_F(PageLinesTest, TakesBackWhatReplacedAGame) {
    Begin(5, 3);
    for (const char* line : {"/level 3", "/color black", "a1", "b1", "c1", "/back 1", "/start"}) {
        Type(line);
    }
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Replace, .Text = "/new"}), "/stop; /new; ");
    for (const char* line :
         {"/level 1000", "/color white", "/players 1", "/stop", "/boardsize 7 2"}) {
        Type(line);
    }
    EXPECT_EQ(State()["buttons"]["takeback"], true);
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}),
              "/stop; /load previous; /back 1; /players 2; /color black; /level 3; /start; ");
    EXPECT_EQ(Play().CurrentMove, 2);
    EXPECT_EQ(Play().Record.LastMove, 3);
    EXPECT_EQ(GlobCfg.BoardXDim, 5);
    EXPECT_EQ(State()["buttons"]["takeback"], false);

    EXPECT_EQ(LinesOf({.Kind = RequestKind::FromHere, .Number = 1}), "/back 1; /start; ");
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}), "/stop; /load previous; /back 1; /start; ");
    Ask({.Kind = RequestKind::FromHere, .Number = 1});
    Type("d1");
    EXPECT_EQ(State()["buttons"]["takeback"], false) << "until the next ply";
    Type("/save mine");
    Ask({.Kind = RequestKind::Replace, .Text = "/new"});
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}), "/stop; /load mine.tlx; /start; ");
}

// Another board in the folder, or a person, may move games on or away.
TEST_F(PageLinesTest, FindsTheGameThatIsMeant) {
    Begin(5, 3);
    Type("a1");
    Ask({.Kind = RequestKind::Replace, .Text = "/new"});
    fs::rename("previous.tlx", "previous-2.tlx");
    WriteFile("previous.tlx", SMALL_GAME);
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}), "/stop; /load previous-2; /start; ");
    Ask({.Kind = RequestKind::Replace, .Text = "/new"});
    for (const char* name : {"previous.tlx", "previous-2.tlx", "previous-3.tlx"}) {
        fs::remove(name);
    }
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}), "");
    EXPECT_EQ(Answer(), "error: That game is in this folder no more.\n");
    EXPECT_EQ(State()["buttons"]["takeback"], false);
}

TEST_F(PageLinesTest, GoesOnWithAGameOfTheUsersOwn) {
    WriteFile("autosave.tlx", SMALL_GAME);
    Begin(5, 3);
    EXPECT_EQ(State()["resume"], 3);
    EXPECT_EQ(LinesOf({.Kind = RequestKind::GoOn}), "/stop; /load previous; /start; ");
    EXPECT_EQ(State()["resume"], json());
    EXPECT_TRUE(fs::exists("autosave.tlx")) << "a previous game may soon be gone";
}

TEST_F(PageLinesTest, KeepsARunningGameWhenNothingIsLoaded) {
    Begin(5, 3);
    Type("a1");
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Load, .Text = "none"}), "/stop; /load none; /start; ");
    EXPECT_TRUE(Answer().ends_with("Loading game failed!\n"));
    EXPECT_EQ(State()["running"], true);
}

TEST_F(PageLinesTest, RefusesWhatCannotBeAFileOrAGame) {
    Begin(5, 3);
    Type("a1");
    fs::create_directory("folder.tlx");
    WriteFile("there.tlx", "mine");
    struct Case {
        const char* Name;
        std::string Content;
        const char* Why;
    };
    const std::vector<Case> cases = {
        {"my game", SMALL_GAME, "error: A name with a blank in it cannot be typed.\n"},
        {"../game", SMALL_GAME,
         "error: A name is that of a file in this folder: without / and \\.\n"},
        {"good", "DIM(99,1,1)\n",
         "error: This is no saved game: Error! DIM-Line values are out of "
         "range!\n\n"},
        {"good", "", "error: This is no saved game: The file ends too soon.\n\n"},
        {"good", SMALL_GAME + std::string(65536, '#'),
         "error: The file is too large for a saved game: 64 KiB at most.\n"},
        {"previous-2", SMALL_GAME,
         "error: Kept games have this name: give the file another one.\n"},
        {"folder", SMALL_GAME, "error: folder.tlx is no file that could be replaced.\n"},
        {"there.tlx", SMALL_GAME, "ask: there.tlx"},
    };
    const long numEntries = folder_.NumEntries();
    for (const Case& one : cases) {
        EXPECT_EQ(LinesOf({.Kind = RequestKind::Open, .Text = one.Name, .Content = one.Content}),
                  "");
        EXPECT_EQ(Answer(), one.Why);
    }
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Save, .Text = "there"}), "");
    EXPECT_EQ(Answer(), "ask: there.tlx");
    EXPECT_EQ(folder_.NumEntries(), numEntries);
    EXPECT_EQ(ReadFile("there.tlx"), "mine");
    EXPECT_EQ(State()["running"], true);
    EXPECT_EQ(LinesOf({.Kind = RequestKind::Open,
                       .Text = "there.tlx",
                       .Content = SMALL_GAME,
                       .MayReplace = true}),
              "/stop; /load there.tlx; ");
    EXPECT_EQ(ReadFile("there.tlx"), SMALL_GAME);
    Ask({.Kind = RequestKind::List});
    const json games = json::parse(all_.Answers.back())["games"];
    ASSERT_EQ(games.size(), 2U) << games;  // and the one that was replaced
    const json& there = games[games[0]["name"] == "there.tlx" ? 0 : 1];
    EXPECT_EQ(there["plies"], 3);
    EXPECT_EQ(there["columns"], 3);
    EXPECT_EQ(there["over"], false);
}

// Somebody is told when a game is not kept, but not at every ply.
TEST_F(PageLinesTest, SaysThatAGameCannotBeKept) {
    Begin(5, 3);
    fs::remove_all(folder_.Path());
    Type("a1");
    EXPECT_EQ(Answer(), "error: The game cannot be kept in this folder: save it elsewhere.");
    Type("b1");
    EXPECT_EQ(Answer(), "");
    EXPECT_EQ(Play().CurrentMove, 2);
}

TEST(PageRequest, OfAnotherMomentDoesNothing) {
    LineQueue queue = {.Lines = {}, .IsWaiting = true, .Move = 4};
    EXPECT_EQ(TakeRequest(queue, ReadPageRequest(R"({"move":"a1","ply":3})")), "");
    EXPECT_EQ(TakeRequest(queue, ReadPageRequest(R"({"button":"pass","ply":5})")), "");
    EXPECT_TRUE(queue.Lines.empty());
    EXPECT_EQ(TakeRequest(queue, ReadPageRequest(R"({"button":"pass","ply":4})")), "");
    ASSERT_EQ(queue.Lines.size(), 1U);
    EXPECT_EQ(queue.Lines[0].Text, "pass");
    EXPECT_EQ(TakeRequest(queue, ReadPageRequest(R"({"move":"a1","ply":4})")),
              "It is not the moment for a move.");
    for (const char* message : {R"({"open":7})", R"({"move":"a1 b2"})", R"({"load":null})", "[1]",
                                R"({"button":"nonsense"})", R"({"save":"a\u0000b"})", ""}) {
        EXPECT_NE(TakeRequest(queue, ReadPageRequest(message)), "") << message;
    }
    EXPECT_EQ(ReadPageRequest(R"({"button":"fromhere","ply":-3})").Number, -1);
    EXPECT_EQ(ReadPageRequest(R"({"button":"fromhere","ply":1e300})").Number, -1);
}
