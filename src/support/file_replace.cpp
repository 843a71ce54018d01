#include "support/file_replace.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <tuple>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/files.h"

namespace {

constexpr ::mode_t NEW_FILE_MODE = 0666;
constexpr ::mode_t PERMISSION_BITS = 07777;

// As long as it lives, a write past the limit on the size of files, or into a pipe that nobody
// reads any more, fails instead of ending the process.
class WriteSignalsOff {
public:
    WriteSignalsOff() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &sizeLimitBefore_);
        sigaction(SIGPIPE, &ignore, &pipeBefore_);
    }
    ~WriteSignalsOff() {
        sigaction(SIGXFSZ, &sizeLimitBefore_, nullptr);
        sigaction(SIGPIPE, &pipeBefore_, nullptr);
    }
    WriteSignalsOff(const WriteSignalsOff&) = delete;
    WriteSignalsOff& operator=(const WriteSignalsOff&) = delete;

private:
    struct sigaction sizeLimitBefore_ {};
    struct sigaction pipeBefore_ {};
};

FileReplaced SayNotOpened(const std::string& path) {
    PrintFileOpenError(path, FILE_WRITE_MODE);
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
    std::FILE* file = nullptr;
    if (FileOpenToWrite(path, file) != 0) {
        return FileReplaced::NotOpened;
    }
    const bool isWritten = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    return std::fclose(file) == 0 && isWritten ? FileReplaced::Done : FileReplaced::NotWritten;
}

// The errors of a folder or file that may not be changed, as against one that has no room. A file
// that is a mount point of its own is busy.
bool IsForbidden(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
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

// What stands under a name. The answer is empty when nothing does, and when that cannot be told.
using Status = std::optional<struct stat>;

Status StatusOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? Status(status) : std::nullopt;
}

// The file that is to take the place of the earlier one. It has no name as long as it is being
// filled, where the file system can do that: nothing stays behind when the process is killed.
struct NewFile {
    int Handle = -1;
    std::string Name;  // empty: none so far
};

NewFile OpenNameless(const std::string& folder) {
    return {open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, NEW_FILE_MODE), ""};
}

// The beginning of a short name of its own: one made from the file's name could become too long.
std::string NewName(const std::string& folder) {
    return folder + "/.talurex-";
}

NewFile OpenNamed(const std::string& folder) {
    std::string name = NewName(folder) + "XXXXXX";
    const int handle = mkostemp(name.data(), O_CLOEXEC);
    return {handle, name};
}

// Gives a name to a file that has none. Answers whether it has one now.
bool GiveName(const std::string& folder, NewFile& file) {
    constexpr int MAX_TRIES = 100;
    const std::string handle = "/proc/self/fd/" + std::to_string(file.Handle);
    const std::string name = NewName(folder) + std::to_string(getpid()) + '-';
    for (int i = 0; i < MAX_TRIES && file.Name.empty(); ++i) {
        const std::string attempt = name + std::to_string(i);
        if (linkat(AT_FDCWD, handle.c_str(), AT_FDCWD, attempt.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            file.Name = attempt;
        } else if (errno != EEXIST) {
            break;
        }
    }
    return !file.Name.empty();
}

// Writes the content to a new file that is to take the place of `earlier`, if there is one. Answers
// whether all of it is on the disk. Owner and permissions are given as far as the file system and
// our rights allow.
bool FillNewFile(int file, std::string_view content, const Status& earlier) {
    if (earlier) {
        std::ignore = fchown(file, earlier->st_uid, earlier->st_gid);
    }
    std::ignore = fchmod(file, earlier ? earlier->st_mode & PERMISSION_BITS : ModeOfNewFile());
    return WriteAll(file, content) && Sync(file);
}

// Makes sure that a name which was given in the folder outlives a loss of power. What cannot be
// made sure of is left at that: the content is whole under either name.
void SyncFolder(const std::string& folder) {
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        std::ignore = fsync(handle);
        close(handle);
    }
}

// How far a new file came. When it has failed, errno tells why.
enum class Renamed { Done, NotFilled, NotNamed, NotRenamed };

// Fills the open file and gives it the name of the target. Nothing is left of it on failure.
Renamed MakeTarget(NewFile file, const std::string& folder, const std::string& target,
                   std::string_view content, const Status& earlier) {
    const bool isFilled = FillNewFile(file.Handle, content, earlier);
    const bool isNamed = isFilled && (!file.Name.empty() || GiveName(folder, file));
    const bool isClosed = close(file.Handle) == 0;
    if (isNamed && isClosed && rename(file.Name.c_str(), target.c_str()) == 0) {
        SyncFolder(folder);
        return Renamed::Done;
    }
    const int error = errno;
    if (!file.Name.empty()) {
        unlink(file.Name.c_str());
    }
    errno = error;
    if (!isFilled || !isClosed) {
        return Renamed::NotFilled;
    }
    return isNamed ? Renamed::NotRenamed : Renamed::NotNamed;
}

// Replaces the regular file `earlier`, or makes a new one where there is none.
FileReplaced ReplaceByRename(const std::string& path, std::string_view content,
                             const Status& earlier) {
    const std::filesystem::path target = FollowLinks(path);
    const std::string folder = target.has_parent_path() ? target.parent_path().string() : ".";
    NewFile file = OpenNameless(folder);
    Renamed result = Renamed::NotNamed;
    if (file.Handle >= 0) {
        result = MakeTarget(file, folder, target.string(), content, earlier);
    }
    if (result == Renamed::NotNamed) {
        file = OpenNamed(folder);
        if (file.Handle < 0 && !earlier) {
            return SayNotOpened(path);
        }
        result = file.Handle < 0 ? Renamed::NotRenamed
                                 : MakeTarget(file, folder, target.string(), content, earlier);
    }
    if (result == Renamed::NotRenamed && earlier && IsForbidden(errno)) {
        return ReplaceInPlace(path, content);
    }
    return result == Renamed::Done ? FileReplaced::Done : FileReplaced::NotWritten;
}

}  // namespace

FileReplaced FileReplace(const std::string& path, std::string_view content) {
    const WriteSignalsOff writeSignalsOff;
    const Status earlier = StatusOf(path);
    if (!earlier && errno == ELOOP) {
        return SayNotOpened(path);  // links that lead in a circle lead to no file
    }
    if (earlier && !S_ISREG(earlier->st_mode)) {
        return WriteDirectly(path, content);
    }
    if (earlier && !IsWritable(path)) {
        return SayNotOpened(path);
    }
    return ReplaceByRename(path, content, earlier);
}
