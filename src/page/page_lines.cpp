#include "page/page_lines.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <vector>

#include "config/glob_cfg.h"
#include "control/file_commands.h"
#include "gamefiles/stored_games.h"
#include "page/page_state.h"
#include "rules/notation.h"
#include "rules/referee.h"
#include "support/file_replace.h"
#include "support/files.h"

namespace {

namespace fs = std::filesystem;

// Stops a running game. Answers whether it ran.
bool StopGame(PageGame& game) {
    const bool isRunning = GlobCfg.GameRunFlag == 1;
    if (isRunning) {
        TypePageLine(game, "/stop");
    }
    return isRunning;
}

void GoBack(PageGame& game, int distance, bool isUndo) {
    if (distance > 0) {
        TypePageLine(game, "/back " + std::to_string(distance), isUndo);
    }
}

void Undo(PageGame& game) {
    const int distance = UndoDistance(game.Game.Play);
    if (distance > 0) {
        GoBack(game, distance, true);
        TypePageLine(game, "/start");
    }
}

// Places what is left to be placed, without a draw from the program's own generator.
void FillRest(PageGame& game) {
    const PlayState& play = game.Game.Play;
    const int people = GlobCfg.NumHumanPlayers;
    if (people != 2) {
        TypePageLine(game, "/players 2");
    }
    std::mt19937 random(std::random_device{}());
    bool isPlaced = true;
    while (isPlaced && ShownPosition(play).SetupPhase != 0 && !IsEndPosition(ShownPosition(play))) {
        std::vector<Place> empty;
        for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
            for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
                if (IsOnBoard(x, y) && ShownPosition(play).Spaces[x][y].Owner == EMPTY) {
                    empty.push_back({x, y});
                }
            }
        }
        if (empty.empty()) {
            break;
        }
        const std::string text = SpaceText(empty[random() % empty.size()]);
        isPlaced = TypePageLine(game, GlobCfg.GameRunFlag == 1 ? text : "/move " + text);
    }
    if (people != 2) {
        TypePageLine(game, "/players " + std::to_string(people));
    }
}

void PlayFrom(PageGame& game, int number) {
    const PlayState& play = game.Game.Play;
    if (number < 0 || number > play.Record.LastMove) {
        return;  // the game has become another one
    }
    if (IsEndPosition(play.Record.PositionList[number])) {
        return RefuseOnPage(game, "The game is over there.");
    }
    if (number < play.Record.LastMove) {
        KeepBeforeReplay(game);
    }
    if (number > play.CurrentMove) {
        TypePageLine(game, "/forward " + std::to_string(number - play.CurrentMove));
    } else {
        GoBack(game, play.CurrentMove - number, true);
    }
    if (GlobCfg.GameRunFlag == 0) {
        TypePageLine(game, "/start");
    }
}

// Loads a game; where that fails, one that ran goes on. Answers whether it was loaded.
bool LoadNamed(PageGame& game, const std::string& name) {
    const bool isRunning = StopGame(game);
    const bool isLoaded = TypePageLine(game, name.empty() ? "/load" : "/load " + name);
    if (!isLoaded && isRunning) {
        TypePageLine(game, "/start");
    }
    return isLoaded;
}

// Makes settings and shown position what they were.
void Restore(PageGame& game, const HowPlayed& how) {
    const PlayState& play = game.Game.Play;
    GoBack(game, play.CurrentMove - how.Move, true);
    if (how.People != GlobCfg.NumHumanPlayers) {
        TypePageLine(game, "/players " + std::to_string(how.People));
    }
    if (how.HumanSide == play.ComputerSide) {
        const bool isRandom = GlobCfg.ComputerColor == RANDOM_COLOR;
        TypePageLine(game, std::string("/color ") + ColorName(how.HumanSide));
        if (isRandom) {
            TypePageLine(game, "/color random");  // for the next game, as before
        }
    }
    if (how.Level != GlobCfg.ComputerLevel) {
        TypePageLine(game, "/level " + std::to_string(how.Level));
    }
}

void GoOnWithOffer(PageGame& game) {
    if (!game.Offer) {
        return;
    }
    const OfferedGame offer = *game.Offer;
    const std::string name = offer.Text.empty() ? offer.Name : FindPrevious(offer.Text);
    if (name.empty()) {
        game.Offer.reset();
        return RefuseOnPage(game, "That game is in this folder no more.");
    }
    if (!LoadNamed(game, name)) {
        return;
    }
    game.Offer.reset();
    if (offer.How) {
        Restore(game, *offer.How);
    }
    if (!IsEndPosition(ShownPosition(game.Game.Play))) {
        TypePageLine(game, "/start");
    }
}

// Why a file cannot be called so in a typed line; empty when it can.
std::string FaultOfName(std::string_view name) {
    constexpr std::size_t MAX_NAME_LENGTH = 180;
    if (name.find_first_of(" \t\v\f") != name.npos) {
        return "A name with a blank in it cannot be typed.";
    }
    if (name.find_first_of("/\\") != name.npos) {
        return "A name is that of a file in this folder: without / and \\.";
    }
    return name.size() <= MAX_NAME_LENGTH ? "" : "The name is too long.";
}

void Save(PageGame& game, const PageRequest& request) {
    const std::string fileName = GameFileName(request.Text);
    if (!request.MayReplace && FileExists(fileName)) {
        game.Answers.push_back(AskMessage("save", fileName));
    } else {
        TypePageLine(game, request.Text.empty() ? "/save" : "/save " + request.Text);
    }
}

// Why a file cannot be put among the saved games; empty when it can.
std::string FaultOfFile(const std::string& fileName, const std::string& content) {
    std::error_code failed;
    if (content.size() > MAX_GAME_LENGTH) {
        return "The file is too large for a saved game: 64 KiB at most.";
    }
    if (const std::string fault = FaultOfGame(content); !fault.empty()) {
        return "This is no saved game: " + fault;
    }
    if (IsKeptName(fileName)) {
        return "Kept games have this name: give the file another one.";
    }
    const fs::file_type type = fs::status(fileName, failed).type();
    return type == fs::file_type::not_found || type == fs::file_type::regular
               ? ""
               : fileName + " is no file that could be replaced.";
}

void Open(PageGame& game, const PageRequest& request) {
    const std::string fileName = GameFileName(request.Text);
    if (const std::string fault = FaultOfFile(fileName, request.Content); !fault.empty()) {
        return RefuseOnPage(game, fault);
    }
    if (!request.MayReplace && FileExists(fileName)) {
        game.Answers.push_back(AskMessage("open", fileName));
    } else if (FileReplace(fileName, request.Content) != FileReplaced::Done) {
        RefuseOnPage(game, fileName + " could not be written.");
    } else {
        LoadNamed(game, request.Text);
    }
}

void ListTypable(PageGame& game) {
    std::vector<StoredGame> games = ListGames();
    std::erase_if(games,
                  [](const StoredGame& stored) { return !FaultOfName(stored.Name).empty(); });
    game.Answers.push_back(GamesMessage(games));
}

// Load, Save and Open.
void CarryOutNamed(PageGame& game, const PageRequest& request) {
    if (const std::string fault = FaultOfName(request.Text); !fault.empty()) {
        return RefuseOnPage(game, fault);
    }
    switch (request.Kind) {
    case RequestKind::Load: LoadNamed(game, request.Text); return;
    case RequestKind::Save: return Save(game, request);
    default: return Open(game, request);
    }
}

}  // namespace

void CarryOut(PageGame& game, const PageRequest& request) {
    BeginLines(game);
    switch (request.Kind) {
    case RequestKind::Replace: StopGame(game); [[fallthrough]];
    case RequestKind::Line: TypePageLine(game, request.Text); break;
    case RequestKind::Move:
        TypePageLine(game, GlobCfg.GameRunFlag == 1 ? request.Text : "/move " + request.Text);
        break;
    case RequestKind::Undo: Undo(game); break;
    case RequestKind::Fill: FillRest(game); break;
    case RequestKind::FromHere: PlayFrom(game, request.Number); break;
    case RequestKind::GoOn: GoOnWithOffer(game); break;
    case RequestKind::Load:
    case RequestKind::Save:
    case RequestKind::Open: CarryOutNamed(game, request); break;
    case RequestKind::List: ListTypable(game); break;
    default: break;
    }
    EndLines(game);
}
