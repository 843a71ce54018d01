#include "support/random.h"

#include <cstdlib>
#include <ctime>
#include <tuple>

#include "support/fatal.h"
#include "support/numbers.h"

namespace {

int NoInit = 0;  // 1 once the generator is seeded: no other InitRandom is then allowed

}  // namespace

void InitRandom(int seed) {
    if (NoInit == 1) {
        ErrorExit("InitRandom: error: Only one call of InitRandom is allowed !\n");
    }
    auto start = static_cast<unsigned>(seed);
    if (seed <= 0) {
        const std::time_t now = std::time(nullptr);
        if (now < 0) {
            ErrorExit("InitRandom: error: call of time() failed !\n");
        }
        start = static_cast<unsigned>(now);
    }
    NoInit = 1;
    std::srand(start);
}

int RandomInt(int n) {
    // The largest draw gives a quotient of exactly 1.0, which must not lead to n itself.
    return Min(n - 1, static_cast<int>(RandomReal() * n));
}

double RandomReal() {
    return std::rand() / 2147483647.0;
}

void SkipRandom(std::int64_t count) {
    for (; count > 0; --count) {
        std::ignore = std::rand();
    }
}
