// Names in the current folder that only one process may use at a time.
#pragma once

#include <string>

// Claims the name for this process, for as long as it lives. Answers false when another process has
// claimed it.
[[nodiscard]] bool ClaimName(const std::string& name);
