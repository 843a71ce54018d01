// Signals as requests (support/requests.h): a handler only makes one. This is the one place that
// installs handlers, and that waits for a line or a signal.
#pragma once

// From here on SIGUSR1 is a request, and never the end of the process.
void ListenForMoveNow();

// From here on SIGINT, SIGHUP and SIGTERM are requests too: for a program that sits at a terminal.
// Those that the process was started to ignore stay ignored.
void ListenToTerminal();

// The number of the signal that asks for the end of the process, or 0.
[[nodiscard]] int EndingSignal();

// Waits until something can be read from standard input, be it its end or an error. Answers false
// when a request other than REQUEST_MOVE_NOW was made instead, or before: none slips by between the
// look and the wait.
[[nodiscard]] bool WaitForInput();
