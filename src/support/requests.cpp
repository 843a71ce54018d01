#include "support/requests.h"

std::atomic<int> Requests = 0;

void MakeRequests(int requests) {
    Requests.fetch_or(requests);
}

bool IsRequested(int requests) {
    return (Requests.load() & requests) != 0;
}

void DropRequests(int requests) {
    Requests.fetch_and(~requests);
}

bool TakeRequests(int requests) {
    return (Requests.fetch_and(~requests) & requests) != 0;
}
