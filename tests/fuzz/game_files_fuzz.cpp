// Any text read as a saved game and as a game log: it changes nothing, or it is a game that saves
// and loads back.
#include "fuzz/fuzz_support.h"
#include "gamefiles/game_log.h"
#include "gamefiles/saved_game.h"
#include "rules/referee.h"

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static GameRecord record;
    constexpr BoardSettings BEFORE = {7, 3, 2};
    constexpr int LAST_MOVE_BEFORE = -5;
    const std::string text = TextOfInput(data, size, 198);
    SetBoardSettings(BEFORE);
    record.LastMove = LAST_MOVE_BEFORE;
    if (LoadGame(FileInMemory(text), record) == 0) {
        RequireRoundTrip(record);
    } else {
        Require(GetBoardSettings() == BEFORE, "a refused file changes no setting");
        Require(record.LastMove == LAST_MOVE_BEFORE, "a refused file changes no game");
    }

    SetBoardSettings(DEFAULT_BOARD);
    record.LastMove = LAST_MOVE_BEFORE;
    if (ImportGame(FileInMemory(text), record) == 0) {
        Require(IsEndPosition(record.PositionList[record.LastMove]), "an imported game is over");
        RequireRoundTrip(record);
    } else {
        Require(record.LastMove == LAST_MOVE_BEFORE, "a refused log changes no game");
    }
    return 0;
}
