#include "gamefiles/kept_game.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "config/board_settings.h"
#include "gamefiles/saved_game.h"
#include "support/fatal.h"
#include "support/file_replace.h"
#include "support/output.h"

namespace {

namespace fs = std::filesystem;

constexpr int MAX_KEPT_FILES = 9;
constexpr std::uintmax_t MAX_GAME_LENGTH = 65536;

std::string NumberedName(std::string name, int number) {
    if (number > 1) {
        name += '-';
        name += std::to_string(number);
    }
    return name + ".tlx";
}

// As long as it lives, what is printed is lost.
class Silence {
public:
    Silence()
        : before_(SetOutputSinks(
              {.Text = [](void*, std::string_view) {}, .Error = [](void*, std::string_view) {}})) {}
    ~Silence() { SetOutputSinks(before_); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    OutputSinks before_;
};

bool HoldsGame(const std::string& name) {
    std::error_code failed;
    if (!fs::is_regular_file(fs::symlink_status(name, failed)) ||
        fs::file_size(name, failed) > MAX_GAME_LENGTH || failed) {
        return false;
    }
    const Silence silence;
    const BoardSettingsGuard settings;
    const auto record = std::make_unique<GameRecord>();
    try {
        return LoadGame(name, *record) == 0;
    } catch (const ProgramEnd&) {
        return false;
    }
}

bool Exists(const std::string& name) {
    std::error_code failed;
    return fs::symlink_status(name, failed).type() != fs::file_type::not_found;
}

// Makes the file previous.tlx. Answers false when one of the older games cannot be moved on, and
// does then not write over any.
bool BecomePrevious(const std::string& name) {
    for (int number = MAX_PREVIOUS_GAMES - 1; number >= 0; --number) {
        const std::string from = number == 0 ? name : NumberedName("previous", number);
        const std::string to = NumberedName("previous", number + 1);
        if (std::rename(from.c_str(), to.c_str()) != 0 && errno != ENOENT) {
            return false;
        }
    }
    return true;
}

// Answers whether the game can be kept under this name, and clears the way.
bool TakeName(const std::string& name, const std::function<bool(const std::string& name)>& claim) {
    if (!claim(name)) {
        return false;
    }
    return !Exists(name) || (HoldsGame(name) && BecomePrevious(name));
}

}  // namespace

void BeginKeeping(KeptGame& kept, const std::function<bool(const std::string& name)>& claim) {
    for (int number = 1; number <= MAX_KEPT_FILES; ++number) {
        const std::string name = NumberedName(KEPT_GAME_NAME, number);
        if (TakeName(name, claim)) {
            kept.File = name;
            return;
        }
    }
}

void KeepText(KeptGame& kept, const std::string& text) {
    kept.IsUpToDate = !kept.File.empty() &&
                      (text == kept.Text ||
                       FileReplace(kept.File, text, Durability::InMemory) == FileReplaced::Done);
    if (kept.IsUpToDate) {
        kept.Text = text;
    }
}

std::string NameToLoad(const KeptGame& kept) {
    return kept.File.substr(0, kept.File.rfind('.'));
}

void PutGameAside(KeptGame& kept, bool hasNewPlies) {
    if (kept.Text.empty()) {
        return;
    }
    kept.Text.clear();
    if (!hasNewPlies) {
        std::remove(kept.File.c_str());
    } else if (!BecomePrevious(kept.File)) {
        kept.File.clear();  // rather than write over a game
    }
}

void SayWhetherKept(bool isKept, const std::string& name) {
    if (isKept) {
        PrintError("The game is kept: /stop, /load %s and /cont go on with it.\n", name.c_str());
    } else {
        PrintError("The game could not be kept!\n");
    }
}
