// Names that only one board may use at a time.
#pragma once

#include <string>

// Claims the name of a file in the current folder for this process, for as long as it lives.
// Answers false when another process has claimed it.
[[nodiscard]] bool ClaimName(const std::string& name);
