#include "board/watched_board.h"

#include "board/telling.h"
#include "page/page_state.h"

namespace {

void Tell(WatchedBoard& board, const PageNews& news) {
    AddNews(board.All, news);
    TellPages(board.Web, news);
}

}  // namespace

void BeginWatching(WatchedBoard& board) {
    board.Web.OnPage = [&board] { return Greeting(board.All); };
    board.Web.OnMessage = [](std::string_view) {
        return ErrorMessage("This board is for looking only.");
    };
    board.Display.OnLine = [&board](std::string_view line) {
        PageNews news;
        if (TakeWatchedLine(board.Game, line, news)) {
            Tell(board, news);
        }
    };
    board.Display.OnConnection = [&board](bool isConnected) {
        Tell(board, NoteConnection(board.Game, isConnected));
    };
    Tell(board, BeginWatchedGame(board.Game));
}

void EndWatching(WatchedBoard& board) {
    Tell(board, EndWatchedGame(board.Game));
    PartFromPages(board.Web, board.EndTimer, board.Context);
}
