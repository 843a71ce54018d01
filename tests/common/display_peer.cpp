#include "common/display_peer.h"

#include <algorithm>
#include <array>

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
