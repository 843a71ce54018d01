#include "support/output.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <utility>

namespace {

OutputSinks Sinks;

[[gnu::format(printf, 1, 0)]] std::string Formatted(const char* format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

}  // namespace

OutputSinks SetOutputSinks(const OutputSinks& sinks) {
    return std::exchange(Sinks, sinks);
}

void Print(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintList(format, arguments);
    va_end(arguments);
}

void PrintList(const char* format, std::va_list arguments) {
    if (Sinks.Text == nullptr) {
        std::vprintf(format, arguments);
    } else {
        Sinks.Text(Sinks.Context, Formatted(format, arguments));
    }
}

void PrintText(std::string_view text) {
    if (Sinks.Text == nullptr) {
        std::fwrite(text.data(), 1, text.size(), stdout);
    } else {
        Sinks.Text(Sinks.Context, text);
    }
}

void PrintRefusal(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    if (Sinks.Refusal == nullptr) {
        PrintList(format, arguments);
    } else {
        Sinks.Refusal(Sinks.Context, Formatted(format, arguments));
    }
    va_end(arguments);
}

void PrintErrorList(const char* format, std::va_list arguments) {
    if (Sinks.Error == nullptr) {
        FlushOutput();
        std::vfprintf(stderr, format, arguments);
    } else {
        Sinks.Error(Sinks.Context, Formatted(format, arguments));
    }
}

void PrintError(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintErrorList(format, arguments);
    va_end(arguments);
}

void FlushOutput() {
    std::fflush(stdout);
}
