// What pages are to be told: the pieces in which the game hands it over, and what they add up to.
// The sum of all news is what a page needs that comes in later, and the sum of those that were not
// sent yet is all that has to wait: both stay small however much happens.
#pragma once

#include <string>
#include <vector>

struct PageNews {
    std::string Log;                 // text that was added, cut at its front when it grows too long
    int FirstPly = 0;                // from here on the game's plies are `Plies`;
    std::vector<std::string> Plies;  // texts of page/plies.h
    bool HasPlies = false;
    std::string State;                 // the latest state message; empty: as it was
    std::string Saved;                 // the game as a file, likewise
    std::vector<std::string> Answers;  // messages for those who are there, the latest of them
};

// Adds what came later.
void AddNews(PageNews& news, const PageNews& later);

// The messages that tell a page of it, but for the state and the file.
[[nodiscard]] std::vector<std::string> MessagesOf(const PageNews& news);

// All messages of the sum of all news, for a page that knows nothing.
[[nodiscard]] std::vector<std::string> AllMessagesOf(const PageNews& all);
