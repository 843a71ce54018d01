#include "support/text.h"

#include <algorithm>

std::string_view ScanWord(std::string_view& text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), IsScanSpace);
    const auto end = std::find_if(begin, text.end(), IsScanSpace);
    text = std::string_view(end, text.end());
    return std::string_view(begin, end);
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
