#include "support/fatal.h"

#include <cstdarg>

#include "support/output.h"

void ErrorExit(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintErrorList(format, arguments);
    va_end(arguments);
    throw ProgramEnd{};
}
