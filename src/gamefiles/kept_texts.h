// How a game is named that was kept when the program ended, and what is said of it.
#pragma once

inline constexpr char KEPT_GAME_NAME[] = "autosave";

// With the name that the load command takes.
inline constexpr char GAME_IS_KEPT[] =
    "The game is kept: /stop, /load %s and /cont go on with it.\n";
inline constexpr char GAME_IS_NOT_KEPT[] = "The game could not be kept!\n";
