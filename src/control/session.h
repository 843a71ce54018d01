// The game as people drive it, turn by turn and line by line. Whoever shows it, on a terminal or on
// a page, asks whose turn it is, has the computer play or hands on a typed line, and finds all that
// came of it in the session and in what was printed (support/output.h). Nothing here waits for
// anybody, or ends the program but by throwing (support/fatal.h).
#pragma once

#include <string>

#include "control/play_state.h"
#include "engine/thinking.h"
#include "kernel/weights.h"

// The longest line that is taken at once; what is longer is typed in pieces.
inline constexpr std::size_t MAX_TYPED_LENGTH = 198;

// One a process: the settings (GlobCfg), chance, requests and the display link are its own.
struct Session {
    PlayState Play;
    EvalWeights Weights;  // of the computer's level

    // Who is told how the computer's thoughts get on; null: nobody.
    void (*Report)(void* context, const ThoughtProgress& progress) = nullptr;
    void* ReportContext = nullptr;
};

// Builds the first game, as the settings say, and shows it.
void BeginPlay(Session& session);

// Whether the computer is to make the next turn. Otherwise a line is awaited, unless QuitFlag is
// set.
[[nodiscard]] bool ComputerIsToMove(const Session& session);

// Makes the computer's turn; the next one begins its search at the depth that was reached. A
// request to hurry (support/requests.h) ends the thought early, and stops a game without people;
// behind a request to end nothing is played.
void PlayComputerTurn(Session& session);

// Carries out a typed line: a command, when it begins with '/' or the game is stopped, else a move.
void TypeLine(Session& session, std::string line);

// What stands in front of a line that is awaited.
[[nodiscard]] std::string PromptText(const Session& session);

// The requests as the stop flag of the session's thoughts, and who is told of them.
[[nodiscard]] ThoughtWatch WatchOf(const Session& session);
