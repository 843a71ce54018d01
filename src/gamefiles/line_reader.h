// What the readers of game files share: lines without comments, and drawings of the board.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// The most characters that a line may have, its line feed among them; a longer one ends the
// program.
inline constexpr int GAME_LINE_LENGTH = 199;

// Reads the next line that is not a comment (one that begins with '#'), trimmed at both ends. An
// empty line counts. Answers 0, or 1 when the end of the file came first; `line` is then of no use.
[[nodiscard]] int GetNextGoodLine(std::FILE* file, std::string& line);

// Takes the first stone of a drawn row off the front of `line`, which is then trimmed: stones may
// be separated by blanks or not. `signs` holds the character of each colour code, WHITE to EMPTY.
// Answers the colour code, or -1 for any other character or an empty line.
[[nodiscard]] int TakeStone(std::string& line, std::string_view signs);
