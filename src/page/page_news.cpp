#include "page/page_news.h"

#include <algorithm>

#include "page/page_state.h"
#include "support/text.h"

namespace {

constexpr std::ptrdiff_t MAX_ANSWERS = 8;

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
    if (!later.Saved.empty()) {
        news.Saved = later.Saved;
    }
    news.Answers.insert(news.Answers.end(), later.Answers.begin(), later.Answers.end());
    const std::size_t numAnswers = news.Answers.size();
    if (numAnswers > MAX_ANSWERS) {
        news.Answers.erase(news.Answers.begin(), news.Answers.end() - MAX_ANSWERS);
    }
}

std::vector<std::string> MessagesOf(const PageNews& news) {
    std::vector<std::string> messages;
    if (!news.Log.empty()) {
        messages.push_back(LogMessage(news.Log, false));
    }
    if (news.HasPlies) {
        messages.push_back(PliesMessage(news.FirstPly, news.Plies));
    }
    messages.insert(messages.end(), news.Answers.begin(), news.Answers.end());
    return messages;
}

std::vector<std::string> AllMessagesOf(const PageNews& all) {
    std::vector<std::string> messages = {LogMessage(all.Log, true),
                                         PliesMessage(all.FirstPly, all.Plies)};
    if (!all.State.empty()) {
        messages.push_back(all.State);
    }
    return messages;
}
