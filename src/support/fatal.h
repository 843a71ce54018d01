// Messages on standard error, and the end of the process on a fault that cannot be mended.
#pragma once

// Writes the printf-formatted text to standard error. Standard output is flushed first, so that the
// two streams keep their order on one terminal or pipe.
[[gnu::format(printf, 1, 2)]] void PrintError(const char* format, ...);

// PrintError, then the end of the process with exit status 1. For broken invariants and input that
// cannot be recovered from; most messages begin with the name of the function that found the fault.
[[noreturn, gnu::format(printf, 1, 2)]] void ErrorExit(const char* format, ...);
