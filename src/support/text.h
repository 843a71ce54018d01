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

// Reads the first word of `text` as the "%s" conversion of scanf does; empty when there is none.
// `text` then begins just behind the word.
[[nodiscard]] std::string_view ScanWord(std::string_view& text);

// The same for a caller who does not care what follows the word.
[[nodiscard]] std::string_view ReadWord(std::string_view text);

// Appends `extension` unless `text` already ends with exactly these characters.
void AddExtensionToString(std::string& text, std::string_view extension);

// Removes white space at both ends.
void EatLeadingAndTrailingWhitespace(std::string& text);

// Whether there is a control character in the text: of ASCII, or one that UTF-8 writes in two
// bytes.
[[nodiscard]] bool HoldsControlCharacter(std::string_view text);

// The text without ASCII's control characters but for tabs and line feeds.
[[nodiscard]] std::string WithoutControlCharacters(std::string_view text);

// Appends to a text that is read from its end, and drops the oldest lines of one that has grown too
// long.
void AddToLog(std::string& log, std::string_view text);

// The last `count` lines of a text.
[[nodiscard]] std::string LastLines(const std::string& text, int count);

// Removes the first word and the white space around it: what is left is the rest of the line,
// trimmed.
void DelFirstWord(std::string& text);
