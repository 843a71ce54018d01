// The end of the program on a fault that cannot be mended.
#pragma once

// Thrown to end the program with this status: `main` returns it, and all that is open on the way
// there is closed. Who shows a game that must go on catches it where the line or the turn began.
struct ProgramEnd {
    int Status = 1;
};

// Prints the message on standard error, then throws the end of the program with status 1. For
// broken invariants and input that cannot be recovered from; most messages begin with the name of
// the function that found the fault.
[[noreturn, gnu::format(printf, 1, 2)]] void ErrorExit(const char* format, ...);
