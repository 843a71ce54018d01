#include "board/board_session.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <utility>

#include "board/kept_game.h"
#include "board/page_request.h"
#include "support/fatal.h"
#include "support/file_replace.h"

namespace {

using boost::system::error_code;
using namespace std::chrono_literals;

// A position is followed by the prompt within this time, unless the computer thinks: the two are
// then shown as one.
constexpr auto PUBLISH_DELAY = 2ms;
// A line that is answered sooner is not shown as thinking.
constexpr auto THINK_DELAY = 100ms;
constexpr auto COPY_DELAY = 30ms;
constexpr auto COPY_INTERVAL = 1s;
// A Talurex that does not end by itself is ended.
constexpr auto END_PATIENCE = 5s;
constexpr auto REPEATED_SIGNAL = 500ms;
constexpr auto PARTING_PATIENCE = 1s;
constexpr auto BEHIND_PATIENCE = 1s;

constexpr const char* KEPT_GAME = "autosave";

bool IsThinking(const BoardSession& session) {
    return !session.Watching && !session.Ended && !session.Talk.View.Waiting &&
           !session.Talk.Asking;
}

PageInput InputOfPages(const BoardSession& session) {
    PageInput input;
    input.View = session.Talk.View;
    input.State = session.Ended         ? PlayState::Ended
                  : IsThinking(session) ? PlayState::Thinking
                                        : PlayState::Waiting;
    input.Watching = session.Watching;
    input.ExitStatus = session.ExitStatus;
    input.LastWords = session.LastWords;
    return input;
}

void SendLog(BoardSession& session) {
    const std::string text = TakeNewText(session.Talk);
    if (!text.empty() && !session.Web.Pages.empty()) {
        SendToPages(session.Web, LogMessage(text, false));
    }
}

// Tells the pages how things stand now.
void Publish(BoardSession& session) {
    SendLog(session);
    session.Changed = false;
    session.PromptShown = session.Talk.View.Waiting;
    if (!session.Web.Pages.empty()) {
        ++session.Serial;
        SendStateToPages(session.Web,
                         StateMessage(InputOfPages(session), &session.Published, session.Serial));
    }
    session.Published = session.Talk.View.Shown;
}

void PublishWhatIsDue(BoardSession& session) {
    if (session.Changed) {
        Publish(session);
    } else {
        SendLog(session);
    }
}

void PublishSoon(BoardSession& session) {
    if (session.Dated) {
        return;
    }
    session.Dated = true;
    session.PublishTimer.expires_after(PUBLISH_DELAY);
    session.PublishTimer.async_wait([&session](const error_code&) {
        session.Dated = false;
        PublishWhatIsDue(session);
    });
}

// Writes the next line to Talurex, if it waits for one.
void TypeNext(BoardSession& session) {
    const std::string input = NextInput(session.Talk);
    if (input.empty()) {
        return;
    }
    session.PromptShown = session.PromptShown && session.Talk.Asking;
    WriteToGame(session.Game, input);
    PublishSoon(session);
    session.ThinkTimer.expires_after(THINK_DELAY);
    session.ThinkTimer.async_wait([&session](const error_code& cancelled) {
        if (!cancelled && IsThinking(session)) {
            Publish(session);
        }
    });
}

void Hurry(BoardSession& session) {
    // Before that it may not yet know what the signal is for.
    if (IsThinking(session) && (session.Talk.Heard || session.Talk.View.Connected)) {
        SignalGame(session.Game, SIGUSR1);
    }
}

// Talurex keeps a copy of the game where it is out of the way, behind every change. Changes in
// quick succession are left time between them: a copy that is being written holds up the next line.
void CopySoon(BoardSession& session) {
    Conversation& talk = session.Talk;
    if (session.CopyDated || talk.SafeCopy.empty() || talk.NumCopied == talk.View.NumChanges) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now - session.LastCopy >= COPY_INTERVAL) {
        session.LastCopy = now;
        talk.SafeCopyDue = !session.Ending;
        return;
    }
    session.CopyDated = true;
    session.CopyTimer.expires_after(COPY_DELAY);
    session.CopyTimer.async_wait([&session](const error_code& cancelled) {
        session.CopyDated = false;
        session.LastCopy = std::chrono::steady_clock::now();
        session.Talk.SafeCopyDue = !cancelled && !session.Ended && !session.Ending;
        TypeNext(session);
    });
}

// Goes on with the end of the session: at a prompt.
void GoOnEnding(BoardSession& session) {
    if (session.Talk.View.Unsaved && !session.SaveTyped) {
        session.SaveTyped = true;
        session.Talk.Queue.assign(1, {std::string("/save ") + KEPT_GAME, LineKind::Typed});
        return;
    }
    if (!session.Talk.Queue.empty()) {
        return;  // a question of our own comes before the line that saves
    }
    if (session.SaveTyped) {
        PrintError(session.Talk.View.Unsaved
                       ? "The game could not be kept!\n"
                       : "The game is kept: /load autosave goes on with it.\n");
        session.Talk.View.Unsaved = false;
    }
    CloseGameInput(session.Game);
}

void TakePrompt(BoardSession& session) {
    if (session.Ending) {
        GoOnEnding(session);
    }
    if (IsSettled(session.Talk)) {
        session.ThinkTimer.cancel();
        if (session.Changed || !session.PromptShown) {
            Publish(session);
        }
    }
    CopySoon(session);
    TypeNext(session);
}

void ShowPart(BoardSession& session, const OutputPart& part) {
    Conversation& talk = session.Talk;
    if (part.Kind == OutputKind::Drawing && !talk.View.LinkExact) {
        PublishWhatIsDue(session);
    }
    session.Changed = TakePart(talk, part) || session.Changed;
    if (part.Kind == OutputKind::Prompt) {
        TakePrompt(session);
    } else if (session.Changed || !talk.NewText.empty()) {
        PublishSoon(session);
    }
}

// Takes the bytes of the display link up to the end of an update.
void TakeDisplay(BoardSession& session) {
    PublishWhatIsDue(session);
    std::string_view bytes = session.DisplayBytes;
    session.Changed = TakeDisplayBytes(session.Talk, session.DisplayLine, bytes);
    session.DisplayBytes.erase(0, session.DisplayBytes.size() - bytes.size());
    if (session.Changed) {
        PublishSoon(session);
    }
}

void TakeFirstPart(BoardSession& session) {
    const OutputPart part = std::move(session.Output.front());
    session.Output.pop_front();
    ShowPart(session, part);
}

// Takes in the next piece of what has been read, and reads the link as far as is needed: what it
// has sent is older than a prompt. A link that is not exact waits for the drawing that it has to
// match. Answers false when there is nothing left.
bool TakeNext(BoardSession& session) {
    const bool drawingFirst = !session.Output.empty() && !session.Talk.View.LinkExact &&
                              session.Output.front().Kind != OutputKind::Prompt;
    if (drawingFirst) {
        TakeFirstPart(session);
        return true;
    }
    if (session.DisplayBytes.empty()) {
        session.DisplayBytes = ReadDisplay(session.Display);
    }
    if (!session.DisplayBytes.empty()) {
        TakeDisplay(session);
        return true;
    }
    if (!session.Output.empty()) {
        TakeFirstPart(session);
        return true;
    }
    return false;
}

void TakeIn(BoardSession& session);

// A page that reads nothing for this long is not waited for.
void GiveUpSoon(BoardSession& session) {
    if (session.BehindDated) {
        return;
    }
    session.BehindDated = true;
    session.BehindTimer.expires_after(BEHIND_PATIENCE);
    session.BehindTimer.async_wait([&session](const error_code&) {
        session.BehindDated = false;
        GiveUpStuckPages(session.Web);
        TakeIn(session);
    });
}

// Takes in all that has been read, as fast as the pages can follow, and then waits for more.
void TakeIn(BoardSession& session) {
    if (session.TakingIn || session.Ended) {
        return;
    }
    session.TakingIn = true;
    bool behind = false;
    do {
        behind = PagesAreBehind(session.Web);
    } while (!behind && TakeNext(session));
    session.TakingIn = false;
    if (behind) {
        GiveUpSoon(session);
        return;
    }
    AwaitDisplay(session.Display);
    AwaitOutput(session.Game);
}

void TakeOutput(BoardSession& session, std::string_view bytes) {
    for (OutputPart& part : ReadOutput(session.Talk.Output, bytes)) {
        session.Output.push_back(std::move(part));
    }
    TakeIn(session);
}

void TakeConnection(BoardSession& session, bool connected) {
    session.DisplayBytes.clear();
    session.DisplayLine.clear();
    NoteConnection(session.Talk.View, connected);
    if (session.Watching) {
        Publish(session);
    }
}

// Stops the context when every page has been told and has parted, or has had the time for it.
void StopSoon(BoardSession& session) {
    session.Web.OnEmpty = [&session] { session.Context.stop(); };
    CloseWebServer(session.Web);
    session.EndTimer.expires_after(PARTING_PATIENCE);
    session.EndTimer.async_wait([&session](const error_code&) { session.Context.stop(); });
    session.PublishTimer.cancel();
    session.ThinkTimer.cancel();
    session.CopyTimer.cancel();
}

// Talurex has gone with the game: its last copy and what was played since are put where the user
// finds them.
void KeepSafeCopy(const BoardSession& session, int status) {
    if (!session.Talk.View.Unsaved || status == 0) {
        return;
    }
    std::ostringstream game;
    game << std::ifstream(session.Talk.SafeCopy, std::ios::binary).rdbuf();
    const std::string text = KeptGameText(session.Talk.View, game.str());
    const bool kept =
        !text.empty() && FileReplace(std::string(KEPT_GAME) + ".tlx", text) == FileReplaced::Done;
    PrintError(kept ? "The game is kept: /load autosave goes on with it.\n"
                    : "The game could not be kept!\n");
}

void TakeEnd(BoardSession& session, int status) {
    while (TakeNext(session)) {
    }
    session.Ended = true;
    session.ExitStatus = session.Ending ? 0 : status;
    session.LastWords = session.Ending ? "The board was closed." : LastLines(session.Talk, 10);
    if (!session.Ending && status != 0) {
        PrintError("%s\ntalurex-board: Talurex has ended with status %i.\n",
                   session.LastWords.c_str(), status);
    }
    KeepSafeCopy(session, status);
    Publish(session);
    StopSoon(session);
}

std::vector<std::string> Greet(BoardSession& session) {
    SendLog(session);
    return {LogMessage(session.Talk.Log, true),
            StateMessage(InputOfPages(session), nullptr, session.Serial)};
}

std::string TakeLine(BoardSession& session, const PageRequest& request, LineKind kind) {
    std::string refusal = RefusalOf(request.Text);
    if (!refusal.empty()) {
        return refusal;
    }
    if (kind == LineKind::Move && (IsThinking(session) || !session.Talk.Queue.empty())) {
        return "It is not the moment for a move.";
    }
    if (!QueueLine(session.Talk, {request.Text, kind})) {
        return "Too many lines are waiting already.";
    }
    if (kind == LineKind::Replace) {
        Hurry(session);
    }
    TypeNext(session);
    return "";
}

std::string TakeRequest(BoardSession& session, const PageRequest& request) {
    if (session.Watching) {
        return "This board is for looking only.";
    }
    if (session.Ended || session.Ending) {
        return "Talurex has ended.";
    }
    switch (request.Kind) {
    case RequestKind::Line:
        return TakeLine(session, request, LineKind::Typed);
    case RequestKind::Replace:
        return TakeLine(session, request, LineKind::Replace);
    case RequestKind::Move:
        return TakeLine(session, request, LineKind::Move);
    case RequestKind::MoveNow:
        Hurry(session);
        return "";
    case RequestKind::Token:
    case RequestKind::None:
        break;
    }
    return "The board did not understand the page.";
}

}  // namespace

void BeginSession(BoardSession& session) {
    session.Talk.View.LinkOnly = session.Watching;
    session.Published = session.Talk.View.Shown;
    session.Game.OnOutput = [&session](std::string_view bytes) { TakeOutput(session, bytes); };
    session.Game.OnEnd = [&session](int status) { TakeEnd(session, status); };
    session.Display.OnReadable = [&session] { TakeIn(session); };
    session.Display.OnConnection = [&session](bool connected) {
        TakeConnection(session, connected);
    };
    session.Web.OnSent = [&session] { TakeIn(session); };
    session.Web.OnPage = [&session] { return Greet(session); };
    session.Web.OnMessage = [&session](std::string_view message) {
        const std::string refusal = TakeRequest(session, ReadPageRequest(message));
        return refusal.empty() ? "" : ErrorMessage(refusal);
    };
}

void EndSession(BoardSession& session) {
    if (session.Watching) {
        session.Ended = true;
        session.LastWords = "The board was closed.";
        Publish(session);
        StopSoon(session);
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (session.Ending || session.Ended) {
        // Closing a terminal can send the same signal twice, and so can an impatient hand.
        if (now - session.EndBegan > REPEATED_SIGNAL) {
            KeepSafeCopy(session, 1);
            SignalGame(session.Game, SIGKILL);
            session.Context.stop();
        }
        return;
    }
    session.EndBegan = now;
    session.Ending = true;
    session.EndTimer.expires_after(END_PATIENCE);
    session.EndTimer.async_wait([&session](const error_code& cancelled) {
        if (!cancelled) {
            SignalGame(session.Game, SIGKILL);
        }
    });
    session.Talk.Queue.clear();
    if (session.Talk.View.Waiting) {
        GoOnEnding(session);
        TypeNext(session);
    } else if (session.Talk.View.Drawn) {
        Hurry(session);
    } else {
        SignalGame(session.Game, SIGTERM);  // it plays against itself, or has not begun
    }
}
