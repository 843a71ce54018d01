#include "board/game_thread.h"

#include <chrono>
#include <csignal>
#include <exception>
#include <optional>
#include <utility>

#include "config/glob_cfg.h"
#include "display/gui_link.h"
#include "page/page_lines.h"
#include "support/fatal.h"
#include "support/output.h"
#include "support/requests.h"

namespace {

void HandOver(GameThread& game, const PageNews& news, GameState state) {
    {
        const std::lock_guard lock(game.Mutex);
        AddNews(game.News, news);
        game.Queue.IsWaiting = state == GameState::Waiting && game.Queue.Lines.empty();
        game.Queue.Move = game.Page.Told.CurrentMove;
    }
    game.Wake();
}

// The next line, or nothing when the thread is to end.
std::optional<PageRequest> AwaitLine(GameThread& game) {
    std::unique_lock lock(game.Mutex);
    game.Changed.wait(lock, [&] { return game.IsEnding || !game.Queue.Lines.empty(); });
    if (game.IsEnding) {
        return {};
    }
    PageRequest line = std::move(game.Queue.Lines.front());
    game.Queue.Lines.pop_front();
    return line;
}

// Gives people who only look the time to do so, unless somebody asks for something.
void PauseBeforeTurn(GameThread& game) {
    std::unique_lock lock(game.Mutex);
    game.Changed.wait_for(lock, std::chrono::milliseconds(game.Pause),
                          [&] { return game.IsEnding || IsRequested(HURRY_REQUESTS); });
}

// Plays until the game is quit or its end is asked for. Answers whether it was quit.
bool Play(GameThread& game) {
    BeginPageGame(game.Page);
    while (!IsRequested(END_REQUESTS)) {
        if (HasComputerTurn(game.Page)) {
            if (GlobCfg.NumHumanPlayers == 0) {
                PauseBeforeTurn(game);
            }
            PlayPageTurn(game.Page);
        } else if (const std::optional<PageRequest> line = AwaitLine(game)) {
            CarryOut(game.Page, *line);
        }
        if (game.Page.Game.Play.QuitFlag != 0) {
            return true;
        }
    }
    return false;
}

void Run(GameThread& game) {
    int status = 0;
    std::string lastWords;
    try {
        lastWords = Play(game) ? "" : "The board was closed.";
    } catch (const ProgramEnd& end) {
        status = end.Status;
    } catch (const std::exception& fault) {
        status = 1;
        PrintError("Error: %s\n", fault.what());
    }
    TellPageEnd(game.Page, status, lastWords);
    CloseGuiLink();
    {
        const std::lock_guard lock(game.Mutex);
        game.HasEnded = true;
        game.ExitStatus = status;
    }
    game.Wake();
}

}  // namespace

void StartGame(GameThread& game) {
    game.Page.Tell = [&game](const PageNews& news, GameState state) {
        HandOver(game, news, state);
    };
    // Signals go to the thread that waits for them.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    game.Thread = std::thread([&game] { Run(game); });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

std::string AskGame(GameThread& game, const PageRequest& request) {
    const std::lock_guard lock(game.Mutex);
    if (game.IsEnding || game.HasEnded) {
        return "Talurex has ended.";
    }
    if (request.Kind == RequestKind::Pause) {
        game.Pause = request.Number;
        return "";
    }
    std::string refusal = TakeRequest(game.Queue, request);
    game.Changed.notify_one();
    return refusal;
}

PageNews TakeNews(GameThread& game) {
    const std::lock_guard lock(game.Mutex);
    return std::exchange(game.News, {});
}

void AskToEnd(GameThread& game) {
    const std::lock_guard lock(game.Mutex);
    game.IsEnding = true;
    MakeRequests(REQUEST_TERMINATE);
    game.Changed.notify_one();
}

bool HasEnded(GameThread& game) {
    const std::lock_guard lock(game.Mutex);
    return game.HasEnded;
}
