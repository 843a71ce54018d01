// What a page is told, as JSON: the board with all that may be done on it, the numbers and texts
// around it, and the log.
#pragma once

#include <optional>
#include <string>

#include "board/game_view.h"

enum class PlayState { Waiting, Thinking, Ended };

struct PageInput {
    GameView View;
    PlayState State = PlayState::Thinking;
    bool Watching = false;  // a Talurex elsewhere is looked at: nothing can be done
    int ExitStatus = 0;     // of a Talurex that has ended
    std::string LastWords;  // and what it printed last
};

// The ply that leads from one picture to the next.
struct PlyStep {
    bool Pass = false;
    FromTo Made;
    std::vector<Place> Removed;
};

// Answers nothing unless exactly one legal ply leads from `before` to `after`.
[[nodiscard]] std::optional<PlyStep> FindStep(const Picture& before, const Picture& after);

// The whole state. `before` is what the page was shown last; null when it has been shown nothing.
[[nodiscard]] std::string StateMessage(const PageInput& input, const Picture* before, int serial);

[[nodiscard]] std::string LogMessage(const std::string& text, bool reset);
[[nodiscard]] std::string ErrorMessage(const std::string& text);
