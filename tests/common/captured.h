// What a piece of code prints.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/fatal.h"

template <typename Action>
std::string StdoutOf(Action action) {
    testing::internal::CaptureStdout();
    action();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

// Does what `main` does with an error that ends the program.
template <typename Action>
void EndAsMain(Action action) {
    try {
        action();
    } catch (const ProgramEnd& end) {
        std::exit(end.Status);
    }
}

template <typename Action>
std::string StderrOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}
