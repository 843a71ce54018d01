#include "gamefiles/kept_game.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

#include "gamefiles/stored_games.h"
#include "support/file_replace.h"
#include "support/files.h"
#include "support/output.h"

namespace {

namespace fs = std::filesystem;

constexpr int MAX_KEPT_FILES = 9;
constexpr char PREVIOUS_GAME_NAME[] = "previous";

std::string NumberedName(std::string name, int number) {
    if (number > 1) {
        name += '-';
        name += std::to_string(number);
    }
    return name + ".tlx";
}

std::string NameWithoutExtension(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

std::string ContentOf(const std::string& name) {
    std::ifstream file(name);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Makes the file previous.tlx; the older games make room, and if need be the oldest goes. Answers
// false when one of them cannot be moved on, and does then not write over any.
bool BecomePrevious(const std::string& name) {
    int numMoved = 0;
    while (numMoved < MAX_PREVIOUS_GAMES - 1 &&
           FileExists(NumberedName(PREVIOUS_GAME_NAME, numMoved + 1))) {
        ++numMoved;
    }
    for (int number = numMoved; number >= 0; --number) {
        const std::string from = number == 0 ? name : NumberedName(PREVIOUS_GAME_NAME, number);
        const std::string to = NumberedName(PREVIOUS_GAME_NAME, number + 1);
        if (std::rename(from.c_str(), to.c_str()) != 0) {
            return false;
        }
    }
    return true;
}

// Takes the name for the game to be kept, if nothing has it but a game, which is put aside.
bool TakeName(KeptGame& kept, const std::string& name) {
    if (FileExists(name)) {
        std::error_code failed;
        const std::optional<StoredGame> found =
            fs::is_regular_file(fs::symlink_status(name, failed)) ? LookIntoGame(name)
                                                                  : std::nullopt;
        if (!found || !BecomePrevious(name)) {
            return false;
        }
        kept.NumFoundPlies = found->NumPlies;
        kept.Found = found->IsOver ? "" : ContentOf(NumberedName(PREVIOUS_GAME_NAME, 1));
    }
    kept.File = name;
    return true;
}

}  // namespace

void BeginKeeping(KeptGame& kept, const std::function<bool(const std::string& name)>& claim) {
    for (int number = 1; number <= MAX_KEPT_FILES; ++number) {
        const std::string name = NumberedName(KEPT_GAME_NAME, number);
        if (claim(name) && TakeName(kept, name)) {
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

std::string FindPrevious(const std::string& text) {
    for (int number = 1; number <= MAX_PREVIOUS_GAMES; ++number) {
        const std::string name = NumberedName(PREVIOUS_GAME_NAME, number);
        if (fs::is_regular_file(name) && ContentOf(name) == text) {
            return NameWithoutExtension(name);
        }
    }
    return "";
}

bool IsKeptName(std::string_view fileName) {
    const fs::path path = fs::path(fileName).lexically_normal();
    const auto hasStem = [&](const char* stem, int count) {
        for (int number = 1; number <= count; ++number) {
            if (path == NumberedName(stem, number)) {
                return true;
            }
        }
        return false;
    };
    return hasStem(KEPT_GAME_NAME, MAX_KEPT_FILES) ||
           hasStem(PREVIOUS_GAME_NAME, MAX_PREVIOUS_GAMES);
}

std::string NameToLoad(const KeptGame& kept) {
    return NameWithoutExtension(kept.File);
}

void PutGameAside(KeptGame& kept, bool hasNewPlies) {
    if (kept.Text.empty()) {
        return;
    }
    if (hasNewPlies && !FileExists(kept.File)) {
        KeepText(kept, std::exchange(kept.Text, ""));  // somebody has removed it
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
