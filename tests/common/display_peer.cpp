#include "common/display_peer.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <vector>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/fatal.h"

namespace {

constexpr int PATIENCE = 20000;  // milliseconds

void Await(int descriptor) {
    pollfd wanted = {descriptor, POLLIN, 0};
    if (poll(&wanted, 1, PATIENCE) != 1) {
        ErrorExit("DisplayPeer: waited in vain\n");
    }
}

// A socket on a loopback port of the system's choosing.
int BindLoopback(int& port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(descriptor, generic, length) != 0 || getsockname(descriptor, generic, &length) != 0) {
        ErrorExit("DisplayPeer: cannot bind a port\n");
    }
    port = ntohs(address.sin_port);
    return descriptor;
}

bool IsShown(int x, int y) {
    return x >= 0 && x < 15 && y >= 0 && y < 9;
}

void Animate(ShownBoard& board, const std::array<int, 5>& numbers) {
    const auto [sx, sy, tx, ty, unused] = numbers;
    if (!IsShown(sx, sy) || !IsShown(tx, ty) || board.Spaces[sx][sy].Height == 0) {
        return;
    }
    const ShownSpace tower = board.Spaces[sx][sy];
    board.Spaces[sx][sy] = {};
    ShownSpace& target = board.Spaces[tx][ty];
    target = {target.Height + tower.Height, tower.Owner, target.Life | tower.Life};
}

// The numbers behind the letter of a line.
std::array<int, 5> NumbersOf(const std::string& line) {
    std::array<int, 5> numbers{};
    std::istringstream text(line.substr(1));
    for (int& number : numbers) {
        text >> number;
    }
    return numbers;
}

// Whether the line is its letter and `count` numbers, each behind one blank.
bool HasNumbers(const std::string& line, int count) {
    const std::array<int, 5> numbers = NumbersOf(line);
    std::string written(1, line[0]);
    for (int i = 0; i < count; ++i) {
        written += ' ' + std::to_string(numbers[i]);
    }
    return line == written;
}

bool IsWellFormed(const std::string& line) {
    switch (line[0]) {
    case 'L':
    case 'N':
    case 'M':
        return HasNumbers(line, 4);
    case 'S':
        return HasNumbers(line, 5);
    case 'T':
        return line.starts_with("TMove (");
    default:
        return line == "C" || line == "D";
    }
}

// Whether every line is well formed and stands where it may: each letter at most once, but for S,
// and L, N, T and D always.
bool IsUpdate(const std::string& update) {
    const std::string order = "CLNMSTD";
    std::string letters;
    std::istringstream lines(update);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || !IsWellFormed(line)) {
            return false;
        }
        if (line[0] != 'S' || !letters.ends_with('S')) {
            letters += line[0];
        }
    }
    for (const char letter : order) {
        if (letters.starts_with(letter)) {
            letters.erase(0, 1);
        } else if (letter != 'C' && letter != 'M' && letter != 'S') {
            return false;
        }
    }
    return letters.empty() && update.ends_with('\n');
}

// Empties what lies outside the rectangle that the spaces of a full update make up.
std::string KeepRectangle(ShownBoard& board, const std::vector<std::array<int, 5>>& sent) {
    const int columns = sent.back()[0] + 1;
    const int rows = sent.back()[1] + 1;
    if (sent.size() != static_cast<std::size_t>(columns * rows)) {
        return "neither one step nor the whole board";
    }
    for (std::size_t i = 0; i < sent.size(); ++i) {
        if (sent[i][1] * columns + sent[i][0] != static_cast<int>(i)) {
            return "spaces out of order";
        }
    }
    for (int x = 0; x < 15; ++x) {
        for (int y = 0; y < 9; ++y) {
            if (x >= columns || y >= rows) {
                board.Spaces[x][y] = {};
            }
        }
    }
    return "";
}

}  // namespace

DisplayPeer::DisplayPeer(int receiveBuffer) {
    Listener = BindLoopback(Port);
    if (receiveBuffer != 0) {
        setsockopt(Listener, SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
    }
    if (listen(Listener, 1) != 0) {
        ErrorExit("DisplayPeer: cannot listen\n");
    }
}

DisplayPeer::~DisplayPeer() {
    HangUp(*this);
    close(Listener);
}

ClosedPort::ClosedPort() {
    Descriptor = BindLoopback(Port);
}

ClosedPort::~ClosedPort() {
    close(Descriptor);
}

void AcceptConnection(DisplayPeer& peer) {
    HangUp(peer);
    Await(peer.Listener);
    peer.Connection = accept4(peer.Listener, nullptr, nullptr, SOCK_CLOEXEC);
}

void HangUp(DisplayPeer& peer) {
    if (peer.Connection != -1) {
        close(peer.Connection);
        peer.Connection = -1;
    }
}

bool ReadSome(DisplayPeer& peer, std::size_t maxBytes) {
    std::array<char, 4096> bytes;
    Await(peer.Connection);
    const ssize_t count = recv(peer.Connection, bytes.data(), std::min(maxBytes, bytes.size()), 0);
    if (count <= 0) {
        return false;
    }
    peer.Received.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

std::string ReadUpdate(DisplayPeer& peer) {
    const std::size_t begin = peer.Received.size();
    while (!peer.Received.ends_with("\nD\n") || peer.Received.size() == begin) {
        if (!ReadSome(peer, 1)) {
            ErrorExit("DisplayPeer: the update does not end\n");
        }
    }
    return peer.Received.substr(begin);
}

std::string ReadToEnd(DisplayPeer& peer) {
    const std::size_t begin = peer.Received.size();
    while (ReadSome(peer, 4096)) {
    }
    return peer.Received.substr(begin);
}

std::string ApplyUpdate(ShownBoard& board, const std::string& update) {
    if (!IsUpdate(update)) {
        return "malformed";
    }
    const int before = board.MoveNumber;
    std::vector<std::array<int, 5>> sent;
    std::istringstream lines(update);
    for (std::string line; std::getline(lines, line);) {
        const std::array<int, 5> numbers = NumbersOf(line);
        switch (line[0]) {
        case 'C':
            board.Spaces = {};
            break;
        case 'M':
            Animate(board, numbers);
            break;
        case 'S':
            if (!IsShown(numbers[0], numbers[1])) {
                return "no such space";
            }
            board.Spaces[numbers[0]][numbers[1]] = {numbers[2], numbers[3], numbers[4]};
            sent.push_back(numbers);
            break;
        case 'T':
            std::sscanf(line.c_str(), "TMove (%i/%i)", &board.MoveNumber, &board.LastMove);
            board.State = line.substr(line.find(") ") + 2);
            break;
        default:
            break;
        }
    }
    if (sent.empty() || board.MoveNumber == before + 1) {
        return "";
    }
    return KeepRectangle(board, sent);
}
