#include "fuzz/fuzz_support.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

#include "common/random_games.h"
#include "config/board_settings.h"
#include "gamefiles/saved_game.h"

void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "Not so: %s\n", what);
        std::abort();
    }
}

std::string TextOfInput(const std::uint8_t* data, std::size_t size, std::size_t maxLength) {
    std::string text;
    std::size_t length = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const char c = static_cast<char>(data[i]);
        length = c == '\n' ? 0 : length + 1;
        if (length > maxLength) {
            text += '\n';
            length = 1;
        }
        text += c;
    }
    return text;
}

std::string FileInMemory(const std::string& text) {
    static const int file = memfd_create("talurex-fuzz", 0);
    Require(ftruncate(file, 0) == 0, "the file in memory can be emptied");
    Require(pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()),
            "the file in memory can be written");
    return "/proc/self/fd/" + std::to_string(file);
}

void SilenceStandardOutput() {
    Require(std::freopen("/dev/null", "w", stdout) != nullptr, "standard output can be silenced");
}

void RequireRoundTrip(const GameRecord& record) {
    const BoardSettings settings = GetBoardSettings();
    const std::string text = SavedGameText(record);
    static const auto loaded = std::make_unique<GameRecord>();
    SetBoardSettings({6, 2, 1});
    Require(LoadGame(FileInMemory(text), *loaded) == 0, "a saved game loads");
    const BoardSettings after = GetBoardSettings();
    Require(after.XDim == settings.XDim && after.YDim == settings.YDim, "the board is the same");
    Require(FirstDifference(record, *loaded) == -1, "the loaded game is the saved one");
    Require(SavedGameText(*loaded) == text, "the loaded game saves to the same text");
}
