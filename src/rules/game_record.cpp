#include "rules/game_record.h"

#include <cstdio>

bool CheckRecordRoom(int moveNumber) {
    if (moveNumber + 1 < GAME_RECORD_SIZE) {
        return true;
    }
    std::printf("Error: Game record is full!\n");
    return false;
}
