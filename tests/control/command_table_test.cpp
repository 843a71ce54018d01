#include "control/command_table.h"

#include <gtest/gtest.h>

namespace {

struct Lookup {
    const char* Line;
    CommandId Id;
    const char* Left;  // what is left of the line
};

TEST(CommandTable, LinesNameCommands) {
    const Lookup lookups[] = {
        {"/load mygame", COMMAND_LOAD, "mygame"},
        {"//lo mygame", COMMAND_LOAD, "mygame"},
        {"load  \t a  b", COMMAND_LOAD, "a  b"},
        {"/sa", COMMAND_SAVE, ""},
        {"star", COMMAND_START, ""},
        {"sto x", COMMAND_STOP, "x"},
        {"le 7", COMMAND_LEVEL, "7"},
        {"con", COMMAND_CONT, ""},
        {"col w", COMMAND_COLOR, "w"},
        {"hi 1", COMMAND_HIGHLIGHTING, "1"},
        {"u", COMMAND_UNDO, ""},
        {"p", COMMAND_PLAYERS, ""},
        {"q", COMMAND_QUIT, ""},
        {"move /e3", COMMAND_MOVE, "/e3"},
        {"", COMMAND_NONE, ""},
        {"/", COMMAND_NONE, ""},
        {"///", COMMAND_NONE, ""},
        {"/ save", COMMAND_NONE, "save"},
        {"/save\nx", COMMAND_SAVE, "x"},
        {"/s", UNKNOWN_COMMAND, "/s"},
        {"sta now", UNKNOWN_COMMAND, "sta now"},
        {"co", UNKNOWN_COMMAND, "co"},
        {"/quitnow", UNKNOWN_COMMAND, "/quitnow"},
        {"Load", UNKNOWN_COMMAND, "Load"},
        {"e3-e4", UNKNOWN_COMMAND, "e3-e4"},
        {"load\tgame", UNKNOWN_COMMAND, "load\tgame"},
        {" load", COMMAND_NONE, "load"},
    };
    for (const Lookup& lookup : lookups) {
        std::string line = lookup.Line;
        EXPECT_EQ(lookup.Id, GetCommand(line)) << lookup.Line;
        EXPECT_EQ(lookup.Left, line) << lookup.Line;
    }
}

}  // namespace
