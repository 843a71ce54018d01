#include "board/telling.h"

#include <chrono>
#include <memory>
#include <utility>

namespace {

constexpr std::chrono::seconds PARTING_PATIENCE(1);

}  // namespace

std::vector<std::string> Greeting(const PageNews& all) {
    std::vector<std::string> messages = MessagesOf(all, true);
    if (!all.State.empty()) {
        messages.push_back(all.State);
    }
    return messages;
}

void TellPages(WebServer& web, const PageNews& news) {
    for (std::string& message : MessagesOf(news, false)) {
        SendToPages(web, std::make_shared<const std::string>(std::move(message)));
    }
    if (!news.State.empty()) {
        SendStateToPages(web, std::make_shared<const std::string>(news.State));
    }
}

void PartFromPages(WebServer& web, boost::asio::steady_timer& timer,
                   boost::asio::io_context& context) {
    web.OnEmpty = [&context] { context.stop(); };
    CloseWebServer(web);
    timer.expires_after(PARTING_PATIENCE);
    timer.async_wait([&context](const boost::system::error_code& cancelled) {
        if (!cancelled) {
            context.stop();
        }
    });
}
