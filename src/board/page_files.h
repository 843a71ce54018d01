// The files of the page, put into the program when it is built.
#pragma once

#include <span>
#include <string_view>

struct PageFile {
    std::string_view Name;
    std::string_view Content;
};

[[nodiscard]] std::span<const PageFile> PageFiles();
