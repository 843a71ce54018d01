// Whole runs of the program, as a user starts it.
#pragma once

#include <string>
#include <vector>

struct ProgramRun {
    std::string Output;  // standard output
    std::string Errors;  // standard error
    int ExitStatus = 0;  // or minus the number of the signal that ended it
};

// A fresh folder, removed with all that is in it when the record goes.
struct TemporaryFolder {
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path;
};

void WriteFile(const std::string& path, const std::string& text);
[[nodiscard]] std::string ReadFile(const std::string& path);

// Runs `command` (the program's path, then its arguments) in `folder` with `input` on standard
// input, to its end.
[[nodiscard]] ProgramRun RunProgram(const std::vector<std::string>& command,
                                    const std::string& input, const std::string& folder);
