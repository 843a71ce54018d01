// All that the program prints: on standard output and standard error, unless somebody who shows the
// game elsewhere takes it.
#pragma once

#include <cstdarg>
#include <string_view>

// Who takes what is printed. A null function leaves its text to the standard stream.
struct OutputSinks {
    void (*Text)(void* context, std::string_view text) = nullptr;
    void (*Error)(void* context, std::string_view text) = nullptr;
    void (*Refusal)(void* context, std::string_view text) = nullptr;  // null: as Text
    void* Context = nullptr;
};

// From here on the text goes there. Answers where it went before. Not while another thread may
// print.
OutputSinks SetOutputSinks(const OutputSinks& sinks);

// Prints the text, printf-formatted or as it stands.
[[gnu::format(printf, 1, 2)]] void Print(const char* format, ...);
[[gnu::format(printf, 1, 0)]] void PrintList(const char* format, std::va_list arguments);
void PrintText(std::string_view text);

// Prints why something that was asked for is not done: text like any other, of which whoever shows
// the game may make more.
[[gnu::format(printf, 1, 2)]] void PrintRefusal(const char* format, ...);

// Prints a message on standard error. Standard output is flushed first, so that the two streams
// keep their order on one terminal or pipe.
[[gnu::format(printf, 1, 2)]] void PrintError(const char* format, ...);
[[gnu::format(printf, 1, 0)]] void PrintErrorList(const char* format, std::va_list arguments);

// Hands on what the program has printed so far.
void FlushOutput();
