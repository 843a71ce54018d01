#include "display/gui_link.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "rules/referee.h"
#include "rules/setup.h"
#include "support/fatal.h"

GuiMirror GuiLast;

namespace {

constexpr const char* HOST_NAME = "127.0.0.1";

constexpr Place NOWHERE = {-1, -1};

// A step to highlight: a tower move, a placement (which comes from nowhere), or nothing at all.
struct Highlight {
    Place Source = NOWHERE;
    Place Target = NOWHERE;
};

// Sends a line of the update; without effect once the link is lost.
void SendLine(const std::string& line) {
    if (GlobCfg.Gui != 0 && SocketSendString(GlobCfg.GuiSocket, line + '\n') != 0) {
        SocketClose(GlobCfg.GuiSocket);
        GlobCfg.Gui = 0;
        std::printf("Connection to GUI was lost!\nGUI is disabled!\n");
    }
}

std::string PlaceText(Place place) {
    return ' ' + std::to_string(place.Column) + ' ' + std::to_string(place.Row);
}

void SendWay(char kind, const Highlight& way) {
    SendLine(kind + PlaceText(way.Source) + PlaceText(way.Target));
}

// The step that move `k` of the record makes.
Highlight StepOf(const GameRecord& record, int k) {
    const Position& position = record.PositionList[k];
    const Move& move = record.MoveList[k];
    const Place source = {move.Column, move.Row};
    if (position.SetupPhase != 0) {
        return {NOWHERE, source};
    }
    return {source, MoveTarget(position, move)};
}

// The step that led to position n; behind a pass, the one before it.
Highlight LastStep(const GameRecord& record, int n) {
    if (GetNumMoves(record.PositionList[n - 1]) != 0) {
        return StepOf(record, n - 1);
    }
    if (n < 2) {
        std::printf("GUIPrintPosition: Bad logical error, Bug in program!\n");
        return {};
    }
    return StepOf(record, n - 2);
}

// The step that the record holds behind position n.
Highlight NextStep(const GameRecord& record, int n) {
    if (n >= record.LastMove || GetNumMoves(record.PositionList[n]) == 0) {
        return {};
    }
    return StepOf(record, n);
}

void SendHighlights(const GameRecord& record, int n) {
    const bool highlighting = GlobCfg.GuiHighlighting != 0 && n != 0;
    SendWay('L', highlighting ? LastStep(record, n) : Highlight{});
    SendWay('N', highlighting ? NextStep(record, n) : Highlight{});
}

// Lets the display move the tower of the last move, unless the step was a placement or a pass. The
// mirrored target grows with it, so that it is not sent again as a changed space.
void SendAnimation(const GameRecord& record, int n) {
    const Position& before = record.PositionList[n - 1];
    if (before.SetupPhase != 0 || GetNumMoves(before) == 0) {
        return;
    }
    const Move& move = record.MoveList[n - 1];
    auto& mirrored = GuiLast.LastPosition.Spaces;
    const int height = mirrored[move.Column][move.Row].Height;
    const Place target = MoveTarget(GuiLast.LastPosition, move);
    SendWay('M', {{move.Column, move.Row}, target});
    // The display may show another game than this one, whose tower reaches beyond the board.
    if (target.Column >= 0 && target.Column < MAX_BOARD_X_DIM && target.Row >= 0 &&
        target.Row < MAX_BOARD_Y_DIM) {
        mirrored[target.Column][target.Row].Height += height;
    }
}

// One step forward changes a space only together with its height; any other step sends all spaces.
void SendSpaces(const Position& position, bool oneStep) {
    for (int y = 0; y < GlobCfg.BoardYDim; ++y) {
        for (int x = 0; x < GlobCfg.BoardXDim; ++x) {
            const Space& space = position.Spaces[x][y];
            if (oneStep && space.Height == GuiLast.LastPosition.Spaces[x][y].Height) {
                continue;
            }
            SendLine('S' + PlaceText({x, y}) + ' ' + std::to_string(space.Height) + ' ' +
                     std::to_string(space.Owner) + ' ' + std::to_string(space.Life));
        }
    }
}

std::string StateText(const Position& position) {
    int white = 0;
    int black = 0;
    GetScore(position, white, black);
    if (IsEndPosition(position)) {
        return "Game finished!  SCORE: " + std::to_string(white) + ':' + std::to_string(black);
    }
    return position.ActivePlayer == BLACK ? "BLACK is moving" : "WHITE is moving";
}

void SendStatus(const GameRecord& record, int n) {
    SendLine("TMove (" + std::to_string(n) + '/' + std::to_string(record.LastMove) + ") " +
             StateText(record.PositionList[n]));
}

}  // namespace

int SocketOpen(int& socketHandle) {
    const hostent* host = gethostbyname(HOST_NAME);
    if (host == nullptr) {
        PrintError("Unknown host: \"%s\"!\n", HOST_NAME);
        return 1;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(GlobCfg.GuiPort));
    std::memcpy(&address.sin_addr, host->h_addr_list[0], sizeof address.sin_addr);
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle == -1 ||
        connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        PrintError("Socket connection to gui failed!\n");
        SocketClose(handle);
        return 1;
    }
    // An update is many short lines, none of which may wait for the display to acknowledge another.
    const int on = 1;
    setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    socketHandle = handle;
    return 0;
}

void SocketClose(int socketHandle) {
    if (socketHandle >= 0) {
        close(socketHandle);
    }
}

std::size_t SocketSend(int socketHandle, const char* bytes, std::size_t length) {
    std::size_t sent = 0;
    while (sent < length) {
        // A display that has gone away is reported as an error, not by the signal that would end
        // the program.
        const ssize_t count = send(socketHandle, bytes + sent, length - sent, MSG_NOSIGNAL);
        if (count == -1 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        sent += static_cast<std::size_t>(count);
    }
    return sent;
}

int SocketSendString(int socketHandle, std::string_view text) {
    return SocketSend(socketHandle, text.data(), text.size()) == text.size() ? 0 : 1;
}

int OpenGuiLink() {
    const int failed = SocketOpen(GlobCfg.GuiSocket);
    GlobCfg.Gui = failed == 0 ? 1 : 0;
    std::printf(failed == 0 ? "Connection to GUI successfully established!\n"
                            : "Connection to GUI could not be established!\nGUI is disabled!\n");
    return failed;
}

bool CloseGuiLink() {
    if (GlobCfg.Gui == 0) {
        return false;
    }
    SocketSendString(GlobCfg.GuiSocket, "Q\n");
    SocketClose(GlobCfg.GuiSocket);
    GlobCfg.Gui = 0;
    return true;
}

void GUIPrintPosition(const GameRecord& record, int moveNumber) {
    if (GuiLast.Started == 0) {
        GuiLast.Started = 1;
        GenerateEmptyStartPosition(GuiLast.LastPosition);
        SendLine("C");
    }
    SendHighlights(record, moveNumber);
    const bool oneStep = moveNumber == GuiLast.LastMoveNr + 1;
    if (oneStep) {
        SendAnimation(record, moveNumber);
    }
    const Position& position = record.PositionList[moveNumber];
    if (!SamePosition(GuiLast.LastPosition, position)) {
        SendSpaces(position, oneStep);
    }
    SendStatus(record, moveNumber);
    SendLine("D");
    GuiLast.LastPosition = position;
    GuiLast.LastMoveNr = moveNumber;
}
