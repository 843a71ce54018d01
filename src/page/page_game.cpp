#include "page/page_game.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "config/glob_cfg.h"
#include "control/command_table.h"
#include "display/gui_link.h"
#include "display/terminal_board.h"
#include "gamefiles/saved_game.h"
#include "page/page_state.h"
#include "page/plies.h"
#include "rules/moves.h"
#include "support/fatal.h"
#include "support/output.h"
#include "support/requests.h"
#include "support/text.h"

namespace {

using Clock = std::chrono::steady_clock;

// A line that is answered sooner is not shown as thinking.
constexpr std::chrono::milliseconds THINK_DELAY(100);
constexpr int NUM_LAST_WORDS = 10;  // lines

void Log(PageGame& game, std::string_view text) {
    // A file's name or content may bring characters with it that are none to be read.
    const std::string plain = WithoutControlCharacters(text);
    AddToLog(game.Log, plain);
    AddToLog(game.NewText, plain);
}

void LogText(void* context, std::string_view text) {
    Log(*static_cast<PageGame*>(context), text);
}

void LogRefusal(void* context, std::string_view text) {
    LogText(context, text);
    static_cast<PageGame*>(context)->Refusals += text;
}

// Puts the game aside that pages know of, and offers to go on with it where it can be found again.
void PutAside(PageGame& game, bool isOffered) {
    OfferedGame offer = {.Name = game.Told.InFile, .How = game.ToldHow};
    if (game.Told.HasNewPlies) {
        offer.Text = game.Kept.Text;
    }
    PutGameAside(game.Kept, game.Told.HasNewPlies);
    if (isOffered && game.Told.Record.LastMove > 0) {
        game.Offer.reset();
        if (!offer.Text.empty() || !offer.Name.empty()) {
            game.Offer = offer;
        }
    }
}

// Puts a game aside whose plies are not all part of the present one any more. What an undo took
// back and a ply has replaced is not missed.
void KeepWhatIsReplaced(PageGame& game, int firstNew) {
    const int lastMove = game.Game.Play.Record.LastMove;
    const bool isReplaced = firstNew <= game.Told.Record.LastMove;
    const bool byPly = lastMove == game.Told.CurrentMove + 1 && firstNew >= lastMove;
    if (game.HasTold && isReplaced && (!byPly || game.WalkedBack)) {
        PutAside(game, !byPly);
    }
}

// Writes a game that has plies of its own, with how it is played behind it: readers of saved games
// read nothing behind the end.
void KeepPlay(PageGame& game, const std::string& saved) {
    const PlayState& play = game.Game.Play;
    if (!play.HasNewPlies && game.Kept.Text.empty()) {
        return;
    }
    KeepText(game.Kept, saved + RemarkOn(PresentPlay(play)));
    if (!game.Kept.IsUpToDate && !game.HasSaidUnkept) {
        game.Answers.push_back(
            ErrorMessage("The game cannot be kept in this folder: save it elsewhere."));
    }
    game.HasSaidUnkept = !game.Kept.IsUpToDate;
}

PageView ViewOfGame(const PageGame& game, const PlayState& play, GameState state) {
    PageView view = ViewOf(play, state);
    view.IsEvaluating = state == GameState::Thinking && !HasComputerTurn(game);
    view.CanUndo = UndoDistance(play) > 0;
    if (game.Offer) {
        view.CanTakeBack = !game.Offer->IsFound;
        view.FoundMove = game.Offer->IsFound ? game.Offer->Move : -1;
    }
    return view;
}

void ShowPrompt(PageGame& game) {
    if (!game.IsPromptShown) {
        game.IsPromptShown = true;
        PrintText(PromptText(game.Game));
    }
}

// Tells how the game stands now. It is kept first: what a page shows is never lost.
void Tell(PageGame& game, GameState state) {
    const PlayState& play = game.Game.Play;
    const bool isSameBoard = game.HasTold && game.ToldBoard.XDim == GlobCfg.BoardXDim &&
                             game.ToldBoard.YDim == GlobCfg.BoardYDim;
    const int firstNew = isSameBoard ? FirstNewPly(game.Told.Record, play.Record) : 0;
    const std::string saved = SavedGameText(play.Record);
    KeepWhatIsReplaced(game, firstNew);
    KeepPlay(game, saved);
    if (state == GameState::Waiting) {
        ShowPrompt(game);
    }
    PageNews news;
    news.Log = std::exchange(game.NewText, "");
    news.HasPlies = !game.HasTold || firstNew <= play.Record.LastMove ||
                    play.Record.LastMove < game.Told.Record.LastMove;
    news.FirstPly = firstNew;
    for (int n = firstNew; n <= play.Record.LastMove; ++n) {
        news.Plies.push_back(PlyText(play.Record, n));
    }
    news.State = StateMessage(ViewOfGame(game, play, state));
    news.Saved = saved;
    news.Answers = std::exchange(game.Answers, {});
    game.Told = play;
    game.ToldHow = PresentPlay(play);
    game.ToldBoard = GetBoardSettings();
    game.HasTold = true;
    if (play.CurrentMove == play.Record.LastMove) {
        game.WalkedBack = false;
    }
    game.Tell(news, state);
}

GameState StateBehind(const PageGame& game) {
    return HasComputerTurn(game) ? GameState::Thinking : GameState::Waiting;
}

// Tells, while a line is carried out that takes long, that the program thinks.
void ReportThought(void* context, const ThoughtProgress& /*progress*/) {
    PageGame& game = *static_cast<PageGame*>(context);
    if (!game.HasToldThinking && Clock::now() - game.BusySince >= THINK_DELAY) {
        game.HasToldThinking = true;
        PageNews news;
        news.Log = std::exchange(game.NewText, "");
        news.State = StateMessage(ViewOfGame(game, game.Told, GameState::Thinking));
        game.Tell(news, GameState::Thinking);
    }
}

void GoBack(PageGame& game, const GlobalConfiguration& settings) {
    game.Game.Play = game.Told;
    const int gui = GlobCfg.Gui;  // the link is as it is
    const int socket = GlobCfg.GuiSocket;
    GlobCfg = settings;
    GlobCfg.Gui = gui;
    GlobCfg.GuiSocket = socket;
}

// Does something with the session. When that meets an error, the game stands as before. Answers
// whether all went well.
template <typename Work>
bool DoSafely(PageGame& game, Work work) {
    const GlobalConfiguration settings = GlobCfg;
    try {
        work();
        return true;
    } catch (const ProgramEnd&) {
        GoBack(game, settings);
    } catch (const std::exception& fault) {
        GoBack(game, settings);
        PrintError("Error: %s\n", fault.what());
    }
    return false;
}

bool IsUndo(std::string line) {
    return (line.starts_with('/') || GlobCfg.GameRunFlag == 0) && GetCommand(line) == COMMAND_UNDO;
}

// The person at whose choice a game stands before a ply: not the computer's, and not a pass.
bool IsChoice(const PlayState& play, const Position& position) {
    const bool isComputers =
        GlobCfg.NumHumanPlayers == 1 && position.ActivePlayer == play.ComputerSide;
    return !isComputers && (position.SetupPhase != 0 || GetNumMoves(position) > 0);
}

}  // namespace

void CatchOutput(PageGame& game) {
    PrintedBoards = BoardStyle::Hidden;
    SetOutputSinks({.Text = LogText, .Error = nullptr, .Context = &game});
}

void CatchErrors(PageGame& game) {
    SetOutputSinks({.Text = LogText, .Error = LogRefusal, .Refusal = LogRefusal, .Context = &game});
}

void BeginPageGame(PageGame& game) {
    game.Game.Report = ReportThought;
    game.Game.ReportContext = &game;
    if (GlobCfg.Gui != 0) {
        OpenGuiLink();
    }
    BeginPlay(game.Game);
    if (!game.Kept.Found.empty()) {
        const std::optional<HowPlayed> how = ReadRemark(game.Kept.Found);
        game.Offer = {.Text = game.Kept.Found,
                      .How = how,
                      .IsFound = true,
                      .Move = how ? how->Move : game.Kept.NumFoundPlies};
    }
    Tell(game, StateBehind(game));
}

bool HasComputerTurn(const PageGame& game) {
    return ComputerIsToMove(game.Game);
}

void PlayPageTurn(PageGame& game) {
    game.HasToldThinking = true;
    if (!DoSafely(game, [&] { PlayComputerTurn(game.Game); })) {
        GlobCfg.GameRunFlag = 0;  // or the same turn would come again for ever
    }
    if (!IsRequested(END_REQUESTS)) {
        Tell(game, StateBehind(game));
    }
}

void BeginLines(PageGame& game) {
    DropRequests(HURRY_REQUESTS);  // they were for what came before
    game.BusySince = Clock::now();
    game.HasToldThinking = false;
    game.Refusals.clear();
}

void EndLines(PageGame& game) {
    if (!game.Refusals.empty()) {
        game.Answers.push_back(ErrorMessage(std::exchange(game.Refusals, "")));
    }
    if (game.Game.Play.QuitFlag == 0) {
        Tell(game, StateBehind(game));
    }
}

bool TypePageLine(PageGame& game, const std::string& line, bool isUndo) {
    ShowPrompt(game);
    game.IsPromptShown = false;
    Log(game, line + '\n');
    PlayState& play = game.Game.Play;
    const int shownBefore = play.CurrentMove;
    const bool takesBack = isUndo || IsUndo(line);
    const std::string earlier = std::exchange(game.Refusals, "");
    DoSafely(game, [&] { TypeLine(game.Game, line); });
    if (play.CurrentMove < shownBefore && play.CurrentMove < play.Record.LastMove && !takesBack) {
        game.WalkedBack = true;
    }
    if (play.HasNewPlies && play.CurrentMove == shownBefore + 1 &&
        play.Record.LastMove == play.CurrentMove) {
        game.Offer.reset();  // a ply: one goes on with this game
    }
    if (IsKeptName(play.InFile)) {  // such a file soon holds another game
        play.InFile.clear();
        play.HasNewPlies = true;
    }
    const bool isDone = game.Refusals.empty();
    game.Refusals.insert(0, earlier);
    return isDone;
}

void RefuseOnPage(PageGame& game, const std::string& reason) {
    game.Refusals += reason + '\n';
}

void KeepBeforeReplay(PageGame& game) {
    PutAside(game, true);
    game.WalkedBack = false;
}

int UndoDistance(const PlayState& play) {
    int n = play.CurrentMove - 1;
    while (n >= 0 && !IsChoice(play, play.Record.PositionList[n])) {
        --n;
    }
    return n < 0 ? 0 : play.CurrentMove - n;
}

void TellPageEnd(PageGame& game, int exitStatus, const std::string& lastWords) {
    PageView view = ViewOfGame(game, game.Game.Play, GameState::Ended);
    view.ExitStatus = exitStatus;
    view.LastWords = lastWords.empty() ? LastLines(game.Log, NUM_LAST_WORDS) : lastWords;
    PageNews news;
    news.Log = std::exchange(game.NewText, "");
    news.State = StateMessage(view);
    game.Tell(news, GameState::Ended);
}
