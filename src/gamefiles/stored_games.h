// The saved games of the current folder, as somebody sees them who chooses among them. They are
// looked into quietly: nothing is printed, and the game in memory and its settings stay.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A larger file is taken for no game: the longest one is a quarter of this.
inline constexpr std::size_t MAX_GAME_LENGTH = 65536;

struct StoredGame {
    std::string Name;          // of the file
    std::int64_t Written = 0;  // seconds since 1970
    int Columns = 0;
    int Rows = 0;
    int NumPlies = 0;
    bool IsOver = false;
    int White = 0;  // stones of its last position
    int Black = 0;
};

// Looks into a file; nothing when it is no regular one, too large, or no saved game.
[[nodiscard]] std::optional<StoredGame> LookIntoGame(const std::string& name);

// The latest of the saved games in the current folder, the latest first.
[[nodiscard]] std::vector<StoredGame> ListGames();

// Why a text is no saved game, in the words of the load command; empty when it is one.
[[nodiscard]] std::string FaultOfGame(std::string_view text);
