// Words and white space of text lines, and their editing in place.
#pragma once

#include <string>
#include <string_view>

// White space as the editing routines below see it: blank, line feed and tab. A carriage return is
// an ordinary character.
constexpr bool IsLineSpace(char c) {
    return c == ' ' || c == '\n' || c == '\t';
}

// White space as the conversions of scanf see it.
constexpr bool IsScanSpace(char c) {
    return IsLineSpace(c) || c == '\v' || c == '\f' || c == '\r';
}

// The first word of `text` as the "%s" conversion of scanf reads it; empty when there is none.
// With `rest`, what follows the word is left there.
[[nodiscard]] std::string_view ScanWord(std::string_view text, std::string_view* rest = nullptr);

// Appends `extension` unless `text` already ends with exactly these characters.
void AddExtensionToString(std::string& text, std::string_view extension);

// Removes white space at both ends.
void EatLeadingAndTrailingWhitespace(std::string& text);

// Removes the first word and the white space around it: what is left is the rest of the line,
// trimmed.
void DelFirstWord(std::string& text);
