#include "display/gui_socket.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>

#include <linux/sockios.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "config/glob_cfg.h"
#include "support/output.h"
#include "support/requests.h"

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
    while (!IsRequested(END_REQUESTS) && Clock::now() - lastTaken < PATIENCE) {
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
