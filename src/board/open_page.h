// The way of the page into the user's browser: a file that only the user can read, since an address
// on a command line could be read by all. It goes with this object.
#pragma once

#include <string>

class PageOpener {
public:
    PageOpener() = default;
    ~PageOpener();
    PageOpener(const PageOpener&) = delete;
    PageOpener& operator=(const PageOpener&) = delete;

    // Opens the address in the browser; does nothing where there is no screen. Answers false when
    // that failed.
    bool Open(const std::string& address);

private:
    std::string file_;
};
