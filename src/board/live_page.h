// The live connection of one page: it shows the token, then it is told things and answered.
#pragma once

#include <memory>
#include <string>

#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>

#include "board/web_server.h"

// Answers the handshake. The stream's time limit holds until the token is shown; the page is then
// among the server's pages up to its end.
void OpenLivePage(WebServer& server, const std::shared_ptr<boost::beast::tcp_stream>& stream,
                  const boost::beast::http::request<boost::beast::http::empty_body>& handshake);

// Sends it behind what waits already. A page for which too much waits is dropped.
void SendToPage(const std::shared_ptr<LivePage>& page, const PageMessage& message);

void PartWhenSent(const std::shared_ptr<LivePage>& page);
