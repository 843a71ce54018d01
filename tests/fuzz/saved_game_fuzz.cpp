// Any text loaded as a saved game: it changes nothing, or it is a game that saves and loads back.
#include <memory>

#include "config/board_settings.h"
#include "fuzz/fuzz_support.h"
#include "gamefiles/saved_game.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto record = std::make_unique<GameRecord>();
    constexpr BoardSettings BEFORE = {7, 3, 2};
    constexpr int LAST_MOVE_BEFORE = -5;
    SetBoardSettings(BEFORE);
    record->LastMove = LAST_MOVE_BEFORE;
    if (LoadGame(FileInMemory(TextOfInput(data, size, 198)), *record) != 0) {
        Require(GetBoardSettings() == BEFORE, "a refused file changes no setting");
        Require(record->LastMove == LAST_MOVE_BEFORE, "a refused file changes no game");
    } else {
        RequireRoundTrip(*record);
    }
    return 0;
}
