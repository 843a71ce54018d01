// Signals as requests. A handler only marks in a lock-free word what was asked for; the program
// looks at it where it can act: while the computer thinks, and while a line is awaited. This is the
// one place that installs handlers.
#pragma once

#include <atomic>

// Bits of the word, one for each signal.
enum Request : int {
    REQUEST_MOVE_NOW = 1,   // SIGUSR1: whoever drives the program is tired of waiting
    REQUEST_INTERRUPT = 2,  // SIGINT
    REQUEST_HANG_UP = 4,    // SIGHUP
    REQUEST_TERMINATE = 8,  // SIGTERM
};

// What was asked for and not yet dropped. A search ends when it is not 0.
extern std::atomic<int> Requests;

// From here on SIGUSR1 is a request, and never the end of the process.
void ListenForMoveNow();

// From here on SIGINT, SIGHUP and SIGTERM are requests too: for a program that sits at a terminal.
// Those that the process was started to ignore stay ignored.
void ListenToTerminal();

// Answers whether any of the requests, bits of Request, was made.
[[nodiscard]] bool IsRequested(int requests);

void DropRequests(int requests);

// Both at once, so that none is dropped unseen: answers whether any was made, and drops it.
[[nodiscard]] bool TakeRequests(int requests);

// The number of the signal that asks for the end of the process, or 0.
[[nodiscard]] int EndingSignal();

// Waits until something can be read from standard input, be it its end or an error. Answers false
// when a request other than REQUEST_MOVE_NOW was made instead, or before: none slips by between the
// look and the wait.
[[nodiscard]] bool WaitForInput();
