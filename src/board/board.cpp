#include "board/board.h"

#include <chrono>
#include <utility>

#include <boost/asio/post.hpp>
#include <unistd.h>

#include "gamefiles/kept_game.h"
#include "page/page_state.h"
#include "support/output.h"

namespace {

using boost::system::error_code;

constexpr std::chrono::seconds END_PATIENCE(5);      // with a game that hangs
constexpr std::chrono::seconds PARTING_PATIENCE(1);  // with pages that do not read

void Tell(Board& board, const PageNews& news) {
    AddNews(board.All, news);
    for (std::string& message : MessagesOf(news)) {
        SendToPages(board.Web, {std::make_shared<const std::string>(std::move(message))});
    }
    if (!news.State.empty()) {
        SendToPages(board.Web, {std::make_shared<const std::string>(news.State), true});
    }
}

void PartFromPages(Board& board) {
    board.IsOver = true;
    board.Web.OnEmpty = [&board] { board.Context.stop(); };
    CloseWebServer(board.Web);
    board.EndTimer.expires_after(PARTING_PATIENCE);
    board.EndTimer.async_wait([&board](const error_code& cancelled) {
        if (!cancelled) {
            board.Context.stop();
        }
    });
}

// Says on the terminal what became of a game that was ended from there.
void SayWhatBecame(const Board& board) {
    const PageGame& page = board.Game.Page;
    if (board.IsEnding && page.Game.Play.HasNewPlies) {
        SayWhetherKept(page.Kept.IsUpToDate, NameToLoad(page.Kept));
    }
}

void TakeWhatIsNew(Board& board) {
    const bool isOver = HasEnded(board.Game);  // before the news, of which these are then the last
    Tell(board, TakeNews(board.Game));
    if (isOver && !board.IsOver) {
        board.Game.Thread.join();
        SetOutputSinks({});
        SayWhatBecame(board);
        PartFromPages(board);
    }
}

}  // namespace

void BeginPlaying(Board& board) {
    board.Web.OnPage = [&board] { return AllMessagesOf(board.All); };
    board.Web.OnMessage = [&board](std::string_view message) {
        const PageRequest request = ReadPageRequest(message);
        if (request.Kind == RequestKind::Download) {
            return FileMessage(board.All.Saved);
        }
        const std::string refusal = AskGame(board.Game, request);
        return refusal.empty() ? "" : ErrorMessage(refusal);
    };
    board.Game.Wake = [&board] {
        boost::asio::post(board.Context, [&board] { TakeWhatIsNew(board); });
    };
    StartGame(board.Game);
}

void BeginWatching(Board& board) {
    board.IsWatching = true;
    board.Web.OnPage = [&board] { return AllMessagesOf(board.All); };
    board.Web.OnMessage = [](std::string_view) {
        return ErrorMessage("This board is for looking only.");
    };
    board.Display.OnLine = [&board](std::string_view line) {
        PageNews news;
        if (TakeWatchedLine(board.Watched, line, news)) {
            Tell(board, news);
        }
    };
    board.Display.OnConnection = [&board](bool isConnected) {
        Tell(board, NoteConnection(board.Watched, isConnected));
    };
    Tell(board, BeginWatchedGame(board.Watched));
}

void EndBoard(Board& board) {
    if (board.IsOver) {
        return;
    }
    if (board.IsWatching) {
        Tell(board, EndWatchedGame(board.Watched));
        PartFromPages(board);
        return;
    }
    if (board.IsEnding) {
        _exit(1);
    }
    board.IsEnding = true;
    AskToEnd(board.Game);
    board.EndTimer.expires_after(END_PATIENCE);
    board.EndTimer.async_wait([&board](const error_code& cancelled) {
        if (!cancelled && !board.IsOver) {
            _exit(1);
        }
    });
}
