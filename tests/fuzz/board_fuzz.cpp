// Anything that Talurex may print, its display link send, or a page ask for: each piece of the
// input is a letter, its length, and its bytes. Nothing of it may stop the board or grow without
// bound, and what the pages are told is whole.
#include <cstdlib>

#include <nlohmann/json.hpp>

#include "board/conversation.h"
#include "board/page_request.h"
#include "board/page_state.h"
#include "config/glob_cfg.h"
#include "fuzz/fuzz_support.h"

namespace {

struct Board {
    Conversation Talk;
    std::string DisplayLine;
    Picture Published;
    int Serial = 0;
};

// To write a state and read it back takes longer than all the rest: a few in each input must do.
void RequireWholeState(Board& board) {
    constexpr int MAX_STATES = 3;
    if (board.Serial >= MAX_STATES) {
        return;
    }
    PageInput input;
    input.View = board.Talk.View;
    input.State = board.Talk.View.Waiting ? PlayState::Waiting : PlayState::Thinking;
    const std::string text = StateMessage(input, &board.Published, ++board.Serial);
    board.Published = input.View.Shown;
    const nlohmann::json state = nlohmann::json::parse(text);
    Require(text.size() < 100000, "a state is not large");
    Require(state["spaces"].size() == static_cast<std::size_t>(NumBoardSpaces()),
            "a state has all spaces");
    Require(nlohmann::json::parse(LogMessage(TakeNewText(board.Talk), false)).is_object(),
            "a log can be read");
}

void Ask(Board& board, std::string_view message) {
    const PageRequest request = ReadPageRequest(message);
    if (request.Kind == RequestKind::None || !RefusalOf(request.Text).empty()) {
        return;
    }
    const LineKind kind = request.Kind == RequestKind::Move ? LineKind::Move : LineKind::Replace;
    if (QueueLine(board.Talk, {request.Text, kind})) {
        const std::string input = NextInput(board.Talk);
        Require(input.find('\n') >= input.size() - 1, "one line is typed at a time");
    }
}

void Take(Board& board, char kind, std::string_view bytes) {
    switch (kind) {
    case 'p':
        for (const OutputPart& part : ReadOutput(board.Talk.Output, bytes)) {
            if (TakePart(board.Talk, part)) {
                RequireWholeState(board);
            }
        }
        return;
    case 'd':
        while (!bytes.empty()) {
            TakeDisplayBytes(board.Talk, board.DisplayLine, bytes);
        }
        return;
    case 'a':
        return Ask(board, bytes);
    case 'c':
        return NoteConnection(board.Talk.View, !bytes.empty());
    default:
        board.Talk.View.LinkOnly = kind == 'w';
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    SilenceStandardOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SetDefaultConfiguration();
    Board board;
    board.Talk = NewConversation();
    board.Published = board.Talk.View.Shown;
    std::string_view input(reinterpret_cast<const char*>(data), size);
    while (input.size() >= 3) {
        const char kind = input[0];
        const auto high = static_cast<unsigned char>(input[1]);
        const auto low = static_cast<unsigned char>(input[2]);
        input.remove_prefix(3);
        const std::string_view bytes = input.substr(0, high * 256U + low);
        input.remove_prefix(bytes.size());
        Take(board, kind, bytes);
    }
    board.Serial = 0;
    RequireWholeState(board);
    Require(board.Talk.Log.size() < 100000 && board.Talk.Output.Line.size() < 10000 &&
                board.DisplayLine.size() < 10000 && board.Talk.Queue.size() < 100,
            "what is kept is bounded");
    return 0;
}
