#include "board/display_listener.h"

#include <boost/asio/buffer.hpp>
#include <fcntl.h>

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

// Further connections are closed at once: the one that is there is the game that is shown.
void AwaitConnection(DisplayListener& listener) {
    listener.Acceptor.async_accept([&listener](const error_code& failed, tcp::socket socket) {
        if (failed == asio::error::operation_aborted) {
            return;
        }
        if (!failed && !listener.Connection) {
            error_code ignored;
            socket.non_blocking(true, ignored);
            KeepFromChildren(socket.native_handle());
            listener.Connection = std::move(socket);
            listener.OnConnection(true);
            AwaitBytes(listener);
        }
        AwaitConnection(listener);
    });
}

}  // namespace

int OpenDisplayListener(DisplayListener& listener, int port, std::string& error) {
    const int opened = OpenLoopbackPort(listener.Acceptor, port, error);
    if (opened != 0) {
        AwaitConnection(listener);
    }
    return opened;
}

void ReadDisplayNow(DisplayListener& listener) {
    // A Talurex that sends without end must not keep the pages waiting.
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

int OpenLoopbackPort(tcp::acceptor& acceptor, int port, std::string& error) {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(),
                                 static_cast<unsigned short>(port));
    error_code failed;
    acceptor.open(endpoint.protocol(), failed);
    if (!failed) {
        KeepFromChildren(acceptor.native_handle());
        // Only so that a port can be taken again right after its last owner has ended.
        acceptor.set_option(tcp::acceptor::reuse_address(true), failed);
    }
    if (!failed) {
        acceptor.bind(endpoint, failed);
    }
    if (!failed) {
        acceptor.listen(asio::socket_base::max_listen_connections, failed);
    }
    const int opened = failed ? 0 : acceptor.local_endpoint(failed).port();
    if (failed) {
        error =
            "port " + std::to_string(port) + " of 127.0.0.1 cannot be used: " + failed.message();
        acceptor.close(failed);
        return 0;
    }
    return opened;
}

void KeepFromChildren(int descriptor) {
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}
