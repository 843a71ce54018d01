#include "gamefiles/line_reader.h"

#include "support/files.h"
#include "support/text.h"

int GetNextGoodLine(std::FILE* file, std::string& line) {
    do {
        if (FileReadLine(GAME_LINE_LENGTH, line, file) < 0) {
            return 1;
        }
        EatLeadingAndTrailingWhitespace(line);
    } while (line.starts_with('#'));
    return 0;
}

int TakeStone(std::string& line, std::string_view signs) {
    if (line.empty()) {
        return -1;
    }
    const std::size_t color = signs.find(line.front());
    if (color == std::string_view::npos) {
        return -1;
    }
    line.erase(0, 1);
    EatLeadingAndTrailingWhitespace(line);
    return static_cast<int>(color);
}
