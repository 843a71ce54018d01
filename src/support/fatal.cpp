#include "support/fatal.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

[[gnu::format(printf, 1, 0)]] void WriteError(const char* format, std::va_list arguments) {
    std::fflush(stdout);
    std::vfprintf(stderr, format, arguments);
}

}  // namespace

void PrintError(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    WriteError(format, arguments);
    va_end(arguments);
}

void ErrorExit(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    WriteError(format, arguments);
    va_end(arguments);
    std::exit(1);
}
