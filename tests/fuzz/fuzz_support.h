// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "rules/game_record.h"

// Called for every input; answers 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Called once, before the first input; answers 0.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

// Ends the process as a crash when `condition` does not hold.
void Require(bool condition, const char* what);

// The input as text whose lines are at most `maxLength` characters long, line feed not counted:
// longer ones end the program by design.
std::string TextOfInput(const std::uint8_t* data, std::size_t size, std::size_t maxLength);

// Makes `text` the content of a file in memory and answers its name. There is one such file; the
// next call overwrites it.
std::string FileInMemory(const std::string& text);

// The line as it may be typed here: files stay in a scratch folder, and it is empty when it would
// search or open a connection.
std::string Harmless(const std::string& line);

// Removes the one file that such lines save, load and import.
void ForgetGameFile();

// What the program prints is of no interest.
void SilenceStandardOutput();

// Requires that the game saves, loads back equal under the settings that it needs, and saves to the
// same text again. The settings afterwards are those that were loaded.
void RequireRoundTrip(const GameRecord& record);
