// Any text imported as a game log: it changes nothing, or it is a game that saves and loads back.
#include <memory>

#include "config/board_settings.h"
#include "fuzz/fuzz_support.h"
#include "gamefiles/game_log.h"
#include "rules/referee.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto record = std::make_unique<GameRecord>();
    constexpr int LAST_MOVE_BEFORE = -5;
    SetBoardSettings(DEFAULT_BOARD);
    record->LastMove = LAST_MOVE_BEFORE;
    if (ImportGame(FileInMemory(TextOfInput(data, size, 198)), *record) != 0) {
        Require(record->LastMove == LAST_MOVE_BEFORE, "a refused log changes no game");
    } else {
        Require(IsEndPosition(record->PositionList[record->LastMove]), "an imported game is over");
        RequireRoundTrip(*record);
    }
    return 0;
}
