// The game that goes on, on disk: written again and again, so that nothing is lost however the
// program ends, and the games whose place it took.
#pragma once

#include <functional>
#include <string>
#include <string_view>

// The name of a kept game, as the load command takes it.
inline constexpr char KEPT_GAME_NAME[] = "autosave";

// How many games that were replaced are held, the latest as previous.tlx.
inline constexpr int MAX_PREVIOUS_GAMES = 5;

struct KeptGame {
    std::string File;         // autosave.tlx or, where that is taken, autosave-2.tlx and so on
    std::string Text;         // what was written last; empty: the file does not hold this game yet
    bool IsUpToDate = false;  // all was written
    std::string Found;        // the text of a game that was found at the start, and not over
    int NumFoundPlies = 0;
};

// Chooses the file, in the current folder: the first that is free, or holds a game and no other
// program plays with; `claim` tells whether a name is ours. A game that is found there is put
// aside. Without a file nothing is kept.
void BeginKeeping(KeptGame& kept, const std::function<bool(const std::string& name)>& claim);

// Makes the text, of a saved game, the content of the file, unless it is that already. Does not
// wait for the disk, and says nothing; what could not be written is tried again next time.
void KeepText(KeptGame& kept, const std::string& text);

// Another game takes the place of the one that was kept. One with plies in no other file becomes
// previous.tlx, the older ones previous-2.tlx and so on; else its file goes.
void PutGameAside(KeptGame& kept, bool hasNewPlies);

// The name of the previous game with this text, as the load command takes it; empty when it is
// gone.
[[nodiscard]] std::string FindPrevious(const std::string& text);

// Whether a file's name is one of those that kept games have.
[[nodiscard]] bool IsKeptName(std::string_view fileName);

// What the load command calls the file.
[[nodiscard]] std::string NameToLoad(const KeptGame& kept);

// Says on standard error that a game was kept under that name, and how to go on with it, or that it
// was not.
void SayWhetherKept(bool isKept, const std::string& name);
