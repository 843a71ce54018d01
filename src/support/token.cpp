#include "support/token.h"

#include <array>

#include <sys/random.h>

#include "support/fatal.h"

std::string NewToken() {
    constexpr char DIGITS[] = "0123456789abcdef";
    std::array<unsigned char, 24> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        ErrorExit("NewToken: error: the system has no random numbers\n");
    }
    std::string token;
    for (const unsigned char byte : bytes) {
        token += DIGITS[byte / 16];
        token += DIGITS[byte % 16];
    }
    return token;
}

bool IsToken(std::string_view token, std::string_view text) {
    if (text.size() != token.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        difference |= static_cast<unsigned char>(text[i]) ^ static_cast<unsigned char>(token[i]);
    }
    return difference == 0;
}
