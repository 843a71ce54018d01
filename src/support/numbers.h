// Small integer functions, and the one way in which numbers are read from text.
#pragma once

#include <limits>
#include <optional>
#include <string_view>

// Every number that a user or a file gives is brought into this range.
inline constexpr int INT_LOWEST = std::numeric_limits<int>::min();
inline constexpr int INT_HIGHEST = std::numeric_limits<int>::max();

constexpr int Sign(int x) {
    return (x > 0) - (x < 0);
}

constexpr int Max(int a, int b) {
    return a > b ? a : b;
}

constexpr int Min(int a, int b) {
    return a < b ? a : b;
}

// Reads a number from the front of `text` as the "%i" conversion of scanf does: white space is
// skipped, then an optional sign, then decimal digits, hexadecimal ones after "0x" or octal ones
// after a leading 0. A number outside the 32-bit range becomes the nearest limit. "0x" without a
// digit reads as 0 and leaves the x; a lone sign is no number. On success `text` begins just behind
// the number; without a number the answer is empty and `text` is unchanged.
[[nodiscard]] std::optional<int> ScanInt(std::string_view& text);

// The same for a caller who does not care what follows the number.
[[nodiscard]] std::optional<int> ReadInt(std::string_view text);
