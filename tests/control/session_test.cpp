// Lines typed at random into a session and into the whole program: both print the same.
#include "control/session.h"

#include <filesystem>
#include <memory>
#include <random>

#include <gtest/gtest.h>

#include "common/board_text.h"
#include "common/random_games.h"
#include "common/run_program.h"
#include "common/scratch_folder.h"
#include "rules/notation.h"
#include "support/output.h"
#include "support/random.h"

namespace {

constexpr std::array LINES = {
    "/back",     "/back 4",         "/forward",       "/forward 2", "/undo",      "/cont",
    "/start",    "/stop",           "/redraw",        "/save one",  "/load one",  "/new",
    "/load two", "/boardsize 5 3",  "/boardsize 7 4", "/players 0", "/players 1", "/players 2",
    "/color r",  "/color w",        "/color b",       "/level 300", "/level 0",   "/level 1200",
    "/ev 1100",  "/evaluate d1",    "/randomsetup 1", "/status 0",  "/status 1",  "/randomsetup 0",
    "/help lev", "/lifestones 2",   "nonsense",       "",           "/move p",    "/move a1",
    "  /re  ",   "/highlighting 0", "/gui",           "e3-e4",      "pass",       "/color",
};

// Collects what is printed.
void Collect(void* context, std::string_view text) {
    *static_cast<std::string*>(context) += text;
}

// A line for the session: often a move that can be made.
std::string SomeLine(std::mt19937& random, const Session& session) {
    if (RandomBelow(random, 4) == 0) {
        return LINES[static_cast<std::size_t>(RandomBelow(random, LINES.size()))];
    }
    Move move;
    Position next;
    MakeRandomPly(random, ShownPosition(session.Play), move, next);
    const std::string text = GetMoveString(move, ShownPosition(session.Play));
    return GlobCfg.GameRunFlag == 1 ? text : "/move " + text;
}

// Plays until a line is awaited, and answers the prompt.
std::string PlayToPrompt(Session& session) {
    while (ComputerIsToMove(session)) {
        PlayComputerTurn(session);
    }
    return PromptText(session);
}

struct TypedSession {
    std::string Input;
    std::string Output;
};

TypedSession TypeAtRandom(std::mt19937& random, unsigned seed, int numLines) {
    TypedSession typed;
    SetOutputSinks({.Text = Collect, .Error = Collect, .Context = &typed.Output});
    SeedRandom(seed);
    const auto session = std::make_unique<Session>();
    SetLevel(GlobCfg.ComputerLevel, session->Weights);
    BeginPlay(*session);
    for (int i = 0; i < numLines; ++i) {
        typed.Output += PlayToPrompt(*session);
        const std::string line = SomeLine(random, *session);
        typed.Input += line + '\n';
        TypeLine(*session, line);
    }
    typed.Output += PlayToPrompt(*session) + '\n';  // the end of input ends the line
    SetOutputSinks({});
    return typed;
}

}  // namespace

TEST(Session, PrintsWhatTheProgramPrints) {
    std::mt19937 random(17);
    const std::filesystem::path before = std::filesystem::current_path();
    for (unsigned seed = 1; seed <= 25; ++seed) {
        const ScratchFolder own;
        const ScratchFolder others;
        const std::array<int, 4> settings = {RandomBelow(random, 3), RandomBelow(random, 3),
                                             RandomBelow(random, 2), RandomBelow(random, 3000)};
        UseBoard(3 + RandomBelow(random, 9), 1 + RandomBelow(random, 5));
        GlobCfg.NumHumanPlayers = settings[0];
        GlobCfg.ComputerColor = settings[1];
        GlobCfg.SetupMode = settings[2];
        GlobCfg.ComputerLevel = settings[3];
        WriteFile(others.File("talurex.cfg"),
                  "NUM_HUMAN_PLAYERS " + std::to_string(settings[0]) + "\nCOMPUTER_COLOR " +
                      std::to_string(settings[1]) + "\nSETUP_MODE " + std::to_string(settings[2]) +
                      "\nCOMPUTER_LEVEL " + std::to_string(settings[3]) + "\nBOARD_X_DIM " +
                      std::to_string(GlobCfg.BoardXDim) + "\nBOARD_Y_DIM " +
                      std::to_string(GlobCfg.BoardYDim) + "\nRANDOM_SEED " + std::to_string(seed));
        std::filesystem::current_path(own.Path());
        const TypedSession typed = TypeAtRandom(random, seed, 60);
        std::filesystem::current_path(before);
        const ProgramRun run = RunProgram({TALUREX_PROGRAM}, typed.Input, others.Path());
        const std::string heading =
            run.Output.substr(0, run.Output.find("\nUsing ") + 1);  // of the start
        EXPECT_EQ(heading + typed.Output, run.Output) << "seed " << seed;
        EXPECT_EQ(run.Errors, "");
        EXPECT_EQ(ReadFile(own.File("one.tlx")), ReadFile(others.File("one.tlx")));
    }
}
