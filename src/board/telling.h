// How the pages of a board are told what is new, and that it is over.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include "board/web_server.h"
#include "page/page_news.h"

// What a page is told first when `all` is to be told.
[[nodiscard]] std::vector<std::string> Greeting(const PageNews& all);

void TellPages(WebServer& web, const PageNews& news);

// Parts from all pages once they have been sent everything, or have had the time for it, and then
// stops the context.
void PartFromPages(WebServer& web, boost::asio::steady_timer& timer,
                   boost::asio::io_context& context);
