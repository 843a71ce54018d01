// What is asked of the game while it is busy: to hurry, or to end. A request is a bit of a
// lock-free word, so that it can be made by a signal handler and by any thread; the game looks at
// the word where it can act.
#pragma once

#include <atomic>

enum Request : int {
    REQUEST_MOVE_NOW = 1,   // whoever waits for the computer is tired of it
    REQUEST_INTERRUPT = 2,  // the same at a terminal, where it means more at a prompt
    REQUEST_HANG_UP = 4,    // the terminal has gone: the program is to end
    REQUEST_TERMINATE = 8,  // the program is to end
};

// Those that ask the computer to move at once, and those that ask for the end.
inline constexpr int HURRY_REQUESTS = REQUEST_MOVE_NOW | REQUEST_INTERRUPT;
inline constexpr int END_REQUESTS = REQUEST_HANG_UP | REQUEST_TERMINATE;

// What was asked for and not yet dropped. A search of the game ends when it is not 0.
extern std::atomic<int> Requests;
static_assert(std::atomic<int>::is_always_lock_free, "a handler may only store to such a word");

// Makes requests, bits of Request.
void MakeRequests(int requests);

// Answers whether any of the requests was made.
[[nodiscard]] bool IsRequested(int requests);

void DropRequests(int requests);

// Both at once, so that none is dropped unseen: answers whether any was made, and drops it.
[[nodiscard]] bool TakeRequests(int requests);
