#include "board/kept_game.h"

#include <string_view>

#include "support/numbers.h"

namespace {

constexpr std::string_view BREAK_LINE = "BREAK\n";

// The signs of WHITE, BLACK, LIFE and EMPTY in the drawing of a start position.
constexpr std::string_view STONE_SIGNS = "12*.";

bool HasStones(const Picture& picture) {
    Picture empty = picture;
    for (auto& column : empty.Board.Spaces) {
        column.fill({.Height = 0, .Life = 0, .Owner = EMPTY});
    }
    return !SameStones(picture, empty);
}

// The beginning of a game of which there is no copy: its board and, behind a random start, the
// stones on it.
std::string BeginText(const GameView& view) {
    const Picture& begin = view.Begin;
    std::string text = "DIM(" + std::to_string(begin.Columns) + ',' + std::to_string(begin.Rows) +
                       ',' + std::to_string(Max(1, view.GameLifeStones)) + ")\n";
    if (!HasStones(begin)) {
        return text;
    }
    UseBoardOf(begin);
    for (int y = 0; y < begin.Rows; ++y) {
        text += ": ";
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            text += STONE_SIGNS[begin.Board.Spaces[x][y].Owner];
        }
        text += '\n';
    }
    return text;
}

// Takes the mark off the end of a saved game that says that it goes on. Answers where the line of a
// ply of WHITE ends that waits for BLACK's, or the length of the text when none waits.
std::size_t OpenEnd(std::string& text) {
    if (text.ends_with(std::string("\n") + std::string(BREAK_LINE))) {
        text.erase(text.size() - BREAK_LINE.size());
    }
    const std::size_t waiting = text.rfind(" BREAK\n");
    if (waiting == std::string::npos) {
        return text.size();
    }
    text.erase(waiting, std::string_view(" BREAK").size());
    return waiting;
}

}  // namespace

std::string KeptGameText(const GameView& view, const std::string& copy) {
    if (!view.HasCopy && (!view.ArePliesKnown || view.Begin.Columns == 0)) {
        return "";
    }
    std::string text = view.HasCopy ? copy : BeginText(view);
    if (text.empty() || !view.ArePliesKnown || view.NewPlies.empty()) {
        return text;
    }
    const std::size_t end = OpenEnd(text);
    bool isWaiting = end < text.size();
    std::size_t first = 0;
    if (isWaiting && !view.NewPlies.front().IsWhites) {
        text.insert(end, "  " + view.NewPlies.front().Text);
        first = 1;
    }
    isWaiting = false;
    for (std::size_t i = first; i < view.NewPlies.size(); ++i) {
        const Ply& ply = view.NewPlies[i];
        text += isWaiting ? (ply.IsWhites ? "\n" : "  ") : "";
        text += ply.Text;
        text += ply.IsWhites ? "" : "\n";
        isWaiting = ply.IsWhites;
    }
    // WHITE may have made the last placement, and moves next.
    const bool waitsForBlack = isWaiting && view.End.Board.ActivePlayer == BLACK;
    text += isWaiting && !waitsForBlack ? "\n" : "";
    return text + (waitsForBlack ? " BREAK\n" : std::string(BREAK_LINE));
}
