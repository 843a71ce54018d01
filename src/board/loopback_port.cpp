#include "board/loopback_port.h"

#include <chrono>

#include <fcntl.h>

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

void KeepFromChildren(int descriptor) {
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}

void AwaitConnection(LoopbackPort& port);

// Where no descriptor is left, the next attempt would fail at once, and so on.
void TryAgainLater(LoopbackPort& port) {
    port.Pause.expires_after(std::chrono::milliseconds(200));
    port.Pause.async_wait([&port](const error_code& cancelled) {
        if (!cancelled && port.Acceptor.is_open()) {
            AwaitConnection(port);
        }
    });
}

void AwaitConnection(LoopbackPort& port) {
    port.Acceptor.async_accept([&port](const error_code& failed, tcp::socket socket) {
        if (!port.Acceptor.is_open()) {
            return;
        }
        if (failed) {
            TryAgainLater(port);
            return;
        }
        KeepFromChildren(socket.native_handle());
        port.OnConnection(std::move(socket));
        AwaitConnection(port);
    });
}

void Listen(tcp::acceptor& acceptor, const tcp::endpoint& endpoint, error_code& failed) {
    acceptor.open(endpoint.protocol(), failed);
    if (failed) {
        return;
    }
    KeepFromChildren(acceptor.native_handle());
    // Lets a port be taken again right after its owner has ended; it is not shared by this.
    acceptor.set_option(tcp::acceptor::reuse_address(true), failed);
    acceptor.bind(endpoint, failed);
    if (!failed) {
        acceptor.listen(asio::socket_base::max_listen_connections, failed);
    }
}

}  // namespace

int OpenPort(LoopbackPort& port, int number, std::string& error) {
    const tcp::endpoint wanted(asio::ip::address_v4::loopback(),
                               static_cast<unsigned short>(number));
    error_code failed;
    Listen(port.Acceptor, wanted, failed);
    if (failed) {
        ClosePort(port);
        error =
            "port " + std::to_string(number) + " of 127.0.0.1 cannot be used: " + failed.message();
        return 0;
    }
    AwaitConnection(port);
    return port.Acceptor.local_endpoint(failed).port();
}

void ClosePort(LoopbackPort& port) {
    error_code ignored;
    port.Acceptor.close(ignored);
    port.Pause.cancel();
}
