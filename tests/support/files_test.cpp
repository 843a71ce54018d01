#include "support/files.h"

#include <cstdio>
#include <string_view>

#include <gtest/gtest.h>

#include "common/captured.h"

namespace {

// A file that holds `text` and disappears when it is closed.
std::FILE* FileWith(std::string_view text) {
    std::FILE* file = std::tmpfile();
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    return file;
}

// Reads everything with FileReadLine: the lines, each in brackets.
std::string Lines(int maxLength, std::string_view text) {
    std::FILE* file = FileWith(text);
    std::string all;
    std::string line;
    for (int length = 0; (length = FileReadLine(maxLength, line, file)) >= 0;) {
        EXPECT_EQ(length, static_cast<int>(line.size()));
        all += '[' + line + ']';
    }
    FileClose(file);
    return all;
}

}  // namespace

TEST(Files, AreReadLineByLine) {
    EXPECT_EQ(Lines(9, ""), "");
    EXPECT_EQ(Lines(9, "one\n\ntwo\r\n"), "[one\n][\n][two\r\n]");
    EXPECT_EQ(Lines(9, "one\nlast"), "[one\n][last]");
    // A NUL byte ends the text of its line, not the file.
    EXPECT_EQ(Lines(9, std::string_view("a\0b\nc\n", 6)), "[a][c\n]");
}

// A line may hold one character less than the limit before its line feed.
TEST(Files, HaveALimitOnLines) {
    const std::string longest(199, 'x');
    EXPECT_EQ(Lines(200, longest + "\n" + longest), "[" + longest + "\n][" + longest + "]");
}

TEST(FilesDeathTest, HaveALimitOnLines) {
    const std::string tooLong(200, 'x');
    for (const std::string& text : {tooLong + "\n", tooLong, tooLong + tooLong}) {
        EXPECT_EXIT(Lines(200, text), testing::ExitedWithCode(1),
                    "^FileReadLine: Error: Input line too long \\(more than 200 chars\\)\n$");
    }
}

// Typed lines have no limit: what does not fit comes next.
TEST(Files, AreReadInPieces) {
    std::FILE* file = FileWith("abcdefgh\nij\nabcd\n");
    std::string piece;
    for (const char* expected : {"abcd", "efgh", "\n", "ij\n", "abcd", "\n"}) {
        EXPECT_TRUE(ReadPiece(4, piece, file));
        EXPECT_EQ(piece, expected);
    }
    EXPECT_FALSE(ReadPiece(4, piece, file));
    FileClose(file);
}

TEST(Files, ThatAreMissingAreReported) {
    std::FILE* file = stdout;
    EXPECT_EQ(StdoutOf([&file] { EXPECT_EQ(FileOpenToRead("/no/such/file", file), 1); }),
              "FileOpen: error: opening file (/no/such/file) with AccessMode (rb) failed !\n");
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(StdoutOf([&file] { EXPECT_EQ(FileOpenToWrite("/no/such/file", file), 1); }),
              "FileOpen: error: opening file (/no/such/file) with AccessMode (wb) failed !\n");
    ASSERT_EQ(FileOpenToRead("/dev/null", file), 0);
    EXPECT_NE(file, nullptr);
    EXPECT_EQ(FileClose(file), 0);
}

// The device is always full, which is noticed when what was written is flushed.
TEST(FilesDeathTest, ThatCannotBeClosedEndTheProcess) {
    const auto closeFullDevice = [] {
        std::FILE* file = nullptr;
        if (FileOpenToWrite("/dev/full", file) == 0) {
            std::fputs("text", file);
            FileClose(file);
        }
    };
    EXPECT_EXIT(closeFullDevice(), testing::ExitedWithCode(1),
                "^FileClose: error: closing of file failed !\n$");
}
