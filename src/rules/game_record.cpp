#include "rules/game_record.h"

#include "support/output.h"

bool CheckRecordRoom(int moveNumber) {
    if (moveNumber + 1 < GAME_RECORD_SIZE) {
        return true;
    }
    PrintRefusal("Error: Game record is full!\n");
    return false;
}
