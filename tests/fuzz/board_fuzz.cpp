// Anything that a page may ask for, or a display link send: each piece of the input is a letter,
// its length, and its bytes. Nothing of it may stop the board or grow without bound, and what the
// pages are told is whole.
#include <algorithm>
#include <memory>

#include <nlohmann/json.hpp>

#include "board/watched_game.h"
#include "config/glob_cfg.h"
#include "fuzz/fuzz_support.h"
#include "gamefiles/stored_games.h"
#include "page/page_lines.h"
#include "support/random.h"

namespace {

using nlohmann::json;

struct Board {
    PageGame Page;
    LineQueue Queue;
    PageNews All;
    WatchedGame Watched;
    int NumStates = 0;
};

// To read a state back takes longer than all the rest: a few in each input must do.
void RequireWholeNews(Board& board, const PageNews& news) {
    constexpr int MAX_STATES = 3;
    if (++board.NumStates > MAX_STATES) {
        return;
    }
    const json state = json::parse(news.State);
    Require(news.State.size() < 100000, "a state is not large");
    Require(state["spaces"].size() == static_cast<std::size_t>(NumBoardSpaces()),
            "a state has all spaces");
    for (const std::string& message : MessagesOf(news)) {
        Require(json::parse(message).is_object(), "a message can be read");
    }
}

void RequireWholeGame(const Board& board) {
    const PlayState& play = board.Page.Game.Play;
    Require(board.All.Log.size() < 100000 && board.Page.Log.size() < 100000 &&
                board.Queue.Lines.size() < 100,
            "what is kept is bounded");
    Require(board.All.FirstPly == 0 &&
                board.All.Plies.size() == static_cast<std::size_t>(play.Record.LastMove) + 1,
            "pages have all plies");
}

void Ask(Board& board, std::string_view message) {
    board.Queue.IsWaiting = board.Queue.Lines.empty();
    if (!TakeRequest(board.Queue, ReadPageRequest(message)).empty() || board.Queue.Lines.empty()) {
        return;
    }
    PageRequest line = board.Queue.Lines.front();
    board.Queue.Lines.pop_front();
    Require(line.Text.find('\n') == std::string::npos, "one line is typed at a time");
    line.Text = Harmless(line.Text);
    if (line.Kind == RequestKind::Save || line.Kind == RequestKind::Open) {
        (void)FaultOfGame(line.Content);  // no files are written
        return;
    }
    if (board.Page.Game.Play.QuitFlag == 0) {
        CarryOut(board.Page, line);
    }
}

void TakeLink(Board& board, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, bytes.find('\n'));
        bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
        PageNews news;
        if (TakeWatchedLine(board.Watched, line, news)) {
            RequireWholeNews(board, news);
        }
    }
}

void Take(Board& board, char kind, std::string_view bytes) {
    switch (kind) {
    case 'd': return TakeLink(board, bytes);
    case 'a': return Ask(board, bytes);
    case 'c': return RequireWholeNews(board, NoteConnection(board.Watched, !bytes.empty()));
    default: return;
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SetDefaultConfiguration();
    GlobCfg.NumHumanPlayers = 2;
    SeedRandom(1);
    ForgetGameFile();
    const auto board = std::make_unique<Board>();
    CatchOutput(board->Page);
    CatchErrors(board->Page);
    board->Page.Tell = [&board](const PageNews& news, GameState) {
        AddNews(board->All, news);
        RequireWholeNews(*board, news);
    };
    BeginPageGame(board->Page);
    RequireWholeNews(*board, BeginWatchedGame(board->Watched));
    std::string_view input(reinterpret_cast<const char*>(data), size);
    // The game and the link are two games, on boards of their own.
    BoardSettings watched = GetBoardSettings();
    while (input.size() >= 3) {
        const char kind = input[0];
        const auto high = static_cast<unsigned char>(input[1]);
        const auto low = static_cast<unsigned char>(input[2]);
        input.remove_prefix(3);
        const std::string_view bytes = input.substr(0, high * 256U + low);
        input.remove_prefix(bytes.size());
        const BoardSettings played = GetBoardSettings();
        if (kind != 'a') {
            SetBoardSettings(watched);
        }
        Take(*board, kind, bytes);
        if (kind != 'a') {
            watched = GetBoardSettings();
            SetBoardSettings(played);
        }
    }
    RequireWholeGame(*board);
    return 0;
}
