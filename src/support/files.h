// Thin wrappers around text files that report failures in the program's own words.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

// The modes in which text files are opened.
inline constexpr const char* FILE_READ_MODE = "rb";
inline constexpr const char* FILE_WRITE_MODE = "wb";

// Opens `path` with the mode of `fopen`. Answers 0, or 1 after a line on standard output; `file` is
// then null and the caller decides how to go on.
[[nodiscard]] int FileOpen(const std::string& path, std::FILE*& file, const char* accessMode);
[[nodiscard]] int FileOpenToRead(const std::string& path, std::FILE*& file);
[[nodiscard]] int FileOpenToWrite(const std::string& path, std::FILE*& file);

// The line of a failed FileOpen, for those who open a file in another way.
void PrintFileOpenError(const std::string& path, const char* accessMode);

// A file that is closed when an error passes by; who gets that far takes it out and closes it.
struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

// Closes the file; answers 0. A failure ends the program.
int FileClose(std::FILE* file);

// Reads one line of at most maxLength characters, its line feed among them, into `line` and answers
// how many characters were read, or -1 when nothing is left. A longer line ends the program, and
// so does a last one of maxLength characters without a line feed. A NUL byte ends the line's text,
// as in a C string: behind one the limit is not noticed, and what is beyond it is a line of its
// own.
[[nodiscard]] int FileReadLine(int maxLength, std::string& line, std::FILE* file);

// Reads at most maxLength characters, up to and with a line feed, into `line`: one `fgets`. What
// does not fit is left for the next call. Answers false when nothing is left. A NUL byte ends the
// line's text.
[[nodiscard]] bool ReadPiece(int maxLength, std::string& line, std::FILE* file);

// Whether there is something of that name, be it a link that leads nowhere.
[[nodiscard]] bool FileExists(const std::string& name);

// Opens the null device on every standard stream that the process was started without. Otherwise
// the next file opened would take the stream's place, and the board would be printed into it.
void EnsureStandardStreams();
