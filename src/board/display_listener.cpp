#include "board/display_listener.h"

#include <algorithm>
#include <array>
#include <chrono>

#include <boost/asio/buffer.hpp>
#include <sys/socket.h>

#include "board/shown_board.h"

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

constexpr auto PATIENCE = std::chrono::seconds(10);  // for the first line
// A game that ends and the next one that comes can be heard of in either order.
constexpr auto CHANGE_TIME = std::chrono::seconds(1);
constexpr std::size_t MAX_WAITING = 4;
constexpr std::size_t MAX_LINE_LENGTH = 256;

}  // namespace

// Its operations hold it, and may be destroyed after the listener.
struct DisplayConnection {
    explicit DisplayConnection(tcp::socket socket)
        : Socket(std::move(socket)), Deadline(Socket.get_executor()) {}

    tcp::socket Socket;
    asio::steady_timer Deadline;  // while it waits
    std::array<char, 4096> Bytes{};
    std::string Text;     // read and not handed on
    bool IsGame = false;  // it has begun as a game does
};

namespace {

using Connection = std::shared_ptr<DisplayConnection>;

void AwaitBytes(DisplayListener& listener, const Connection& connection);

void HangUp(const Connection& connection) {
    error_code ignored;
    connection->Socket.close(ignored);
    connection->Deadline.cancel();
}

// Sends away one that waits; another one stays.
void Refuse(DisplayListener& listener, const Connection& connection) {
    if (std::erase(listener.Waiting, connection) != 0) {
        HangUp(connection);
    }
}

// Hands on the whole lines that have been read. Answers whether there was a farewell; what comes
// behind it is nobody's.
bool HandOnLines(const DisplayListener& listener, std::string& text) {
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = text.find('\n', begin)) != std::string::npos;) {
        const std::string_view line = std::string_view(text).substr(begin, end - begin);
        listener.OnLine(line.size() > MAX_LINE_LENGTH ? "?" : line);
        if (line == "Q") {
            return true;
        }
        begin = end + 1;
    }
    text.erase(0, begin);
    if (text.size() > MAX_LINE_LENGTH) {
        text.resize(MAX_LINE_LENGTH + 1);  // whatever else comes, it is too long
    }
    return false;
}

void ShowNextGame(DisplayListener& listener);

void EndGame(DisplayListener& listener) {
    HangUp(listener.Game);
    listener.Game.reset();
    listener.OnConnection(false);
    ShowNextGame(listener);
}

// Goes on with the game that is shown.
void GoOn(DisplayListener& listener) {
    if (HandOnLines(listener, listener.Game->Text)) {
        EndGame(listener);
    } else {
        AwaitBytes(listener, listener.Game);
    }
}

// Shows the game that has waited longest, if none is shown.
void ShowNextGame(DisplayListener& listener) {
    const auto next = std::find_if(listener.Waiting.begin(), listener.Waiting.end(),
                                   [](const Connection& other) { return other->IsGame; });
    if (listener.Game || next == listener.Waiting.end()) {
        return;
    }
    listener.Game = *next;
    listener.Waiting.erase(next);
    listener.Game->Deadline.cancel();
    listener.OnConnection(true);
    GoOn(listener);
}

void ExpireAfter(DisplayListener& listener, const Connection& connection,
                 std::chrono::seconds time) {
    connection->Deadline.expires_after(time);
    connection->Deadline.async_wait([&listener, connection](const error_code& cancelled) {
        if (!cancelled) {
            Refuse(listener, connection);
        }
    });
}

// Looks at the first line of a connection that waits, once it is there.
void JudgeFirstLine(DisplayListener& listener, const Connection& connection) {
    const std::size_t end = connection->Text.find('\n');
    if (end == std::string::npos && connection->Text.size() <= MAX_LINE_LENGTH) {
        AwaitBytes(listener, connection);
        return;
    }
    ShownBoard scratch;
    const std::string_view line = std::string_view(connection->Text).substr(0, end);
    if (line.size() > MAX_LINE_LENGTH || TakeDisplayLine(scratch, line) == DisplayLine::Faulty) {
        Refuse(listener, connection);
        return;
    }
    connection->IsGame = true;
    ExpireAfter(listener, connection, CHANGE_TIME);
    ShowNextGame(listener);
}

void TakeBytes(DisplayListener& listener, const Connection& connection, bool ended) {
    if (connection == listener.Game) {
        if (ended) {
            EndGame(listener);
        } else {
            GoOn(listener);
        }
    } else if (ended) {
        Refuse(listener, connection);
    } else if (connection->Socket.is_open()) {
        JudgeFirstLine(listener, connection);
    }
}

void AwaitBytes(DisplayListener& listener, const Connection& connection) {
    connection->Socket.async_read_some(
        asio::buffer(connection->Bytes),
        [&listener, connection](const error_code& failed, std::size_t count) {
            connection->Text.append(connection->Bytes.data(), count);
            TakeBytes(listener, connection, bool(failed));
        });
}

void TakeConnection(DisplayListener& listener, tcp::socket socket) {
    if (listener.Waiting.size() >= MAX_WAITING) {
        HangUp(listener.Waiting.front());
        listener.Waiting.pop_front();
    }
    const auto connection = std::make_shared<DisplayConnection>(std::move(socket));
    listener.Waiting.push_back(connection);
    ExpireAfter(listener, connection, PATIENCE);
    AwaitBytes(listener, connection);
}

}  // namespace

int OpenDisplayListener(DisplayListener& listener, int port, std::string& error) {
    listener.Port.OnConnection = [&listener](tcp::socket socket) {
        TakeConnection(listener, std::move(socket));
    };
    return OpenPort(listener.Port, port, error);
}

bool LinkHasMore(const DisplayListener& listener) {
    char next = 0;
    return !listener.Waiting.empty() ||
           (listener.Game &&
            recv(listener.Game->Socket.native_handle(), &next, 1, MSG_PEEK | MSG_DONTWAIT) > 0);
}
