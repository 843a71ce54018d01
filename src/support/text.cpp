#include "support/text.h"

#include <algorithm>

std::string_view ScanWord(std::string_view& text) {
    std::size_t begin = 0;
    while (begin < text.size() && IsScanSpace(text[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < text.size() && !IsScanSpace(text[end])) {
        ++end;
    }
    const std::string_view word = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return word;
}

std::string_view ReadWord(std::string_view text) {
    return ScanWord(text);
}

void AddExtensionToString(std::string& text, std::string_view extension) {
    if (!text.ends_with(extension)) {
        text += extension;
    }
}

void EatLeadingAndTrailingWhitespace(std::string& text) {
    while (!text.empty() && IsLineSpace(text.back())) {
        text.pop_back();
    }
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), IsLineSpace));
}

void DelFirstWord(std::string& text) {
    EatLeadingAndTrailingWhitespace(text);
    text.erase(text.begin(), std::find_if(text.begin(), text.end(), IsLineSpace));
    EatLeadingAndTrailingWhitespace(text);
}

bool HoldsControlCharacter(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : ' ');
        if (c < ' ' || c == 127 || (c == 0xC2 && next >= 0x80 && next < 0xA0)) {
            return true;
        }
    }
    return false;
}

std::string WithoutControlCharacters(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n' || c == '\t' || (code >= ' ' && code != 127)) {
            plain += c;
        }
    }
    return plain;
}

void AddToLog(std::string& log, std::string_view text) {
    constexpr std::size_t MAX_LOG_LENGTH = 65536;
    log += text;
    // Many lines at a time, so that it is seldom done.
    if (log.size() > MAX_LOG_LENGTH + MAX_LOG_LENGTH / 4) {
        const std::size_t end = log.find('\n', log.size() - MAX_LOG_LENGTH);
        log.erase(0, end == std::string::npos ? log.size() - MAX_LOG_LENGTH : end + 1);
    }
}

std::string LastLines(const std::string& text, int count) {
    const std::size_t end = text.find_last_not_of('\n') + 1;
    std::size_t begin = end;
    while (begin > 0 && (text[begin - 1] != '\n' || --count > 0)) {
        --begin;
    }
    return text.substr(begin, end - begin);
}
