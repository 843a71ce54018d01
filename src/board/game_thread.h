// The game on a thread of its own, so that no thought and no slow disk keeps pages waiting. The
// settings, the rules and the record belong to that thread; between it and the others there are
// only the lines that pages ask for, the requests (support/requests.h), and finished news.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "page/page_game.h"

struct GameThread {
    PageGame Page;               // the thread's own once it runs
    std::function<void()> Wake;  // called by the thread when there are news, or it has ended
    std::thread Thread;

    std::mutex Mutex;  // of all that follows
    std::condition_variable Changed;
    LineQueue Queue;
    PageNews News;  // that were not taken yet
    int Pause = 0;  // milliseconds before each turn of a game without people
    bool IsEnding = false;
    bool HasEnded = false;
    int ExitStatus = 0;
};

// Starts the thread. The game's settings, weights and file are set already.
void StartGame(GameThread& game);

// Takes a page's request. Answers an empty text, or why nothing was done.
[[nodiscard]] std::string AskGame(GameThread& game, const PageRequest& request);

// What there is to tell since the last call.
[[nodiscard]] PageNews TakeNews(GameThread& game);

// Asks the thread to end, in the middle of a thought if need be.
void AskToEnd(GameThread& game);

// Whether the thread has ended, and nothing more will come.
[[nodiscard]] bool HasEnded(GameThread& game);
