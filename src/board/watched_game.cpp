#include "board/watched_game.h"

#include "config/glob_cfg.h"
#include "page/page_state.h"
#include "page/plies.h"
#include "support/numbers.h"

namespace {

// The link tells the size only now and then: until it does, the board of a Talurex is the default
// one, and larger where a stone lies beyond it.
void SetBoardSize(ShownBoard& link) {
    if (link.Columns == 0) {
        link.Columns = DEFAULT_BOARD.XDim;
        link.Rows = DEFAULT_BOARD.YDim;
    }
    for (int x = 0; x < MAX_BOARD_X_DIM; ++x) {
        for (int y = 0; y < MAX_BOARD_Y_DIM; ++y) {
            if (link.Spaces[x][y].Owner != EMPTY) {
                link.Columns = Max(link.Columns, x + 1);
                link.Rows = Max(link.Rows, y + 1);
            }
        }
    }
    GlobCfg.BoardXDim = link.Columns;
    GlobCfg.BoardYDim = link.Rows;
}

// At the end of a game the status line tells the score and not the side.
int SideOf(const ShownBoard& link, int sideBefore) {
    if (link.Status.starts_with("WHITE")) {
        return WHITE;
    }
    if (link.Status.starts_with("BLACK")) {
        return BLACK;
    }
    return link.OneStep ? OtherColor(sideBefore) : sideBefore;
}

// The link does not say whether stones are still to be placed, but a placement comes from nowhere,
// and at the start, and where moves are not highlighted, a board that holds a single stone for
// every ply has seen placements only.
int SetupPhaseOf(const ShownBoard& link) {
    int numStones = 0;
    int numEmpty = 0;
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& space = link.Spaces[x][y];
            numStones += space.Height;
            numEmpty += space.Owner == EMPTY ? 1 : 0;
        }
    }
    const bool isPlacing = IsSomewhere(link.Last.Target)
                               ? !IsSomewhere(link.Last.Source)
                               : numStones == link.MoveNumber && !link.Animated;
    if (numEmpty == 0 || !isPlacing) {
        return 0;
    }
    return Max(1, GlobCfg.NumLifeStones + 1 - link.MoveNumber);
}

// What the latest update moved.
FromTo StepOf(const ShownBoard& link) {
    if (link.Animated) {
        return *link.Animated;
    }
    return link.NumSpaces == 1 ? FromTo{NOWHERE, link.LastSpace} : FromTo{};
}

// The ply that the update tells of. What was played before a jump is not known.
void AddPly(const ShownBoard& link, const PageView& before, const Position& shown, PageNews& news) {
    news.HasPlies = true;
    const FromTo step = StepOf(link);
    // A display may be told of another game than the one that it shows.
    const bool isOnBoard =
        !IsSomewhere(step.Target) || IsOnBoard(step.Target.Column, step.Target.Row);
    if (link.OneStep && link.MoveNumber == before.Move + 1 && isOnBoard) {
        news.FirstPly = link.MoveNumber;
        news.Plies.push_back(PlyTextOf(before.Shown, shown, step));
    } else {
        news.Plies.assign(static_cast<std::size_t>(link.MoveNumber), "null");
        news.Plies.push_back(PictureText(shown));
    }
}

PageNews StateNews(const WatchedGame& game) {
    PageNews news;
    news.State = StateMessage(game.View);
    return news;
}

PageNews TakeUpdate(WatchedGame& game) {
    ShownBoard& link = game.Link;
    PageView& view = game.View;
    const PageView before = view;
    SetBoardSize(link);
    view.Shown.Spaces = link.Spaces;
    view.Shown.ActivePlayer = SideOf(link, before.Shown.ActivePlayer);
    view.Shown.SetupPhase = SetupPhaseOf(link);
    view.Move = link.MoveNumber;
    view.LastMove = link.LastMove;
    view.Last = link.Last;
    view.Next = link.Next;
    PageNews news = StateNews(game);
    AddPly(link, before, view.Shown, news);
    return news;
}

}  // namespace

PageNews BeginWatchedGame(WatchedGame& game) {
    game.View.Watching = true;
    game.View.State = GameState::Waiting;
    game.View.Shown.Spaces = NoStones();
    PageNews news = StateNews(game);
    news.HasPlies = true;
    news.Plies = {PictureText(game.View.Shown)};
    return news;
}

bool TakeWatchedLine(WatchedGame& game, std::string_view line, PageNews& news) {
    if (TakeDisplayLine(game.Link, line) != DisplayLine::Done) {
        return false;
    }
    news = TakeUpdate(game);
    return true;
}

PageNews NoteConnection(WatchedGame& game, bool isConnected) {
    game.Link.Begun = false;
    game.View.Connected = isConnected;
    return StateNews(game);
}

PageNews EndWatchedGame(WatchedGame& game) {
    game.View.State = GameState::Ended;
    game.View.LastWords = "The board was closed.";
    return StateNews(game);
}
