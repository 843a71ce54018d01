// What pages ask for, and what of it is not carried out yet.
#pragma once

#include <deque>
#include <string>
#include <string_view>

enum class RequestKind {
    None,      // not understood
    Token,     // the first message of every page
    Line,      // a line as if typed
    Replace,   // a line that wants a running game stopped first
    Move,      // a placement or a tower move: by the move command while the game is stopped
    MoveNow,   // hurry the computer
    Undo,      // to one's own last choice
    Fill,      // place the rest of the stones at random
    FromHere,  // play on from position `Number`
    GoOn,      // with the game that is offered: one that was replaced, or found at the start
    Load,      // the saved game `Text`
    Save,      // under the name `Text`; over an older file only with MayReplace
    Open,      // put `Content` among the saved games as `Text`, likewise, and load it
    List,      // tell which saved games there are
    Download,  // the text of the game
    Pause,     // wait `Number` milliseconds before each turn of a game without people
};

struct PageRequest {
    RequestKind Kind = RequestKind::None;
    std::string Text = {};  // token, line, move or name
    std::string Content = {};
    int Number = -1;  // of the position that was shown where it was asked for; -1: any
    bool MayReplace = false;
};

// Reads a message. Anything may come in.
[[nodiscard]] PageRequest ReadPageRequest(std::string_view text);

struct LineQueue {
    std::deque<PageRequest> Lines;  // all that the game carries out one after the other
    bool IsWaiting = false;         // the game waits for a line, and has none
    int Move = 0;                   // the number of the shown position
};

// Takes a page's request: queues it, or asks a busy game to hurry, which some wait for. Answers an
// empty text, or why nothing was done.
[[nodiscard]] std::string TakeRequest(LineQueue& queue, const PageRequest& request);
