#include "fuzz/fuzz_support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "common/round_trip.h"
#include "common/scratch_folder.h"
#include "config/glob_cfg.h"
#include "control/command_table.h"

namespace {

// The one file that is saved, loaded and imported.
const std::string& GameFile() {
    static const ScratchFolder folder;
    static const std::string file = folder.File("game.tlx");
    return file;
}

}  // namespace

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
    static const std::string path = MakeFileInMemory();
    WriteFile(path, text);
    return path;
}

std::string Harmless(const std::string& line) {
    if (!line.starts_with('/') && GlobCfg.GameRunFlag == 1) {
        return line;
    }
    std::string argument = line;
    switch (GetCommand(argument)) {
    case COMMAND_EVALUATE:
    case COMMAND_GUI: return "";
    case COMMAND_LOAD: return "/load " + GameFile();
    case COMMAND_SAVE: return "/save " + GameFile();
    case COMMAND_IMPORT: return argument.empty() ? line : "/import " + GameFile();
    default: return line;
    }
}

void ForgetGameFile() {
    std::filesystem::remove(GameFile());
}

void SilenceStandardOutput() {
    Require(std::freopen("/dev/null", "w", stdout) != nullptr, "standard output can be silenced");
}

void RequireRoundTrip(const GameRecord& record) {
    const std::string fault = RoundTripFault(record, FileInMemory(""));
    Require(fault.empty(), ("a game that is saved " + fault).c_str());
}
