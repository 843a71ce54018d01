#include "page/page_news.h"

#include <algorithm>

#include "page/page_state.h"

namespace {

constexpr std::size_t MAX_LOG_LENGTH = 65536;

void AddPlies(PageNews& news, const PageNews& later) {
    if (!news.HasPlies || later.FirstPly <= news.FirstPly) {
        news.FirstPly = later.FirstPly;
        news.Plies.clear();
    } else {
        const auto kept = static_cast<std::size_t>(later.FirstPly - news.FirstPly);
        news.Plies.resize(std::min(news.Plies.size(), kept));
    }
    news.Plies.insert(news.Plies.end(), later.Plies.begin(), later.Plies.end());
    news.HasPlies = true;
}

}  // namespace

void AddNews(PageNews& news, const PageNews& later) {
    AddToLog(news.Log, later.Log);
    if (later.HasPlies) {
        AddPlies(news, later);
    }
    if (!later.State.empty()) {
        news.State = later.State;
    }
}

std::vector<std::string> MessagesOf(const PageNews& news, bool isAll) {
    std::vector<std::string> messages;
    if (isAll || !news.Log.empty()) {
        messages.push_back(LogMessage(news.Log, isAll));
    }
    if (isAll || news.HasPlies) {
        messages.push_back(PliesMessage(news.FirstPly, news.Plies));
    }
    return messages;
}

void AddToLog(std::string& log, std::string_view text) {
    log += text;
    // Many lines at a time, so that it is seldom done.
    if (log.size() > MAX_LOG_LENGTH + MAX_LOG_LENGTH / 4) {
        const std::size_t end = log.find('\n', log.size() - MAX_LOG_LENGTH);
        log.erase(0, end == std::string::npos ? log.size() - MAX_LOG_LENGTH : end + 1);
    }
}

std::string LastLines(const std::string& log, int count) {
    const std::size_t end = log.find_last_not_of('\n') + 1;
    std::size_t begin = end;
    while (begin > 0 && (log[begin - 1] != '\n' || --count > 0)) {
        --begin;
    }
    return log.substr(begin, end - begin);
}
