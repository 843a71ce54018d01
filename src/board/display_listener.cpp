#include "board/display_listener.h"

#include <boost/asio/buffer.hpp>
#include <sys/socket.h>

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

void HangUp(DisplayListener& listener) {
    listener.Connection.reset();
    listener.OnConnection(false);
}

bool HasEnded(tcp::socket& socket) {
    char next = 0;
    return recv(socket.native_handle(), &next, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

// The connection that is there is the game that is shown: another one is closed at once.
void TakeConnection(DisplayListener& listener, tcp::socket socket) {
    if (listener.Connection && HasEnded(*listener.Connection)) {
        HangUp(listener);
    }
    if (listener.Connection) {
        return;
    }
    error_code ignored;
    socket.non_blocking(true, ignored);
    listener.Connection = std::move(socket);
    listener.OnConnection(true);
    AwaitDisplay(listener);
}

}  // namespace

int OpenDisplayListener(DisplayListener& listener, int port, std::string& error) {
    listener.Port.OnConnection = [&listener](tcp::socket socket) {
        TakeConnection(listener, std::move(socket));
    };
    return OpenPort(listener.Port, port, error);
}

void AwaitDisplay(DisplayListener& listener) {
    if (!listener.Connection || listener.Awaiting) {
        return;
    }
    listener.Awaiting = true;
    listener.Connection->async_wait(tcp::socket::wait_read, [&listener](const error_code&) {
        listener.Awaiting = false;
        listener.OnReadable();
    });
}

std::string_view ReadDisplay(DisplayListener& listener) {
    if (!listener.Connection) {
        return "";
    }
    error_code failed;
    const std::size_t count = listener.Connection->read_some(asio::buffer(listener.Bytes), failed);
    if (failed && failed != asio::error::would_block) {
        HangUp(listener);
    }
    return {listener.Bytes.data(), count};
}
