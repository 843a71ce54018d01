#include "terminal/signals.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <poll.h>
#include <unistd.h>

#include "support/requests.h"

namespace {

struct Signal {
    int Number;
    Request Bit;
};
constexpr std::array TERMINAL_SIGNALS = {
    Signal{SIGINT, REQUEST_INTERRUPT},
    Signal{SIGHUP, REQUEST_HANG_UP},
    Signal{SIGTERM, REQUEST_TERMINATE},
};
constexpr int TERMINAL_REQUESTS = REQUEST_INTERRUPT | REQUEST_HANG_UP | REQUEST_TERMINATE;

void Note(int number) {
    int bit = REQUEST_MOVE_NOW;
    for (const Signal& signal : TERMINAL_SIGNALS) {
        bit = signal.Number == number ? signal.Bit : bit;
    }
    MakeRequests(bit);
}

// `flags` with SA_RESTART leaves what the process waits for undisturbed.
void Listen(int number, int flags) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler == SIG_IGN && number != SIGUSR1) {
        return;
    }
    struct sigaction note {};
    note.sa_handler = Note;
    note.sa_flags = flags;
    sigaction(number, &note, nullptr);
}

}  // namespace

void ListenForMoveNow() {
    Listen(SIGUSR1, SA_RESTART);
}

void ListenToTerminal() {
    // Without SA_RESTART: a pipe that nobody opens at the other end can be given up.
    for (const Signal& signal : TERMINAL_SIGNALS) {
        Listen(signal.Number, 0);
    }
}

int EndingSignal() {
    if (IsRequested(REQUEST_HANG_UP)) {
        return SIGHUP;
    }
    return IsRequested(REQUEST_TERMINATE) ? SIGTERM : 0;
}

bool WaitForInput() {
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    for (const Signal& signal : TERMINAL_SIGNALS) {
        sigaddset(&held, signal.Number);
    }
    sigprocmask(SIG_BLOCK, &held, &before);
    pollfd input = {.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    bool isInterrupted = true;
    while (isInterrupted && !IsRequested(TERMINAL_REQUESTS)) {
        // This lets the signals in as long as it waits.
        isInterrupted = ppoll(&input, 1, nullptr, &before) < 0 && errno == EINTR;
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return !IsRequested(TERMINAL_REQUESTS);
}
