#include "board/web_server.h"

#include <array>
#include <chrono>

#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket/rfc6455.hpp>

#include "board/live_page.h"
#include "board/page_files.h"
#include "support/token.h"

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using boost::system::error_code;
using Request = http::request<http::empty_body>;

constexpr auto PATIENCE = std::chrono::seconds(10);  // for request, answer, handshake and token
constexpr std::size_t MAX_STRANGERS = 16;
constexpr std::uint32_t MAX_HEADER_LENGTH = 8192;

constexpr std::string_view LIVE_PATH = "/live";

struct NamedText {
    const char* Name;
    const char* Text;
};
constexpr std::array HEADERS = {
    NamedText{"Content-Security-Policy",
              "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
              "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    NamedText{"X-Content-Type-Options", "nosniff"},
    NamedText{"Referrer-Policy", "no-referrer"},
    NamedText{"Cross-Origin-Resource-Policy", "same-origin"},
    NamedText{"Cache-Control", "no-store"},
};

constexpr std::array FILE_TYPES = {
    NamedText{".html", "text/html; charset=utf-8"},
    NamedText{".css", "text/css; charset=utf-8"},
    NamedText{".js", "text/javascript; charset=utf-8"},
    NamedText{".svg", "image/svg+xml"},
};

// One visitor before it is known what it wants.
struct Visit {
    Visit(WebServer& server, tcp::socket socket)
        : Server(server), Stream(std::make_shared<beast::tcp_stream>(std::move(socket))) {}

    WebServer& Server;
    std::shared_ptr<beast::tcp_stream> Stream;
    beast::flat_buffer Buffer{MAX_HEADER_LENGTH + MAX_HEADER_LENGTH};
    http::request_parser<http::empty_body> Parser;
    http::response<http::string_body> Answer;
    std::array<char, 4096> Rest{};
};

// Reads what is still coming before it hangs up: otherwise the answer could be lost with it.
void LingerAndClose(const std::shared_ptr<Visit>& visit) {
    visit->Stream->async_read_some(asio::buffer(visit->Rest),
                                   [visit](const error_code& failed, std::size_t) {
                                       if (!failed) {
                                           LingerAndClose(visit);
                                       }
                                   });
}

void Reply(const std::shared_ptr<Visit>& visit, http::status status, std::string_view type,
           std::string_view content) {
    auto& answer = visit->Answer;
    const bool headOnly = visit->Parser.get().method() == http::verb::head;
    answer.result(status);
    answer.version(11);
    answer.keep_alive(false);
    for (const NamedText& header : HEADERS) {
        answer.set(header.Name, header.Text);
    }
    answer.set(http::field::content_type, beast::string_view(type.data(), type.size()));
    if (status == http::status::method_not_allowed) {
        answer.set(http::field::allow, "GET, HEAD");
    }
    answer.content_length(content.size());
    if (!headOnly) {
        answer.body() = content;
    }
    http::async_write(*visit->Stream, answer, [visit](const error_code& failed, std::size_t) {
        error_code ignored;
        visit->Stream->socket().shutdown(tcp::socket::shutdown_send, ignored);
        if (!failed) {
            visit->Stream->expires_after(std::chrono::seconds(1));
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
    return parser.get().count(http::field::transfer_encoding) != 0 ||
           parser.content_length().value_or(0) != 0;
}

void SendFile(const std::shared_ptr<Visit>& visit, std::string_view path) {
    const std::string_view name = path == "/" ? "index.html" : path.substr(1);
    for (const PageFile& file : PageFiles()) {
        if (file.Name == name && path.starts_with('/')) {
            const char* type = "application/octet-stream";
            for (const NamedText& known : FILE_TYPES) {
                type = name.ends_with(known.Name) ? known.Text : type;
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
    if (!beast::websocket::is_upgrade(request)) {
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
    const http::status status = Judge(visit->Parser, path, visit->Server.Port);
    if (status == http::status::ok) {
        SendFile(visit, path);
    } else if (status == http::status::switching_protocols) {
        OpenLivePage(visit->Server, visit->Stream, request);
    } else {
        Refuse(visit, status);
    }
}

void ReadRequest(const std::shared_ptr<Visit>& visit) {
    visit->Stream->expires_after(PATIENCE);
    visit->Parser.header_limit(MAX_HEADER_LENGTH);
    http::async_read_header(
        *visit->Stream, visit->Buffer, visit->Parser,
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

// Those that came first have had the most time to show the token: whoever holds connections keeps
// nobody out.
void MakeRoom(WebServer& server) {
    std::erase_if(server.Strangers, [](const auto& stranger) { return stranger.expired(); });
    while (server.Strangers.size() >= MAX_STRANGERS) {
        server.Strangers.front().lock()->close();
        server.Strangers.pop_front();
    }
}

void TakeVisit(WebServer& server, tcp::socket socket) {
    error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    MakeRoom(server);
    const auto visit = std::make_shared<Visit>(server, std::move(socket));
    server.Strangers.push_back(visit->Stream);
    ReadRequest(visit);
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

void SendToPages(WebServer& server, const PageMessage& message) {
    const auto pages = server.Pages;  // sending can drop one
    for (const auto& page : pages) {
        SendToPage(page, message);
    }
}

void CloseWebServer(WebServer& server) {
    server.Closing = true;
    ClosePort(server.Listener);
    for (const auto& stranger : server.Strangers) {
        if (const auto stream = stranger.lock()) {
            stream->close();
        }
    }
    for (const auto& page : server.Pages) {
        PartWhenSent(page);
    }
    if (server.Pages.empty()) {
        server.OnEmpty();
    }
}
