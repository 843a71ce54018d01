// Writing a whole file without putting its earlier content at risk.
#pragma once

#include <string>
#include <string_view>

enum class FileReplaced {
    Done,
    NotOpened,   // there is no such file to write to, and none can be made
    NotWritten,  // the disk is full, or the like: an earlier file is as it was
};

// Whether an end of the machine, and not only of the program, is to leave one of the two contents
// whole: that waits for the disk.
enum class Durability { InMemory, OnDisk };

// Makes `content` the content of the file. It is written to a new file in the same folder that then
// takes its name, so that an earlier file is replaced at once or not at all; its permissions and,
// where allowed, its owner are kept. A symbolic link stays, and the file it leads to is replaced;
// links in a circle lead to no file that could be opened. What is no regular file, a device or a
// pipe, is written to directly. A file in a folder that may not be changed, and one that is a mount
// point of its own, is written over, and its content put back when the new one does not fit: the
// one case in which an end of the process midway leaves neither. Prints nothing.
[[nodiscard]] FileReplaced FileReplace(const std::string& path, std::string_view content,
                                       Durability durability = Durability::OnDisk);
