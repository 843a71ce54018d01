#include "display/gui_link.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <linux/sockios.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "support/fatal.h"
#include "support/signals.h"

GuiMirror GuiLast;

namespace {

constexpr const char* HOST_NAME = "127.0.0.1";

// The bytes that the display has not taken yet.
int NumUntaken(int socketHandle) {
    int count = 0;
    ioctl(socketHandle, SIOCOUTQ, &count);
    return count;
}

// Waits until the display can be sent more. Answers false when it has taken not a byte for ten
// seconds, or when the end of the process is asked for: the game must not wait for ever.
bool WaitForDisplay(int socketHandle) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds PATIENCE(10);
    constexpr int LOOK_INTERVAL = 500;  // milliseconds
    pollfd display = {.fd = socketHandle, .events = POLLOUT, .revents = 0};
    int untaken = NumUntaken(socketHandle);
    Clock::time_point lastTaken = Clock::now();
    while (EndingSignal() == 0 && Clock::now() - lastTaken < PATIENCE) {
        if (poll(&display, 1, LOOK_INTERVAL) > 0) {
            return true;
        }
        const int left = NumUntaken(socketHandle);
        if (left < untaken) {
            lastTaken = Clock::now();
        }
        untaken = left;
    }
    return false;
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
        const ssize_t count =
            send(socketHandle, bytes + sent, length - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count == -1 && errno == EAGAIN && WaitForDisplay(socketHandle)) {
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
    const std::string update = UpdateText(GuiLast, record, moveNumber);
    // Line by line: a display that has hung up answers the first line with a reset, and so it is
    // missed in this update and not in the next.
    for (std::string_view rest = update; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        if (SocketSendString(GlobCfg.GuiSocket, line) != 0) {
            SocketClose(GlobCfg.GuiSocket);
            GlobCfg.Gui = 0;
            std::printf("Connection to GUI was lost!\nGUI is disabled!\n");
            return;
        }
    }
}
