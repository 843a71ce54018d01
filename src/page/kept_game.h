// The game of the page on disk: it is written after every ply, so that nothing is lost however the
// program ends, and games that others take the place of are put aside.
#pragma once

#include <functional>
#include <string>

#include "control/play_state.h"

// How many games that were replaced are held, the latest as previous.tlx.
inline constexpr int MAX_PREVIOUS_GAMES = 5;

struct KeptGame {
    std::string File;         // autosave.tlx or, where that is taken, autosave-2.tlx and so on
    std::string Text;         // what was written last; empty: the file does not hold this game yet
    bool IsUpToDate = false;  // the file holds the game as it is now
};

// Chooses the file, in the current folder: the first that is free, or holds a game and no other
// board plays with; `claim` tells whether a name is ours. A game that is found there is put aside.
// Without a file nothing is kept.
void BeginKeeping(KeptGame& kept, const std::function<bool(const std::string& name)>& claim);

// Writes the game as it is now, with how it is played in a comment behind it, unless it has no
// plies of its own or nothing has changed. Says nothing; what could not be written is tried again
// next time.
void KeepPlay(KeptGame& kept, const PlayState& play);

// What the load command calls the file.
[[nodiscard]] std::string NameToLoad(const KeptGame& kept);

// Another game takes the place of the one that was kept. One with plies in no other file becomes
// previous.tlx, the older ones previous-2.tlx and so on; else its file goes.
void PutGameAside(KeptGame& kept, bool hasNewPlies);
