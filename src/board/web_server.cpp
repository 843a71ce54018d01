#include "board/web_server.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>
#include <optional>

#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <sys/random.h>

#include "board/page_files.h"
#include "board/page_request.h"
#include "support/fatal.h"

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using asio::ip::tcp;
using boost::system::error_code;

constexpr auto PATIENCE = std::chrono::seconds(10);  // for a request, a handshake, a token
constexpr auto IDLE_TIME = std::chrono::seconds(30);
constexpr int MAX_CONNECTIONS = 32;
constexpr std::uint32_t MAX_HEADER_LENGTH = 8192;
constexpr std::size_t MAX_MESSAGE_LENGTH = 4096;
constexpr std::size_t MAX_WAITING = 1048576;  // bytes for one page
constexpr std::size_t MUCH_WAITING = 131072;

constexpr std::string_view LIVE_PATH = "/live";

using Request = http::request<http::empty_body>;
using Response = http::response<http::string_body>;

struct Header {
    const char* Name;
    const char* Value;
};
constexpr std::array HEADERS = {
    Header{"Content-Security-Policy",
           "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
           "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    Header{"X-Content-Type-Options", "nosniff"},
    Header{"Referrer-Policy", "no-referrer"},
    Header{"Cross-Origin-Resource-Policy", "same-origin"},
    Header{"Cache-Control", "no-store"},
};

struct FileType {
    std::string_view Extension;
    const char* Type;
};
constexpr std::array FILE_TYPES = {
    FileType{".html", "text/html; charset=utf-8"},
    FileType{".css", "text/css; charset=utf-8"},
    FileType{".js", "text/javascript; charset=utf-8"},
    FileType{".svg", "image/svg+xml"},
};

std::string NewToken() {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::array<unsigned char, 24> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        ErrorExit("talurex-board: the system has no random numbers\n");
    }
    std::string token;
    for (const unsigned char byte : bytes) {
        token += DIGITS[byte / 16];
        token += DIGITS[byte % 16];
    }
    return token;
}

// Takes as long whatever is equal.
bool IsToken(const WebServer& server, std::string_view text) {
    if (text.size() != server.Token.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        difference |=
            static_cast<unsigned char>(text[i]) ^ static_cast<unsigned char>(server.Token[i]);
    }
    return difference == 0;
}

// Counts a connection for as long as it lives.
struct Ticket {
    explicit Ticket(WebServer& server) : Server(server) { ++Server.NumConnections; }
    ~Ticket() { --Server.NumConnections; }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

    WebServer& Server;
};

// One visitor before it is known what it wants.
struct Visit {
    Visit(WebServer& server, tcp::socket socket)
        : Counted(std::make_shared<Ticket>(server)), Stream(std::move(socket)) {}

    std::shared_ptr<Ticket> Counted;
    beast::tcp_stream Stream;
    beast::flat_buffer Buffer{MAX_HEADER_LENGTH + MAX_HEADER_LENGTH};
    http::request_parser<http::empty_body> Parser;
    Response Answer;
    std::array<char, 4096> Rest{};
};

}  // namespace

// A page's live connection. It is among the server's pages from its token to its end.
struct PageConnection {
    PageConnection(std::shared_ptr<Ticket> counted, beast::tcp_stream stream)
        : Counted(std::move(counted)), Socket(std::move(stream)), Deadline(Socket.get_executor()) {}

    std::shared_ptr<Ticket> Counted;
    websocket::stream<beast::tcp_stream> Socket;
    asio::steady_timer Deadline;
    beast::flat_buffer Buffer;
    std::deque<std::shared_ptr<const std::string>> Waiting;  // the first is being sent
    std::size_t NumWaiting = 0;                              // bytes
    bool Reading = false;  // it has taken something since it was last looked at
    bool GivenUp = false;  // it has stopped reading
    std::shared_ptr<const std::string> LateState;  // to be sent when it has caught up
    bool Parting = false;
};

namespace {

using Page = std::shared_ptr<PageConnection>;

WebServer& ServerOf(const Page& page) {
    return page->Counted->Server;
}

void TellWhenEmpty(const WebServer& server) {
    if (server.Closing && server.Pages.empty()) {
        server.OnEmpty();
    }
}

void DropPage(const Page& page) {
    page->Parting = true;
    page->Deadline.cancel();
    beast::get_lowest_layer(page->Socket).close();
    WebServer& server = ServerOf(page);
    if (server.Pages.erase(page) != 0) {
        TellWhenEmpty(server);
    }
}

void PartFrom(const Page& page, websocket::close_code code) {
    page->Parting = true;
    page->Deadline.cancel();
    page->Socket.async_close(code, [page](const error_code&) { DropPage(page); });
}

void SendNext(const Page& page);

void Enqueue(const Page& page, const std::shared_ptr<const std::string>& message) {
    if (page->Parting) {
        return;
    }
    page->Waiting.push_back(message);
    page->NumWaiting += message->size();
    if (page->NumWaiting > MAX_WAITING) {
        DropPage(page);
    } else if (page->Waiting.size() == 1) {
        SendNext(page);
    }
}

void TakeSent(const Page& page) {
    page->Reading = true;
    page->NumWaiting -= page->Waiting.front()->size();
    page->Waiting.pop_front();
    if (page->Waiting.empty() && page->LateState) {
        page->GivenUp = false;
        Enqueue(page, std::exchange(page->LateState, nullptr));
    } else if (!page->Waiting.empty()) {
        SendNext(page);
    } else if (ServerOf(page).Closing && !page->Parting) {
        PartFrom(page, websocket::close_code::going_away);
    }
    ServerOf(page).OnSent();
}

void SendNext(const Page& page) {
    page->Socket.async_write(asio::buffer(*page->Waiting.front()),
                             [page](const error_code& failed, std::size_t) {
                                 if (failed) {
                                     DropPage(page);
                                 } else {
                                     TakeSent(page);
                                 }
                             });
}

void EnqueueState(const Page& page, const std::shared_ptr<const std::string>& state) {
    if (page->GivenUp && !page->Waiting.empty()) {
        page->LateState = state;
    } else {
        page->GivenUp = false;
        Enqueue(page, state);
    }
}

void LetIn(const Page& page) {
    page->Deadline.cancel();
    ServerOf(page).Pages.insert(page);
    for (const std::string& message : ServerOf(page).OnPage()) {
        Enqueue(page, std::make_shared<const std::string>(message));
    }
}

// Answers false when the page must go.
bool TakeMessage(const Page& page, std::string_view message) {
    WebServer& server = ServerOf(page);
    if (!server.Pages.contains(page)) {
        const PageRequest request = ReadPageRequest(message);
        if (request.Kind != RequestKind::Token || !IsToken(server, request.Text)) {
            return false;
        }
        LetIn(page);
        return true;
    }
    const std::string answer = server.OnMessage(message);
    if (!answer.empty()) {
        Enqueue(page, std::make_shared<const std::string>(answer));
    }
    return true;
}

void AwaitMessage(const Page& page) {
    page->Socket.async_read(page->Buffer, [page](const error_code& failed, std::size_t) {
        if (failed) {
            DropPage(page);
            return;
        }
        const auto bytes = page->Buffer.cdata();
        const std::string message(static_cast<const char*>(bytes.data()), bytes.size());
        page->Buffer.consume(page->Buffer.size());
        if (page->Parting || TakeMessage(page, message)) {  // up to the close frame
            AwaitMessage(page);
        } else {
            PartFrom(page, websocket::close_code::policy_error);
        }
    });
}

void AwaitToken(const Page& page) {
    page->Deadline.expires_after(PATIENCE);
    page->Deadline.async_wait([page](const error_code& cancelled) {
        if (!cancelled && !ServerOf(page).Pages.contains(page)) {
            DropPage(page);
        }
    });
    AwaitMessage(page);
}

void OpenPage(const std::shared_ptr<Visit>& visit) {
    const auto page = std::make_shared<PageConnection>(visit->Counted, std::move(visit->Stream));
    beast::get_lowest_layer(page->Socket).expires_never();
    websocket::stream_base::timeout timeout{};
    timeout.handshake_timeout = PATIENCE;
    timeout.idle_timeout = IDLE_TIME;
    timeout.keep_alive_pings = true;
    page->Socket.set_option(timeout);
    page->Socket.read_message_max(MAX_MESSAGE_LENGTH);
    page->Socket.auto_fragment(false);
    page->Socket.async_accept(visit->Parser.get(), [page, visit](const error_code& failed) {
        if (!failed) {
            AwaitToken(page);
        }
    });
}

// Reads what is still coming before it hangs up: otherwise the answer could be lost with it.
void LingerAndClose(const std::shared_ptr<Visit>& visit) {
    visit->Stream.async_read_some(asio::buffer(visit->Rest),
                                  [visit](const error_code& failed, std::size_t) {
                                      if (!failed) {
                                          LingerAndClose(visit);
                                      }
                                  });
}

void Reply(const std::shared_ptr<Visit>& visit, http::status status, std::string_view type,
           std::string_view content) {
    Response& answer = visit->Answer;
    const bool headOnly = visit->Parser.get().method() == http::verb::head;
    answer.result(status);
    answer.version(11);
    answer.keep_alive(false);
    for (const Header& header : HEADERS) {
        answer.set(header.Name, header.Value);
    }
    answer.set(http::field::content_type, beast::string_view(type.data(), type.size()));
    if (status == http::status::method_not_allowed) {
        answer.set(http::field::allow, "GET, HEAD");
    }
    answer.content_length(content.size());
    if (!headOnly) {
        answer.body() = content;
    }
    http::async_write(visit->Stream, answer, [visit](const error_code& failed, std::size_t) {
        error_code ignored;
        visit->Stream.socket().shutdown(tcp::socket::shutdown_send, ignored);
        if (!failed) {
            visit->Stream.expires_after(std::chrono::seconds(1));
            LingerAndClose(visit);
        }
    });
}

void Refuse(const std::shared_ptr<Visit>& visit, http::status status) {
    const std::string reason = std::string(http::obsolete_reason(status)) + '\n';
    Reply(visit, status, "text/plain; charset=utf-8", reason);
}

// True when the header stands there once, and is `before` and one of the two names of this server.
bool NamesServer(const Request& request, http::field field, const std::string& before, int port) {
    if (request.count(field) != 1) {
        return false;
    }
    const auto value = request[field];
    const std::string after = ':' + std::to_string(port);
    return value == before + "127.0.0.1" + after || value == before + "localhost" + after;
}

bool HasBody(const http::request_parser<http::empty_body>& parser) {
    return parser.chunked() || parser.content_length().value_or(0) != 0;
}

void SendFile(const std::shared_ptr<Visit>& visit, std::string_view path) {
    const std::string_view name = path == "/" ? "index.html" : path.substr(1);
    for (const PageFile& file : PageFiles()) {
        if (file.Name == name && path.starts_with('/')) {
            const char* type = "application/octet-stream";
            for (const FileType& known : FILE_TYPES) {
                type = name.ends_with(known.Extension) ? known.Type : type;
            }
            Reply(visit, http::status::ok, type, file.Content);
            return;
        }
    }
    Refuse(visit, http::status::not_found);
}

// What a request for `path` deserves: a file, a live connection, or a refusal.
http::status Judge(const http::request_parser<http::empty_body>& parser, std::string_view path,
                   int port) {
    const Request& request = parser.get();
    if (!NamesServer(request, http::field::host, "", port)) {
        return http::status::forbidden;
    }
    if (HasBody(parser)) {
        return http::status::payload_too_large;
    }
    if (request.method() != http::verb::get && request.method() != http::verb::head) {
        return http::status::method_not_allowed;
    }
    if (path != LIVE_PATH) {
        return http::status::ok;
    }
    if (!websocket::is_upgrade(request)) {
        return http::status::upgrade_required;
    }
    return NamesServer(request, http::field::origin, "http://", port)
               ? http::status::switching_protocols
               : http::status::forbidden;
}

void TakeRequest(const std::shared_ptr<Visit>& visit) {
    const Request& request = visit->Parser.get();
    const std::string_view target(request.target().data(), request.target().size());
    const std::string_view path = target.substr(0, target.find('?'));
    const http::status status = Judge(visit->Parser, path, visit->Counted->Server.Port);
    if (status == http::status::ok) {
        SendFile(visit, path);
    } else if (status == http::status::switching_protocols) {
        OpenPage(visit);
    } else {
        Refuse(visit, status);
    }
}

void ReadRequest(const std::shared_ptr<Visit>& visit) {
    visit->Stream.expires_after(PATIENCE);
    visit->Parser.header_limit(MAX_HEADER_LENGTH);
    http::async_read_header(
        visit->Stream, visit->Buffer, visit->Parser,
        [visit](const error_code& failed, std::size_t) {
            if (!failed) {
                TakeRequest(visit);
            } else if (failed == http::error::header_limit ||
                       failed == http::error::buffer_overflow) {
                Refuse(visit, http::status::request_header_fields_too_large);
            } else if (failed.category() == make_error_code(http::error::bad_method).category() &&
                       failed != http::error::end_of_stream) {
                Refuse(visit, http::status::bad_request);
            }
        });
}

void TakeVisit(WebServer& server, tcp::socket socket) {
    if (server.NumConnections < MAX_CONNECTIONS) {
        error_code ignored;
        socket.set_option(tcp::no_delay(true), ignored);
        ReadRequest(std::make_shared<Visit>(server, std::move(socket)));
    }
}

}  // namespace

int OpenWebServer(WebServer& server, int port, std::string& error) {
    server.Token = NewToken();
    server.Listener.OnConnection = [&server](tcp::socket socket) {
        TakeVisit(server, std::move(socket));
    };
    server.Port = OpenPort(server.Listener, port, error);
    return server.Port;
}

void SendToPages(WebServer& server, const std::string& message) {
    const auto shared = std::make_shared<const std::string>(message);
    for (const Page& page : std::vector<Page>(server.Pages.begin(), server.Pages.end())) {
        Enqueue(page, shared);
    }
}

void SendStateToPages(WebServer& server, const std::string& message) {
    const auto shared = std::make_shared<const std::string>(message);
    for (const Page& page : std::vector<Page>(server.Pages.begin(), server.Pages.end())) {
        EnqueueState(page, shared);
    }
}

bool PagesAreBehind(const WebServer& server) {
    return std::any_of(server.Pages.begin(), server.Pages.end(), [](const Page& page) {
        return page->NumWaiting > MUCH_WAITING && !page->GivenUp;
    });
}

void GiveUpStuckPages(WebServer& server) {
    for (const Page& page : server.Pages) {
        const bool stuck = page->NumWaiting > MUCH_WAITING && !page->Reading;
        page->GivenUp = page->GivenUp || stuck;
        page->Reading = false;
    }
}

void CloseWebServer(WebServer& server) {
    server.Closing = true;
    ClosePort(server.Listener);
    for (const Page& page : std::vector<Page>(server.Pages.begin(), server.Pages.end())) {
        if (page->Waiting.empty() && !page->Parting) {
            PartFrom(page, websocket::close_code::going_away);
        }
    }
    TellWhenEmpty(server);
}
