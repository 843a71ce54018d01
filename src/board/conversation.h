// The talk with Talurex: lines wait in a queue until it prompts, and what it prints between two
// prompts belongs to one of them. Some lines are the board's own; they and their answers are kept
// from the log.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "board/game_view.h"
#include "board/program_output.h"

// The longest line that Talurex takes at once, in bytes.
inline constexpr std::size_t MAX_TYPED_LENGTH = 198;

enum class LineKind {
    Typed,   // as it stands
    Move,    // a move: by the move command while the game is stopped
    Replace  // as it stands, but a running game is stopped first
};

struct QueuedLine {
    std::string Text;
    LineKind Kind = LineKind::Typed;
};

struct Conversation {
    GameView View;
    OutputReader Output;
    std::deque<QueuedLine> Queue;
    bool Asking = false;       // the line that Talurex is busy with is a question of our own
    bool Heard = false;        // Talurex has printed something
    std::string Log;           // the latest text, whole lines at its front
    std::string NewText;       // the part of it that has not been taken yet
    std::string SafeCopy;      // file for a copy of the game, kept in case that Talurex is killed
    bool SafeCopyDue = false;  // it is to be written at the next prompt
    int NumCopied = 0;         // the view's NumChanges when the copy was last written
};

[[nodiscard]] Conversation NewConversation();

// Why the line cannot be typed; empty when it can.
[[nodiscard]] std::string RefusalOf(std::string_view line);

// Queues a line. Answers false when too many are waiting.
[[nodiscard]] bool QueueLine(Conversation& talk, QueuedLine line);

// The bytes to write to Talurex now: the next line when it waits for one, else nothing.
[[nodiscard]] std::string NextInput(Conversation& talk);

// True when Talurex waits for people, and what it was last asked is known.
[[nodiscard]] bool IsSettled(const Conversation& talk);

// Takes one part of the output. Answers whether what is shown has changed.
bool TakePart(Conversation& talk, const OutputPart& part);

// Takes bytes of the display link up to the end of the next update, which is then in the view. A
// line that is none is skipped. Answers whether what is shown has changed; `bytes` becomes what is
// left, and is empty when there was no whole update.
bool TakeDisplayBytes(Conversation& talk, std::string& begunLine, std::string_view& bytes);

// What has been added to the log since the last call.
[[nodiscard]] std::string TakeNewText(Conversation& talk);

// The last `count` lines of the log.
[[nodiscard]] std::string LastLines(const Conversation& talk, int count);
