// What Talurex prints, taken apart: lines of text, drawings of the board, and the prompt at which
// it waits for a line. Through a pipe the drawing always carries its colours, and these tell the
// owner of every space and whether it holds a life stone, whatever marks the settings ask for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rules/position.h"

// A board as it was drawn. Of the position only the spaces and the side to move are filled.
struct BoardDrawing {
    int Columns = 0;
    int Rows = 0;
    Position Board;
};

// "Move (3/7), your move: ": the shown position, the last one, and whether the game is running.
struct Prompt {
    int Move = 0;
    int LastMove = 0;
    bool Running = false;
};

enum class OutputKind { Text, Drawing, Prompt };

struct OutputPart {
    OutputKind Kind = OutputKind::Text;
    std::string Text;  // of a Text or a Prompt, without colours; a whole line ends with a line feed
    BoardDrawing Drawing;
    Prompt At;
};

// What was read and is not yet understood. Bounded, whatever comes in.
struct OutputReader {
    std::string Line;                // begun, and not ended yet
    std::vector<std::string> Drawn;  // the lines of a drawing that has begun, its heading first
    bool Blank = false;              // an empty line was read; it is dropped before a drawing
};

// Takes the bytes that were read and answers what they complete. A prompt is recognised only at the
// very end of what was read: Talurex prints nothing behind it until it has got its line.
[[nodiscard]] std::vector<OutputPart> ReadOutput(OutputReader& reader, std::string_view bytes);

// Reads the lines of a whole drawing, without their line feeds. Answers false, and leaves `drawing`
// as it is, when anything in it is not as Talurex draws it.
[[nodiscard]] bool ReadDrawing(const std::vector<std::string>& lines, BoardDrawing& drawing);
