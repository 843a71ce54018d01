#include "board/played_board.h"

#include <chrono>

#include <boost/asio/post.hpp>
#include <unistd.h>

#include "board/telling.h"
#include "gamefiles/kept_texts.h"
#include "page/page_state.h"
#include "support/output.h"

namespace {

using boost::system::error_code;

constexpr std::chrono::seconds END_PATIENCE(5);  // with a game that hangs

// Says on the terminal what became of a game that was ended from there.
void SayWhatBecame(const PlayedBoard& board) {
    const PageGame& page = board.Game.Page;
    if (!board.IsEnding || !page.Game.Play.HasNewPlies) {
        return;
    }
    if (page.Kept.IsUpToDate) {
        PrintError(GAME_IS_KEPT, NameToLoad(page.Kept).c_str());
    } else {
        PrintError(GAME_IS_NOT_KEPT);
    }
}

void TakeEnd(PlayedBoard& board) {
    board.IsOver = true;
    board.Game.Thread.join();
    SetOutputSinks({});
    SayWhatBecame(board);
    PartFromPages(board.Web, board.EndTimer, board.Context);
}

void TakeWhatIsNew(PlayedBoard& board) {
    const bool isOver = HasEnded(board.Game);  // before the news, of which these are then the last
    const PageNews news = TakeNews(board.Game);
    AddNews(board.All, news);
    TellPages(board.Web, news);
    if (isOver && !board.IsOver) {
        TakeEnd(board);
    }
}

}  // namespace

void BeginBoard(PlayedBoard& board) {
    board.Web.OnPage = [&board] { return Greeting(board.All); };
    board.Web.OnMessage = [&board](std::string_view message) {
        const std::string refusal = AskGame(board.Game, ReadPageRequest(message));
        return refusal.empty() ? "" : ErrorMessage(refusal);
    };
    board.Game.Wake = [&board] {
        boost::asio::post(board.Context, [&board] { TakeWhatIsNew(board); });
    };
    StartGame(board.Game);
}

void EndBoard(PlayedBoard& board) {
    if (board.IsOver) {
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
