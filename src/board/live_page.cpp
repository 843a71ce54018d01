#include "board/live_page.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>

#include "page/page_request.h"
#include "support/token.h"

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = beast::websocket;
using boost::system::error_code;

constexpr auto PARTING_TIME = std::chrono::seconds(10);
constexpr auto IDLE_TIME = std::chrono::seconds(30);
constexpr std::size_t MAX_PAGES = 32;
constexpr std::size_t MAX_TOKEN_LENGTH = 4096;      // with what is round it
constexpr std::size_t MAX_MESSAGE_LENGTH = 262144;  // a saved game, whose characters may be escaped
constexpr std::size_t MAX_WAITING = 1048576;        // bytes for one page

}  // namespace

// The operations on its socket hold it, and may be destroyed after the server: its end touches
// nothing of it.
struct LivePage {
    LivePage(WebServer& server, std::shared_ptr<beast::tcp_stream> stream)
        : Server(server), Stream(std::move(stream)), Socket(*Stream) {}

    WebServer& Server;
    std::shared_ptr<beast::tcp_stream> Stream;
    websocket::stream<beast::tcp_stream&> Socket;
    beast::flat_buffer Buffer;
    std::deque<PageMessage> Waiting;  // the first is being sent
    std::size_t NumWaiting = 0;       // bytes
    bool Leaving = false;             // it goes when it has been sent everything
    bool Parting = false;             // it is going
};

namespace {

using Page = std::shared_ptr<LivePage>;

void DropPage(const Page& page) {
    page->Parting = true;
    page->Stream->close();
    WebServer& server = page->Server;
    if (server.Pages.erase(page) != 0 && server.Closing && server.Pages.empty()) {
        server.OnEmpty();
    }
}

void PartFrom(const Page& page, websocket::close_code code) {
    page->Parting = true;
    page->Socket.async_close(code, [page](const error_code&) { DropPage(page); });
}

void SendNext(const Page& page) {
    page->Socket.async_write(asio::buffer(*page->Waiting.front().Text),
                             [page](const error_code& failed, std::size_t) {
                                 if (failed) {
                                     DropPage(page);
                                     return;
                                 }
                                 page->NumWaiting -= page->Waiting.front().Text->size();
                                 page->Waiting.pop_front();
                                 if (!page->Waiting.empty()) {
                                     SendNext(page);
                                 } else if (page->Leaving && !page->Parting) {
                                     PartFrom(page, websocket::close_code::going_away);
                                 }
                             });
}

// Takes out a state that has not begun to be sent.
void ForgetState(LivePage& page) {
    const auto isOld = [&](const PageMessage& message) {
        return message.IsState && &message != &page.Waiting.front();
    };
    const auto old = std::find_if(page.Waiting.begin(), page.Waiting.end(), isOld);
    if (old != page.Waiting.end()) {
        page.NumWaiting -= old->Text->size();
        page.Waiting.erase(old);
    }
}

void LetIn(const Page& page) {
    WebServer& server = page->Server;
    page->Stream->expires_never();
    page->Socket.read_message_max(MAX_MESSAGE_LENGTH);
    std::erase_if(server.Strangers,
                  [&](const auto& stranger) { return stranger.lock() == page->Stream; });
    const std::vector<std::string> greeting = server.OnPage();
    server.Pages.insert(page);
    for (const std::string& text : greeting) {
        SendToPage(page, {std::make_shared<const std::string>(text)});
    }
}

// Answers why the page must go, or none.
websocket::close_code TakeMessage(const Page& page, std::string_view message) {
    WebServer& server = page->Server;
    if (server.Pages.contains(page)) {
        const std::string answer = server.OnMessage(message);
        if (!answer.empty()) {
            SendToPage(page, {std::make_shared<const std::string>(answer)});
        }
        return websocket::close_code::none;
    }
    const PageRequest request = ReadPageRequest(message);
    if (request.Kind != RequestKind::Token || !IsToken(server.Token, request.Text)) {
        return websocket::close_code::policy_error;
    }
    if (server.Closing || server.Pages.size() >= MAX_PAGES) {
        return websocket::close_code::try_again_later;
    }
    LetIn(page);
    return websocket::close_code::none;
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
        // What comes up to the close frame is read, and that is all.
        const auto reason =
            page->Parting ? websocket::close_code::none : TakeMessage(page, message);
        if (reason == websocket::close_code::none) {
            AwaitMessage(page);
        } else {
            PartFrom(page, reason);
        }
    });
}

}  // namespace

void OpenLivePage(WebServer& server, const std::shared_ptr<beast::tcp_stream>& stream,
                  const beast::http::request<beast::http::empty_body>& handshake) {
    const auto page = std::make_shared<LivePage>(server, stream);
    page->Socket.set_option(websocket::stream_base::timeout{PARTING_TIME, IDLE_TIME, true});
    page->Socket.read_message_max(MAX_TOKEN_LENGTH);
    page->Socket.auto_fragment(false);
    page->Socket.async_accept(handshake, [page](const error_code& failed) {
        if (!failed) {
            AwaitMessage(page);
        }
    });
}

void SendToPage(const Page& page, const PageMessage& message) {
    if (page->Parting) {
        return;
    }
    if (message.IsState) {
        ForgetState(*page);
    }
    page->NumWaiting += message.Text->size();
    page->Waiting.push_back(message);
    if (page->NumWaiting > MAX_WAITING) {
        DropPage(page);
    } else if (page->Waiting.size() == 1) {
        SendNext(page);
    }
}

void PartWhenSent(const Page& page) {
    page->Leaving = true;
    if (page->Waiting.empty() && !page->Parting) {
        PartFrom(page, websocket::close_code::going_away);
    }
}
