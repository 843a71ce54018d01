#include "config/config_file.h"

#include <cstdio>
#include <optional>

#include "support/fatal.h"
#include "support/files.h"
#include "support/output.h"
#include "support/text.h"

namespace {

// The most characters that a line may have, its line feed among them.
constexpr int CONFIG_LINE_LENGTH = 200;

// Skips the white space that may stand before a keyword and before a quoted character.
std::string_view SkipSpace(std::string_view text) {
    while (!text.empty() && (IsLineSpace(text.front()) || text.front() == '\r')) {
        text.remove_prefix(1);
    }
    return text;
}

int SayUnreadable(const ConfigKey& key) {
    PrintError("Error: Could not read config line value for \"%s\"\n", key.Name);
    return 1;
}

int SetNumber(const ConfigKey& key, std::string_view value) {
    const std::optional<int> number = ReadInt(value);
    if (!number) {
        return SayUnreadable(key);
    }
    if (*number < key.Lowest || *number > key.Highest) {
        PrintError("Error: Config line value for \"%s\" is invalid! (must be %s)\n", key.Name,
                   key.Range);
        return 1;
    }
    GlobCfg.*key.Number = *number;
    return 0;
}

// The character may be anything, a blank or a quote among them.
int SetCharacter(const ConfigKey& key, std::string_view value) {
    value = SkipSpace(value);
    if (value.size() < 3 || value[0] != '\'' || value[2] != '\'') {
        return SayUnreadable(key);
    }
    GlobCfg.*key.Character = value[1];
    return 0;
}

}  // namespace

void ReadConfigFile(const std::string& path) {
    std::FILE* file = nullptr;
    if (FileOpenToRead(path, file) != 0) {
        Print("Warning! Config file could not be opened! Using default configuration!\n");
        return;
    }
    OwnedFile owned(file);
    std::string line;
    while (FileReadLine(CONFIG_LINE_LENGTH, line, file) >= 0) {
        if (ProcessConfigLine(line) != 0) {
            Print("Config file: \"%s\" contains errors! Please correct, and try again\n",
                  path.c_str());
            throw ProgramEnd{};
        }
    }
    FileClose(owned.release());
}

int ProcessConfigLine(std::string_view line) {
    line = SkipSpace(line);
    if (line.empty() || line.front() == '#') {
        return 0;
    }
    const std::string_view keyword = ScanWord(line);
    if (keyword.empty()) {
        return 1;
    }
    for (const ConfigKey& key : CONFIG_KEYS) {
        if (keyword == key.Name) {
            return key.Character != nullptr ? SetCharacter(key, line) : SetNumber(key, line);
        }
    }
    PrintError("Error: Config line keyword \"%s\" was not recognized !\n",
               std::string(keyword).c_str());
    return 1;
}
