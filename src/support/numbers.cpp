#include "support/numbers.h"

#include <cstddef>
#include <cstdint>

#include "support/text.h"

namespace {

constexpr int NO_DIGIT = 99;

// The worth of a digit in any base up to 16, or NO_DIGIT.
int DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return NO_DIGIT;
}

int DigitAt(std::string_view text, std::size_t i) {
    return i < text.size() ? DigitValue(text[i]) : NO_DIGIT;
}

}  // namespace

std::optional<int> ScanInt(std::string_view& text) {
    std::string_view rest = text;
    while (!rest.empty() && IsScanSpace(rest.front())) {
        rest.remove_prefix(1);
    }
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+')) {
        rest.remove_prefix(1);
    }
    int base = 10;
    if (rest.starts_with('0')) {
        const bool hexadecimal = rest.size() > 1 && (rest[1] == 'x' || rest[1] == 'X');
        base = hexadecimal && DigitAt(rest, 2) < 16 ? 16 : 8;
        if (base == 16) {
            rest.remove_prefix(2);
        }
    }
    if (DigitAt(rest, 0) >= base) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (; DigitAt(rest, 0) < base; rest.remove_prefix(1)) {
        number = number * base + DigitAt(rest, 0);
        if (number > INT_HIGHEST) {
            number = static_cast<std::int64_t>(INT_HIGHEST) + 1;  // enough to know on which side
        }
    }
    text = rest;
    if (negative) {
        return static_cast<int>(-number);
    }
    return static_cast<int>(number > INT_HIGHEST ? INT_HIGHEST : number);
}

std::optional<int> ReadInt(std::string_view text) {
    return ScanInt(text);
}
