#include "support/file_replace.h"

#include <csignal>
#include <functional>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/scratch_folder.h"

namespace {

constexpr int NOT_POSSIBLE_HERE = 77;

// Runs `body`, which answers an exit status, in a process of its own, so that limits, mounts and
// users changed there stay there. Answers the exit status, or -1 when it was killed.
int InChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// As a user without rights of his own, also when the tests are run by root.
bool BecomeOrdinaryUser() {
    return geteuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
}

unsigned Permissions(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 ? info.st_mode & 07777u : 0u;
}

TEST(FileReplace, WritesNewFilesAndReplacesOldOnes) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.tlx");
    const mode_t mask = umask(027);
    EXPECT_EQ(FileReplaced::Done, FileReplace(file, "first and longer\n"));
    umask(mask);
    EXPECT_EQ(0640u, Permissions(file));
    chmod(file.c_str(), 0604);
    EXPECT_EQ(FileReplaced::Done, FileReplace(file, std::string_view("a\0b", 3)));
    EXPECT_EQ(std::string("a\0b", 3), ReadFile(file));
    EXPECT_EQ(0604u, Permissions(file));
    EXPECT_EQ(1, folder.NumEntries());
}

TEST(FileReplace, LinksStayAndTheirTargetsAreReplaced) {
    const ScratchFolder folder;
    mkdir(folder.File("games").c_str(), 0755);
    ASSERT_EQ(0, symlink("games/second.tlx", folder.File("first.tlx").c_str()));
    ASSERT_EQ(0, symlink("real.tlx", folder.File("games/second.tlx").c_str()));
    for (const std::string_view content : {"new", "newer"}) {  // the target is missing at first
        EXPECT_EQ(FileReplaced::Done, FileReplace(folder.File("first.tlx"), content));
        EXPECT_EQ(content, ReadFile(folder.File("games/real.tlx")));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("first.tlx")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("games/second.tlx")));
}

TEST(FileReplace, LinksInACircleAreRefused) {
    const ScratchFolder folder;
    ASSERT_EQ(0, symlink("b.tlx", folder.File("a.tlx").c_str()));
    ASSERT_EQ(0, symlink("a.tlx", folder.File("b.tlx").c_str()));
    EXPECT_EQ(FileReplaced::NotOpened, FileReplace(folder.File("a.tlx"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("a.tlx")));
    EXPECT_EQ(2, folder.NumEntries());
}

TEST(FileReplace, MountPointIsReplacedInPlace) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.tlx");
    WriteFile(file, "hidden");
    WriteFile(folder.File("mounted"), "a long old content");
    const int result = InChild([&] {
        if (unshare(CLONE_NEWNS) != 0 ||
            mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount(folder.File("mounted").c_str(), file.c_str(), nullptr, MS_BIND, nullptr) != 0) {
            return NOT_POSSIBLE_HERE;
        }
        return FileReplace(file, "new") == FileReplaced::Done && ReadFile(file) == "new" ? 0 : 1;
    });
    if (result == NOT_POSSIBLE_HERE) {
        GTEST_SKIP() << "no right to mount a file";
    }
    EXPECT_EQ(0, result);
    EXPECT_EQ("new", ReadFile(folder.File("mounted")));
    EXPECT_EQ("hidden", ReadFile(file));
    EXPECT_EQ(2, folder.NumEntries());
}

TEST(FileReplace, SizeLimitLosesNothing) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.tlx");
    WriteFile(file, "old");
    EXPECT_EQ(0, InChild([&] {
                  const rlimit limit = {100, 100};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  return FileReplace(file, std::string(1000, 'x')) == FileReplaced::NotWritten &&
                                 std::signal(SIGXFSZ, SIG_DFL) == SIG_DFL
                             ? 0
                             : 1;
              }));
    EXPECT_EQ("old", ReadFile(file));
    EXPECT_EQ(1, folder.NumEntries());
}

TEST(FileReplace, FullDiskLosesNothing) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.tlx");
    const int result = InChild([&] {
        if (unshare(CLONE_NEWNS) != 0 ||
            mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", folder.Path().c_str(), "tmpfs", 0, "size=64k") != 0) {
            return NOT_POSSIBLE_HERE;
        }
        WriteFile(file, "old");
        WriteFile(folder.File("filler"), std::string(100000, 'x'));
        const FileReplaced old = FileReplace(file, std::string(5000, 'y'));
        const FileReplaced fresh = FileReplace(folder.File("new.tlx"), std::string(5000, 'y'));
        const bool right = old == FileReplaced::NotWritten && fresh == FileReplaced::NotWritten &&
                           ReadFile(file) == "old" && folder.NumEntries() == 2;
        unlink(folder.File("filler").c_str());
        return right && FileReplace(file, std::string(5000, 'y')) == FileReplaced::Done ? 0 : 1;
    });
    if (result == NOT_POSSIBLE_HERE) {
        GTEST_SKIP() << "no right to mount a file system";
    }
    EXPECT_EQ(0, result);
}

TEST(FileReplace, WhatMayNotBeOpenedIsRefused) {
    const ScratchFolder folder;
    const std::string locked = folder.File("locked.tlx");
    WriteFile(locked, "old");
    chmod(folder.Path().c_str(), 0777);
    chmod(locked.c_str(), 0444);
    EXPECT_EQ(0, InChild([&] {
                  return !BecomeOrdinaryUser() ||
                                 FileReplace(locked, "new") == FileReplaced::NotOpened
                             ? 0
                             : 1;
              }));
    EXPECT_EQ("old", ReadFile(locked));
}

// A file that may be written, in a folder that may not.
TEST(FileReplace, FileInALockedFolderIsReplacedInPlace) {
    const ScratchFolder folder;
    const std::string file = folder.File("game.tlx");
    WriteFile(file, "a long old content");
    chmod(file.c_str(), 0666);
    chmod(folder.Path().c_str(), 0555);
    auto replaceAsUser = [&](std::size_t size, FileReplaced wanted) {
        return InChild([&] {
            const rlimit limit = {100, 100};
            setrlimit(RLIMIT_FSIZE, &limit);
            return !BecomeOrdinaryUser() || FileReplace(file, std::string(size, 'x')) == wanted ? 0
                                                                                                : 1;
        });
    };
    EXPECT_EQ(0, replaceAsUser(1000, FileReplaced::NotWritten));
    EXPECT_EQ("a long old content", ReadFile(file));
    EXPECT_EQ(0, replaceAsUser(3, FileReplaced::Done));
    EXPECT_EQ("xxx", ReadFile(file));
    chmod(folder.Path().c_str(), 0755);
}

TEST(FileReplace, DevicesAndPipesAreWrittenDirectly) {
    EXPECT_EQ(FileReplaced::NotWritten, FileReplace("/dev/full", "new"));
    EXPECT_EQ(FileReplaced::Done, FileReplace("/dev/null", "new"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    const ScratchFolder folder;
    const std::string pipe = folder.File("pipe.tlx");
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0666));
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(FileReplaced::Done, FileReplace(pipe, "new"));
    char content[10] = {};
    EXPECT_EQ(3, read(reader, content, sizeof content));
    EXPECT_STREQ("new", content);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));

    // A reader that goes away while it is written to: more than a pipe holds. One that has seen a
    // writer leave would not wait for the next, and the writer then for ever for a reader.
    const int next = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    close(reader);
    std::thread leaver([next] {
        pollfd written = {.fd = next, .events = POLLIN, .revents = 0};
        EXPECT_EQ(1, poll(&written, 1, 10'000));
        close(next);
    });
    EXPECT_EQ(FileReplaced::NotWritten, FileReplace(pipe, std::string(1 << 20, 'x')));
    leaver.join();
}

}  // namespace
