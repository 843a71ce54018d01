// Whole runs of the program, as a user starts it.
#pragma once

#include <string>
#include <vector>

#include "common/scratch_folder.h"

struct ProgramRun {
    std::string Output;  // standard output
    std::string Errors;  // standard error
    int ExitStatus = 0;  // or minus the number of the signal that ended it
};

// Runs `command` (the program's path, then its arguments) in `folder` with `input` on standard
// input, to its end.
[[nodiscard]] ProgramRun RunProgram(const std::vector<std::string>& command,
                                    const std::string& input, const std::string& folder);
