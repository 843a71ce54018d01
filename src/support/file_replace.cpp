#include "support/file_replace.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <tuple>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/files.h"

namespace {

constexpr ::mode_t NEW_FILE_MODE = 0666;
constexpr ::mode_t PERMISSION_BITS = 07777;

// As long as it lives, a write past the limit on the size of files fails instead of ending the
// process.
class SizeLimitSignalOff {
public:
    SizeLimitSignalOff() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &before_);
    }
    ~SizeLimitSignalOff() { sigaction(SIGXFSZ, &before_, nullptr); }
    SizeLimitSignalOff(const SizeLimitSignalOff&) = delete;
    SizeLimitSignalOff& operator=(const SizeLimitSignalOff&) = delete;

private:
    struct sigaction before_ {};
};

FileReplaced SayNotOpened(const std::string& path) {
    PrintFileOpenError(path, "wb");
    return FileReplaced::NotOpened;
}

// Answers whether all of it was written.
bool WriteAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ::ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

// Writes to what is there already, without any promise about its earlier content.
FileReplaced WriteDirectly(const std::string& path, std::string_view content) {
    std::fflush(stdout);  // it may be the same device
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, NEW_FILE_MODE);
    if (file < 0) {
        return SayNotOpened(path);
    }
    const bool written = WriteAll(file, content);
    return close(file) == 0 && written ? FileReplaced::Done : FileReplaced::NotWritten;
}

// The errors of a folder or file that may not be changed, as against one that has no room.
bool IsForbidden(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

bool IsWritable(const std::string& path) {
    const int file = open(path.c_str(), O_WRONLY);
    return file >= 0 && close(file) == 0;
}

// The file that a chain of symbolic links leads to, whether it exists or not.
std::filesystem::path FollowLinks(const std::string& path) {
    constexpr int MAX_LINKS = 40;
    std::filesystem::path target = path;
    for (int i = 0; i < MAX_LINKS; ++i) {
        std::error_code noLink;
        const std::filesystem::path next = std::filesystem::read_symlink(target, noLink);
        if (noLink) {
            break;
        }
        target = target.parent_path() / next;  // an absolute link stands for itself
    }
    return target;
}

// The permissions of a file that is created anew.
::mode_t ModeOfNewFile() {
    const ::mode_t mask = umask(0);
    umask(mask);
    return NEW_FILE_MODE & ~mask;
}

// Answers false when not all that was written has reached the disk. Some file systems cannot tell.
bool Sync(int file) {
    return fsync(file) == 0 || errno == EINVAL || errno == ENOSYS;
}

// For a file that may be written in a folder that may not: writes over the earlier content, and
// puts it back when the new one does not fit. Nothing is cut off before all is written, so that the
// room for putting back is there.
FileReplaced ReplaceInPlace(const std::string& path, std::string_view content) {
    std::ifstream source(path, std::ios::binary);
    std::ostringstream earlier;
    earlier << source.rdbuf();
    const int file = source ? open(path.c_str(), O_WRONLY) : -1;
    if (file < 0) {
        return FileReplaced::NotWritten;
    }
    bool written = WriteAll(file, content) && Sync(file) &&
                   ftruncate(file, static_cast<::off_t>(content.size())) == 0;
    if (!written && lseek(file, 0, SEEK_SET) == 0 && WriteAll(file, earlier.str())) {
        std::ignore = ftruncate(file, static_cast<::off_t>(earlier.str().size()));
    }
    written = close(file) == 0 && written;
    return written ? FileReplaced::Done : FileReplaced::NotWritten;
}

// Writes the content to the open new file that is to take the place of `earlier`; its mode is 0
// when there is none. Answers whether all of it is on the disk. Owner and permissions are given as
// far as the file system and our rights allow.
bool FillNewFile(int file, std::string_view content, const struct stat& earlier) {
    const bool replaces = earlier.st_mode != 0;
    if (replaces) {
        std::ignore = fchown(file, earlier.st_uid, earlier.st_gid);
    }
    std::ignore = fchmod(file, replaces ? earlier.st_mode & PERMISSION_BITS : ModeOfNewFile());
    return WriteAll(file, content) && Sync(file);
}

// Replaces the regular file `earlier` (its mode is 0 when there is none).
FileReplaced ReplaceByRename(const std::string& path, std::string_view content,
                             const struct stat& earlier) {
    const bool exists = earlier.st_mode != 0;
    const std::filesystem::path target = FollowLinks(path);
    // A short name of its own: one made from the file's name could become too long.
    std::string newPath = (target.parent_path() / ".talurex-XXXXXX").string();
    const int file = mkostemp(newPath.data(), O_CLOEXEC);
    if (file < 0) {
        if (!exists) {
            return SayNotOpened(path);
        }
        return IsForbidden(errno) ? ReplaceInPlace(path, content) : FileReplaced::NotWritten;
    }
    bool filled = FillNewFile(file, content, earlier);
    filled = close(file) == 0 && filled;
    if (filled && rename(newPath.c_str(), target.c_str()) == 0) {
        return FileReplaced::Done;
    }
    const int error = errno;
    unlink(newPath.c_str());
    return filled && exists && IsForbidden(error) ? ReplaceInPlace(path, content)
                                                  : FileReplaced::NotWritten;
}

}  // namespace

FileReplaced FileReplace(const std::string& path, std::string_view content) {
    const SizeLimitSignalOff sizeLimitSignalOff;
    struct stat earlier {};
    const bool exists = stat(path.c_str(), &earlier) == 0;
    if (exists && !S_ISREG(earlier.st_mode)) {
        return WriteDirectly(path, content);
    }
    if (exists && !IsWritable(path)) {
        return SayNotOpened(path);
    }
    return ReplaceByRename(path, content, earlier);
}
