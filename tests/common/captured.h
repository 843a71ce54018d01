// What a piece of code prints.
#pragma once

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

template <typename Action>
std::string StdoutOf(Action action) {
    testing::internal::CaptureStdout();
    action();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

template <typename Action>
std::string StderrOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}
