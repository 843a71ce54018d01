#include "board/display_listener.h"

#include <array>
#include <chrono>
#include <utility>

#include <boost/asio/buffer.hpp>
#include <sys/socket.h>

#include "display/shown_board.h"

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

// Its operations hold it, and may be destroyed after the listener.
struct DisplayConnection {
    explicit DisplayConnection(tcp::socket socket)
        : Socket(std::move(socket)), Deadline(Socket.get_executor()) {}

    tcp::socket Socket;
    asio::steady_timer Deadline;  // for the first line
    std::array<char, 4096> Bytes{};
    std::string Line;  // that has begun
};

namespace {

using Connection = std::shared_ptr<DisplayConnection>;

constexpr std::chrono::seconds PATIENCE(10);
constexpr std::size_t MAX_AT_THE_GATE = 4;
constexpr std::size_t MAX_LINE_LENGTH = 256;

bool HasEnded(tcp::socket& socket) {
    char next = 0;
    return recv(socket.native_handle(), &next, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}

void HangUp(DisplayListener& listener, const Connection& connection) {
    error_code ignored;
    connection->Socket.close(ignored);
    connection->Deadline.cancel();
    std::erase(listener.AtTheGate, connection);
    if (connection == listener.Game) {
        listener.Game.reset();
        listener.OnConnection(false);
    }
}

// Lets a connection in by its first line, unless another game is shown. Answers whether it may go
// on.
bool PassTheGate(DisplayListener& listener, const Connection& connection) {
    if (listener.Game && HasEnded(listener.Game->Socket)) {
        HangUp(listener, listener.Game);
    }
    ShownBoard scratch;
    if (listener.Game || TakeDisplayLine(scratch, connection->Line) == DisplayLine::Faulty) {
        return false;
    }
    connection->Deadline.cancel();
    std::erase(listener.AtTheGate, connection);
    listener.Game = connection;
    listener.OnConnection(true);
    return true;
}

// Takes bytes of a connection. Answers whether it may go on.
bool TakeBytes(DisplayListener& listener, const Connection& connection, std::string_view bytes) {
    std::string& line = connection->Line;
    for (const char c : bytes) {
        if (c != '\n') {
            line += c;
            if (line.size() > MAX_LINE_LENGTH) {
                line.assign(1, '?');  // whatever else comes, it is none
                if (connection != listener.Game) {
                    return false;
                }
            }
            continue;
        }
        if (connection != listener.Game && !PassTheGate(listener, connection)) {
            return false;
        }
        if (line == "Q") {
            return false;
        }
        listener.OnLine(std::exchange(line, ""));
    }
    return true;
}

void AwaitBytes(DisplayListener& listener, const Connection& connection) {
    connection->Socket.async_read_some(
        asio::buffer(connection->Bytes),
        [&listener, connection](const error_code& failed, std::size_t count) {
            if (!connection->Socket.is_open()) {
                return;
            }
            const std::string_view bytes(connection->Bytes.data(), count);
            if (!failed && TakeBytes(listener, connection, bytes)) {
                AwaitBytes(listener, connection);
            } else {
                HangUp(listener, connection);
            }
        });
}

void TakeConnection(DisplayListener& listener, tcp::socket socket) {
    if (listener.AtTheGate.size() >= MAX_AT_THE_GATE) {
        HangUp(listener, Connection(listener.AtTheGate.front()));
    }
    const auto connection = std::make_shared<DisplayConnection>(std::move(socket));
    listener.AtTheGate.push_back(connection);
    connection->Deadline.expires_after(PATIENCE);
    connection->Deadline.async_wait([&listener, connection](const error_code& cancelled) {
        if (!cancelled) {
            HangUp(listener, connection);
        }
    });
    AwaitBytes(listener, connection);
}

}  // namespace

int OpenDisplayListener(DisplayListener& listener, int port, std::string& error) {
    listener.Port.OnConnection = [&listener](tcp::socket socket) {
        TakeConnection(listener, std::move(socket));
    };
    return OpenPort(listener.Port, port, error);
}
