#include "board/conversation.h"

#include <utility>

namespace {

constexpr std::size_t MAX_QUEUED_LINES = 32;
constexpr std::size_t MAX_LOG_LENGTH = 65536;

// No line of the protocol is longer; what is longer is not kept.
constexpr std::size_t MAX_DISPLAY_LINE = 256;

// Drops the oldest lines of a log that has grown too long, many at a time.
void ShortenLog(std::string& log) {
    if (log.size() > MAX_LOG_LENGTH + MAX_LOG_LENGTH / 4) {
        const std::size_t end = log.find('\n', log.size() - MAX_LOG_LENGTH);
        log.erase(0, end == std::string::npos ? log.size() - MAX_LOG_LENGTH : end + 1);
    }
}

void AddToLog(Conversation& talk, std::string_view text) {
    talk.Log += text;
    talk.NewText += text;
    ShortenLog(talk.Log);
    ShortenLog(talk.NewText);
}

bool IsControl(unsigned char c) {
    return c < ' ' || c == 127;
}

// The bytes that make Talurex read exactly this line: it takes one of the greatest length without
// waiting for a line feed, and would take that for an empty line of its own.
std::string AsInput(std::string_view line) {
    std::string input(line);
    if (input.size() < MAX_TYPED_LENGTH) {
        input += '\n';
    }
    return input;
}

std::string TypeLine(Conversation& talk, const std::string& line, bool asking) {
    NoteLine(talk.View, line);
    talk.Asking = asking;
    if (!asking) {
        AddToLog(talk, line + '\n');
    }
    return AsInput(line);
}

// A question of our own that is due; empty when there is none.
std::string DueQuestion(Conversation& talk) {
    std::string question = TakeQuestion(talk.View);
    if (question.empty() && talk.SafeCopyDue) {
        talk.SafeCopyDue = false;
        talk.NumCopied = talk.View.NumChanges;
        NoteCopy(talk.View);
        question = "/save " + talk.SafeCopy;
    }
    return question;
}

std::string TextOf(const QueuedLine& line, bool running) {
    return line.Kind == LineKind::Move && !running ? "/move " + line.Text : line.Text;
}

bool TakeText(Conversation& talk, const std::string& text) {
    if (!talk.Asking) {
        AddToLog(talk, text);
    } else if (text.starts_with("Saving ")) {
        return false;  // of the copy: for people the game is not saved
    }
    return NoteText(talk.View, text);
}

bool TakePrompt(Conversation& talk, const OutputPart& part) {
    if (!talk.Asking) {  // else it stands there already
        AddToLog(talk, part.Text);
    }
    talk.Asking = false;
    return NotePrompt(talk.View, part.At);
}

}  // namespace

Conversation NewConversation() {
    Conversation talk;
    talk.View = NewGameView();
    return talk;
}

std::string RefusalOf(std::string_view line) {
    if (line.size() > MAX_TYPED_LENGTH) {
        return "The line is too long: 198 characters at most.";
    }
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto c = static_cast<unsigned char>(line[i]);
        const auto next = static_cast<unsigned char>(i + 1 < line.size() ? line[i + 1] : ' ');
        if (IsControl(c) || (c == 0xC2 && next >= 0x80 && next < 0xA0)) {
            return "The line holds a control character.";
        }
    }
    return "";
}

bool QueueLine(Conversation& talk, QueuedLine line) {
    if (talk.Queue.size() >= MAX_QUEUED_LINES) {
        return false;
    }
    talk.Queue.push_back(std::move(line));
    return true;
}

std::string NextInput(Conversation& talk) {
    if (!talk.View.Waiting) {
        return "";
    }
    const std::string question = DueQuestion(talk);
    if (!question.empty()) {
        return TypeLine(talk, question, true);
    }
    if (talk.Queue.empty()) {
        return "";
    }
    if (talk.Queue.front().Kind == LineKind::Replace && talk.View.Running) {
        talk.Queue.front().Kind = LineKind::Typed;
        return TypeLine(talk, "/stop", false);
    }
    const std::string line = TextOf(talk.Queue.front(), talk.View.Running);
    talk.Queue.pop_front();
    return TypeLine(talk, line, false);
}

bool IsSettled(const Conversation& talk) {
    return talk.View.Waiting && !talk.Asking && !HasQuestion(talk.View);
}

bool TakePart(Conversation& talk, const OutputPart& part) {
    talk.Heard = true;
    switch (part.Kind) {
    case OutputKind::Text:
        talk.View.Waiting = false;
        return TakeText(talk, part.Text);
    case OutputKind::Drawing:
        talk.View.Waiting = false;
        return NoteDrawing(talk.View, part.Drawing);
    case OutputKind::Prompt:
        return TakePrompt(talk, part);
    }
    return false;
}

bool TakeDisplayBytes(Conversation& talk, std::string& begunLine, std::string_view& bytes) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        const std::string_view piece = bytes.substr(0, end);
        if (begunLine.size() + piece.size() <= MAX_DISPLAY_LINE) {
            begunLine += piece;
        } else {
            begunLine.assign(1, '?');  // a line that is none
        }
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (end == std::string_view::npos) {
            return false;
        }
        const std::string line = std::exchange(begunLine, "");
        if (TakeDisplayLine(talk.View.Link, line) == DisplayLine::Done) {
            return NoteUpdate(talk.View);
        }
    }
    return false;
}

std::string TakeNewText(Conversation& talk) {
    return std::exchange(talk.NewText, "");
}

std::string LastLines(const Conversation& talk, int count) {
    std::size_t begin = talk.Log.size();
    while (begin > 0 && talk.Log[begin - 1] == '\n') {
        --begin;
    }
    const std::size_t end = begin;
    for (; begin > 0; --begin) {
        if (talk.Log[begin - 1] == '\n' && --count == 0) {
            break;
        }
    }
    return talk.Log.substr(begin, end - begin);
}
