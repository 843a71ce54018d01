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
#include "support/output.h"

namespace {

constexpr ::mode_t NEW_FILE_MODE = 0666;  // less what the process masks
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
    FlushOutput();  // it may be the same device
    std::FILE* file = std::fopen(path.c_str(), FILE_WRITE_MODE);
    if (file == nullptr) {
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

// Answers false when what was written was to reach the disk and has not. Some file systems cannot
// tell.
bool Sync(int file, Durability durability) {
    return durability == Durability::InMemory || fsync(file) == 0 || errno == EINVAL ||
           errno == ENOSYS;
}

// For a file that may be written in a folder that may not: writes over the earlier content, and
// puts it back when the new one does not fit. Nothing is cut off before all is written, so that the
// room for putting back is there.
FileReplaced ReplaceInPlace(const std::string& path, std::string_view content,
                            Durability durability) {
    std::ifstream source(path, std::ios::binary);
    std::ostringstream earlier;
    earlier << source.rdbuf();
    const int file = source ? open(path.c_str(), O_WRONLY) : -1;
    if (file < 0) {
        return FileReplaced::NotWritten;
    }
    bool written = WriteAll(file, content) && Sync(file, durability) &&
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

// Tries short names of our own in the folder, one made from the file's name could become too long,
// until `take` answers other than EEXIST. Answers the name, or an empty text when none was taken.
template <typename Take>
std::string TakeNewName(const std::string& folder, Take take) {
    constexpr int MAX_TRIES = 100;
    const std::string name = folder + "/.talurex-" + std::to_string(getpid()) + '-';
    for (int i = 0; i < MAX_TRIES; ++i) {
        std::string attempt = name + std::to_string(i);
        if (take(attempt.c_str())) {
            return attempt;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return "";
}

NewFile OpenNamed(const std::string& folder) {
    NewFile file;
    file.Name = TakeNewName(folder, [&file](const char* name) {
        file.Handle = open(name, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, NEW_FILE_MODE);
        return file.Handle >= 0;
    });
    return file;
}

// Gives a name to a file that has none. Answers whether it has one now.
bool GiveName(const std::string& folder, NewFile& file) {
    const std::string handle = "/proc/self/fd/" + std::to_string(file.Handle);
    file.Name = TakeNewName(folder, [&handle](const char* name) {
        return linkat(AT_FDCWD, handle.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
    return !file.Name.empty();
}

// What is to be written, and in place of what.
struct Replacement {
    std::string_view Content;
    Status Earlier;
    Durability HowSafe;
};

// Writes the content to a new file. Answers whether all of it is there. Owner and permissions of
// the earlier one are given as far as the file system and our rights allow.
bool FillNewFile(int file, const Replacement& replacement) {
    if (replacement.Earlier) {
        std::ignore = fchown(file, replacement.Earlier->st_uid, replacement.Earlier->st_gid);
        std::ignore = fchmod(file, replacement.Earlier->st_mode & PERMISSION_BITS);
    }
    return WriteAll(file, replacement.Content) && Sync(file, replacement.HowSafe);
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
                   const Replacement& replacement) {
    const bool isFilled = FillNewFile(file.Handle, replacement);
    const bool isNamed = isFilled && (!file.Name.empty() || GiveName(folder, file));
    const bool isClosed = close(file.Handle) == 0;
    if (isNamed && isClosed && rename(file.Name.c_str(), target.c_str()) == 0) {
        if (replacement.HowSafe == Durability::OnDisk) {
            SyncFolder(folder);
        }
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

// Replaces the earlier regular file, or makes a new one where there is none.
FileReplaced ReplaceByRename(const std::string& path, const Replacement& replacement) {
    const std::filesystem::path target = FollowLinks(path);
    const std::string folder = target.has_parent_path() ? target.parent_path().string() : ".";
    NewFile file = OpenNameless(folder);
    Renamed result = Renamed::NotNamed;
    if (file.Handle >= 0) {
        result = MakeTarget(file, folder, target.string(), replacement);
    }
    if (result == Renamed::NotNamed) {
        file = OpenNamed(folder);
        if (file.Handle < 0 && !replacement.Earlier) {
            return FileReplaced::NotOpened;
        }
        result = file.Handle < 0 ? Renamed::NotRenamed
                                 : MakeTarget(file, folder, target.string(), replacement);
    }
    if (result == Renamed::NotRenamed && replacement.Earlier && IsForbidden(errno)) {
        return ReplaceInPlace(path, replacement.Content, replacement.HowSafe);
    }
    return result == Renamed::Done ? FileReplaced::Done : FileReplaced::NotWritten;
}

}  // namespace

FileReplaced FileReplace(const std::string& path, std::string_view content, Durability durability) {
    const WriteSignalsOff writeSignalsOff;
    const Status earlier = StatusOf(path);
    if (!earlier && errno == ELOOP) {
        return FileReplaced::NotOpened;  // links that lead in a circle lead to no file
    }
    if (earlier && !S_ISREG(earlier->st_mode)) {
        return WriteDirectly(path, content);
    }
    if (earlier && !IsWritable(path)) {
        return FileReplaced::NotOpened;
    }
    return ReplaceByRename(path, {content, earlier, durability});
}
