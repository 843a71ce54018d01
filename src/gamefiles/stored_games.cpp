#include "gamefiles/stored_games.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>

#include <sys/stat.h>

#include "config/board_settings.h"
#include "config/glob_cfg.h"
#include "gamefiles/saved_game.h"
#include "rules/referee.h"
#include "support/fatal.h"
#include "support/output.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t MAX_LISTED_GAMES = 200;

// As long as it lives, what is printed goes to its text.
class Overheard {
public:
    Overheard() : before_(SetOutputSinks({.Text = Hear, .Error = Hear, .Context = this})) {}
    ~Overheard() { SetOutputSinks(before_); }
    Overheard(const Overheard&) = delete;
    Overheard& operator=(const Overheard&) = delete;

    std::string Text;

private:
    static void Hear(void* context, std::string_view text) {
        static_cast<Overheard*>(context)->Text += text;
    }

    OutputSinks before_;
};

// Loads a game and looks at it while its board is that of the settings. Answers false when it is
// none.
template <typename Look>
bool LoadQuietly(std::FILE* file, Look look) {
    const BoardSettingsGuard settings;
    const auto record = std::make_unique<GameRecord>();
    try {
        if (LoadGame(file, *record) != 0) {
            return false;
        }
    } catch (const ProgramEnd&) {
        return false;
    }
    look(*record);
    return true;
}

}  // namespace

std::optional<StoredGame> LookIntoGame(const std::string& name) {
    struct stat status {};
    if (stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::uintmax_t>(status.st_size) > MAX_GAME_LENGTH) {
        return {};
    }
    std::FILE* file = std::fopen(name.c_str(), "r");
    if (file == nullptr) {
        return {};
    }
    StoredGame game = {.Name = name, .Written = status.st_mtime};
    const Overheard unwanted;
    const bool isGame = LoadQuietly(file, [&](const GameRecord& record) {
        const Position& last = record.PositionList[record.LastMove];
        game.Columns = GlobCfg.BoardXDim;
        game.Rows = GlobCfg.BoardYDim;
        game.NumPlies = record.LastMove;
        game.IsOver = IsEndPosition(last);
        GetScore(last, game.White, game.Black);
    });
    return isGame ? std::optional(game) : std::nullopt;
}

std::vector<StoredGame> ListGames() {
    std::vector<StoredGame> games;
    std::error_code failed;
    for (fs::directory_iterator entry(".", failed), end; !failed && entry != end;
         entry.increment(failed)) {
        if (entry->path().extension() == ".tlx") {
            if (std::optional<StoredGame> game = LookIntoGame(entry->path().filename().string())) {
                games.push_back(std::move(*game));
            }
        }
    }
    std::sort(games.begin(), games.end(), [](const StoredGame& a, const StoredGame& b) {
        return a.Written != b.Written ? a.Written > b.Written : a.Name < b.Name;
    });
    games.resize(std::min(games.size(), MAX_LISTED_GAMES));
    return games;
}

std::string FaultOfGame(std::string_view text) {
    std::string copy(text);
    std::FILE* file = copy.empty() ? nullptr : fmemopen(copy.data(), copy.size(), "r");
    const Overheard heard;
    if (file != nullptr && LoadQuietly(file, [](const GameRecord& /*record*/) {})) {
        return "";
    }
    return heard.Text.empty() ? "The file ends too soon.\n" : heard.Text;
}
