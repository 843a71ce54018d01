#include "board/game_view.h"

#include <algorithm>
#include <array>
#include <utility>

#include "config/glob_cfg.h"
#include "rules/notation.h"
#include "support/numbers.h"
#include "support/text.h"

namespace {

bool IsBeginningOf(std::string_view word, std::string_view name) {
    return !word.empty() && name.starts_with(word);
}

// The word by which a line names its command, abbreviated or not; empty when it is no command.
std::string_view CommandWord(const GameView& view, std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (view.Running && !line.starts_with('/')) {
        return "";
    }
    line.remove_prefix(std::min(line.find_first_not_of('/'), line.size()));
    return line.substr(0, line.find(' '));
}

// A line of text that tells a setting: what stands before the value, and where it goes.
struct SettingText {
    std::string_view Before;
    int GameSettings::*Setting;
};
constexpr std::array SETTING_TEXTS = {
    SettingText{"The KI-playing level have been changed to ", &GameSettings::Level},
    SettingText{"The number of human players have been changed to ", &GameSettings::Players},
    SettingText{"Number of Dvonn-stones set to ", &GameSettings::LifeStones},
    SettingText{"Number of Dvonn Stones is ", &GameSettings::LifeStones},
};

// One that tells it in words.
struct SettingWords {
    std::string_view Text;
    int GameSettings::*Setting;
    int Value;
};
constexpr std::array SETTING_WORDS = {
    SettingWords{"Random setup mode was switched on for the next games.",
                 &GameSettings::RandomSetup, 1},
    SettingWords{"Random setup mode was switched off for the next games.",
                 &GameSettings::RandomSetup, 0},
    SettingWords{"Your playing color was set to WHITE.", &GameSettings::ComputerColor, BLACK},
    SettingWords{"Your playing color was set to BLACK.", &GameSettings::ComputerColor, WHITE},
    SettingWords{"Your playing color will be determined randomly in the next game.",
                 &GameSettings::ComputerColor, RANDOM_COLOR},
};

void NoteSettings(GameView& view, std::string_view line) {
    for (const SettingText& text : SETTING_TEXTS) {
        if (line.starts_with(text.Before)) {
            view.Settings.*text.Setting =
                ReadInt(line.substr(text.Before.size())).value_or(view.Settings.*text.Setting);
        }
    }
    for (const SettingWords& words : SETTING_WORDS) {
        if (line == words.Text) {
            view.Settings.*words.Setting = words.Value;
        }
    }
}

void NoteSide(GameView& view, std::string_view line) {
    if (line.starts_with("Your playing color was set to ")) {
        view.ComputerSide = view.Settings.ComputerColor;
    } else if (line == "You are playing the WHITE stones") {
        view.ComputerSide = BLACK;
    } else if (line == "You are playing the BLACK stones") {
        view.ComputerSide = WHITE;
    }
}

// What the stones of a board tell of its setup.
struct StoneCount {
    int Stones = 0;
    int Own = 0;  // towers of either colour
    int Empty = 0;
    bool AllSingle = true;
};

StoneCount CountStones(const Picture& picture) {
    UseBoardOf(picture);
    StoneCount count;
    for (int y = 0; y < picture.Rows; ++y) {
        const ColumnRange columns = BoardColumns(y);
        for (int x = columns.First; x < columns.End; ++x) {
            const Space& space = picture.Board.Spaces[x][y];
            count.Stones += space.Height;
            count.Own += space.Owner == WHITE || space.Owner == BLACK ? 1 : 0;
            count.Empty += space.Owner == EMPTY ? 1 : 0;
            count.AllSingle = count.AllSingle && space.Height <= 1;
        }
    }
    return count;
}

// Neither the drawing nor the link says whether stones are still to be placed. The highlight does:
// a placement comes from nowhere. At the start, and where moves are not highlighted, a board that
// holds a stone for every ply has seen placements only.
int SetupPhaseOf(const GameView& view, const Picture& picture) {
    const StoneCount count = CountStones(picture);
    const bool placed = IsSomewhere(picture.Last.Target)
                            ? !IsSomewhere(picture.Last.Source)
                            : count.AllSingle && count.Stones == picture.Move;
    if (count.Empty == 0 || !placed) {
        return 0;
    }
    return count.Own == 0 && picture.Move < view.GameLifeStones ? 2 : 1;
}

bool SameFromTo(const FromTo& a, const FromTo& b) {
    return a.Source.Column == b.Source.Column && a.Source.Row == b.Source.Row &&
           a.Target.Column == b.Target.Column && a.Target.Row == b.Target.Row;
}

std::string SpaceText(const Picture& picture, Place place) {
    return ColumnLetter(place.Column) + std::to_string(picture.Rows - place.Row);
}

// The ply that led to the shown position; empty when it is not known.
std::string LastPly(const Picture& before, const Picture& shown) {
    if (SameStones(before, shown)) {
        return "PASS";
    }
    if (!IsSomewhere(shown.Last.Target)) {
        return "";
    }
    const std::string target = SpaceText(shown, shown.Last.Target);
    return IsSomewhere(shown.Last.Source) ? SpaceText(shown, shown.Last.Source) + '-' + target
                                          : target;
}

// The ply that a line of the computer's names; what was said before for any other line.
std::string SaidPlyOf(std::string_view line, const std::string& before) {
    for (const std::string_view lead : {"Talurex does move: (", "Talurex does setup move: ("}) {
        if (line.starts_with(lead) && line.ends_with(')')) {
            return std::string(line.substr(lead.size(), line.size() - lead.size() - 1));
        }
    }
    return line == "Talurex is passing" ? "PASS" : before;
}

void NotePly(GameView& view) {
    const Picture& shown = view.Shown;
    const std::string ply = view.DrawnPly.empty() ? LastPly(view.End, shown) : view.DrawnPly;
    const bool follows = shown.LastMove == view.End.LastMove + 1 && !ply.empty();
    view.ArePliesKnown = view.ArePliesKnown && follows;
    view.NewPlies.push_back({ply, view.End.Board.ActivePlayer == WHITE});
}

void NoteFirstPosition(GameView& view) {
    view.Unsaved = false;
    view.Begin = view.Shown;
    view.HasCopy = false;
    view.NewPlies.clear();
    view.ArePliesKnown = true;
}

// Keeps account of the plies that a save would have to hold.
void NoteEnd(GameView& view) {
    const Picture& shown = view.Shown;
    if (shown.Move != shown.LastMove) {
        return;
    }
    if (shown.LastMove == 0) {
        NoteFirstPosition(view);
    } else if (shown.LastMove != view.End.LastMove || !SameStones(shown, view.End)) {
        view.Unsaved = true;
        ++view.NumChanges;
        NotePly(view);
    }
    view.End = shown;
}

// Shows the picture. Answers whether that is a change.
bool Show(GameView& view, Picture picture) {
    picture.Board.SetupPhase = SetupPhaseOf(view, picture);
    const Picture& shown = view.Shown;
    const bool same = SameStones(shown, picture) && shown.Move == picture.Move &&
                      shown.LastMove == picture.LastMove &&
                      shown.Board.ActivePlayer == picture.Board.ActivePlayer &&
                      shown.Board.SetupPhase == picture.Board.SetupPhase &&
                      SameFromTo(shown.Last, picture.Last) && SameFromTo(shown.Next, picture.Next);
    view.Shown = picture;
    NoteEnd(view);
    return !same;
}

// At the end of a game the status line tells the score and not the side.
int SideOfLink(const GameView& view) {
    if (view.Link.Status.starts_with("WHITE")) {
        return WHITE;
    }
    if (view.Link.Status.starts_with("BLACK")) {
        return BLACK;
    }
    const bool stepped = view.Link.MoveNumber == view.Shown.Move + 1;
    const int side = view.Shown.Board.ActivePlayer;
    return stepped ? OtherColor(side) : side;
}

// Takes number and highlights over from the link.
void AddLinkNumbers(const GameView& view, Picture& picture) {
    picture.Move = view.Link.MoveNumber;
    picture.LastMove = view.Link.LastMove;
    picture.Last = view.Link.Last;
    picture.Next = view.Link.Next;
}

bool ShowLink(GameView& view) {
    Picture picture;
    picture.Columns = view.Link.Columns;
    picture.Rows = view.Link.Rows;
    picture.Board.Spaces = view.Link.Spaces;
    picture.Board.ActivePlayer = SideOfLink(view);
    AddLinkNumbers(view, picture);
    return Show(view, picture);
}

Picture PictureOf(const BoardDrawing& drawing) {
    Picture picture;
    picture.Columns = drawing.Columns;
    picture.Rows = drawing.Rows;
    picture.Board = drawing.Board;
    return picture;
}

// A link that shows what was drawn last can be trusted from there on, and has its size. An update
// may come before the drawing of the same turn: one from before the line that was typed tells
// nothing.
bool LinkShowsDrawing(const GameView& view) {
    if (!view.Connected || !view.LinkKnown || !view.Drawn || !view.DrawnSinceLine) {
        return false;
    }
    Picture link = PictureOf(*view.Drawn);
    link.Board.Spaces = view.Link.Spaces;
    return SameStones(link, PictureOf(*view.Drawn));
}

// The link alone tells the size only now and then: until it does, the board of a Talurex is the
// default one, and larger where a stone lies beyond it.
void GuessBoardSize(GameView& view) {
    ShownBoard& link = view.Link;
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
    view.LinkExact = true;
}

void TrustLink(GameView& view) {
    view.Link.Spaces = view.Drawn->Board.Spaces;
    view.Link.Columns = view.Drawn->Columns;
    view.Link.Rows = view.Drawn->Rows;
    view.LinkExact = true;
}

// A new game has the number of life stones that was set last.
void NoteBegin(GameView& view) {
    if (view.MayBeginGame && view.DrawnSinceLine) {
        view.BeginsGame = true;
        view.AskLifeStones = view.MayLoad;
        view.AskColor = view.Settings.ComputerColor == RANDOM_COLOR;
    }
    if (view.BeginsGame && !view.AskLifeStones) {
        view.GameLifeStones = view.Settings.LifeStones;
        view.BeginsGame = false;
    }
    view.MayBeginGame = false;
    view.MayLoad = false;
}

}  // namespace

bool SameStones(const Picture& a, const Picture& b) {
    if (a.Columns != b.Columns || a.Rows != b.Rows) {
        return false;
    }
    for (int x = 0; x < a.Columns; ++x) {
        for (int y = 0; y < a.Rows; ++y) {
            if (a.Board.Spaces[x][y] != b.Board.Spaces[x][y]) {
                return false;
            }
        }
    }
    return true;
}

void UseBoardOf(const Picture& picture) {
    GlobCfg.BoardXDim = picture.Columns;
    GlobCfg.BoardYDim = picture.Rows;
}

GameView NewGameView() {
    GameView view;
    view.Settings = {GlobCfg.ComputerLevel, GlobCfg.NumHumanPlayers, GlobCfg.ComputerColor,
                     GlobCfg.SetupMode, GlobCfg.NumLifeStones};
    view.Running = GlobCfg.GameRunFlag == 1;
    view.GameLifeStones = GlobCfg.NumLifeStones;
    view.AskColor = GlobCfg.ComputerColor == RANDOM_COLOR;
    view.ComputerSide = GlobCfg.ComputerColor == WHITE ? WHITE : BLACK;
    view.Shown.Columns = GlobCfg.BoardXDim;
    view.Shown.Rows = GlobCfg.BoardYDim;
    view.Shown.Board.Spaces = NoStones();
    return view;
}

void NoteLine(GameView& view, std::string_view line) {
    const std::string_view word = CommandWord(view, line);
    view.MayLoad = IsBeginningOf(word, "load") || IsBeginningOf(word, "import");
    view.MayBeginGame =
        view.MayLoad || IsBeginningOf(word, "new") || IsBeginningOf(word, "boardsize");
    if (view.MayLoad || IsBeginningOf(word, "boardsize")) {
        view.LinkExact = false;
    }
    view.DrawnSinceLine = false;
    view.Waiting = false;
}

bool NoteText(GameView& view, std::string_view line) {
    const GameSettings before = view.Settings;
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
    }
    NoteSettings(view, line);
    NoteSide(view, line);
    view.SaidPly = SaidPlyOf(line, view.SaidPly);
    if (line == "Saving game was successful.") {
        view.Unsaved = false;
    } else if (line == "loading game was successful." ||
               line == "Game was successfully imported.") {
        view.Loaded = true;
    }
    return view.Settings != before;
}

bool NoteDrawing(GameView& view, const BoardDrawing& drawing) {
    const std::string said = std::exchange(view.SaidPly, "");
    view.Drawn = drawing;
    view.DrawnSinceLine = true;
    if (view.LinkExact) {
        return false;
    }
    if (LinkShowsDrawing(view)) {
        TrustLink(view);
        return ShowLink(view);
    }
    // The link may be ahead: it is counted what is drawn, up to the next prompt.
    Picture picture = PictureOf(drawing);
    const bool changed = !SameStones(picture, view.Shown);
    picture.Move = view.Shown.Move + (changed || !said.empty() ? 1 : 0);
    picture.LastMove = Max(picture.Move, view.Shown.LastMove);
    view.DrawnPly = said;
    const bool shows = Show(view, picture);
    view.DrawnPly.clear();
    return shows;
}

bool NoteUpdate(GameView& view) {
    view.LinkKnown = true;
    if (view.LinkOnly) {
        GuessBoardSize(view);
    }
    view.LinkExact = view.LinkExact || view.Link.Whole;
    if (!view.LinkExact && LinkShowsDrawing(view)) {
        TrustLink(view);
    }
    return view.LinkExact && ShowLink(view);
}

bool NotePrompt(GameView& view, const Prompt& prompt) {
    view.Running = prompt.Running;
    view.Waiting = true;
    NoteBegin(view);
    if (!view.Drawn) {
        return false;
    }
    Picture picture = PictureOf(*view.Drawn);
    if (view.Connected && view.LinkKnown) {
        TrustLink(view);
        AddLinkNumbers(view, picture);
    }
    if (picture.Move != prompt.Move || picture.LastMove != prompt.LastMove) {
        picture.Last = picture.Next = {};
        picture.Move = prompt.Move;
        picture.LastMove = prompt.LastMove;
    }
    const bool changed = Show(view, picture);
    if (view.Loaded) {
        view.Loaded = false;
        view.Unsaved = false;
    }
    return changed;
}

void NoteCopy(GameView& view) {
    view.HasCopy = true;
    view.NewPlies.clear();
    view.ArePliesKnown = true;
}

void NoteConnection(GameView& view, bool connected) {
    view.Connected = connected;
    view.LinkKnown = false;
    view.LinkExact = false;
    view.Link.Begun = false;
}

std::string TakeQuestion(GameView& view) {
    if (view.AskLifeStones) {
        view.AskLifeStones = false;
        return "/lifestones";
    }
    if (HasQuestion(view)) {
        view.AskColor = false;
        return "/color";
    }
    return "";
}

bool HasQuestion(const GameView& view) {
    return view.AskLifeStones || (view.AskColor && view.Settings.Players == 1);
}
