// The way of the page into the user's browser: by a file that only the user can read, since an
// address on a command line could be read by all.
#pragma once

#include <string>

// Opens the address in the browser; does nothing where there is no screen. `file` becomes the name
// of the file that led there, to be removed when the page has gone. Answers false when it failed.
[[nodiscard]] bool OpenPage(const std::string& address, std::string& file);
