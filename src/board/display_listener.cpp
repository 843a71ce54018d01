#include "board/display_listener.h"

#include <boost/asio/buffer.hpp>

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

void HangUp(DisplayListener& listener) {
    if (listener.Connection) {
        listener.Connection.reset();
        listener.OnConnection(false);
    }
}

void AwaitBytes(DisplayListener& listener) {
    listener.Connection->async_wait(tcp::socket::wait_read, [&listener](const error_code& failed) {
        if (failed == asio::error::operation_aborted) {
            return;  // the connection is gone, and another may be there
        }
        ReadDisplayNow(listener);
        if (listener.Connection) {
            AwaitBytes(listener);
        }
    });
}

// The connection that is there is the game that is shown: another one is closed at once.
void TakeConnection(DisplayListener& listener, tcp::socket socket) {
    ReadDisplayNow(listener);  // it may have ended just now
    if (listener.Connection) {
        return;
    }
    error_code ignored;
    socket.non_blocking(true, ignored);
    listener.Connection = std::move(socket);
    listener.OnConnection(true);
    AwaitBytes(listener);
}

}  // namespace

int OpenDisplayListener(DisplayListener& listener, int port, std::string& error) {
    listener.Port.OnConnection = [&listener](tcp::socket socket) {
        TakeConnection(listener, std::move(socket));
    };
    return OpenPort(listener.Port, port, error);
}

void ReadDisplayNow(DisplayListener& listener) {
    // One that sends without end must not keep the pages waiting.
    constexpr int MAX_READS = 16;
    for (int i = 0; i < MAX_READS && listener.Connection; ++i) {
        error_code failed;
        const std::size_t count =
            listener.Connection->read_some(asio::buffer(listener.Bytes), failed);
        if (count > 0) {
            listener.OnBytes(std::string_view(listener.Bytes.data(), count));
        }
        if (failed == asio::error::would_block) {
            return;
        }
        if (failed) {
            HangUp(listener);
        }
    }
}
