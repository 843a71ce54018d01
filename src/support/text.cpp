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
