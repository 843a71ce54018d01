#include "support/claim.h"

#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// A socket with a name that is in no folder: the system takes it back however the process ends, and
// nothing of it is left on the disk.
bool ClaimName(const std::string& name) {
    struct stat folder {};
    if (stat(".", &folder) != 0) {
        return false;
    }
    const std::string claim = "talurex-" + std::to_string(folder.st_dev) + '-' +
                              std::to_string(folder.st_ino) + '-' + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (claim.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(address.sun_path + 1, claim.data(), claim.size());  // behind a zero: in no folder
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + claim.size());
    if (handle >= 0 && bind(handle, reinterpret_cast<const sockaddr*>(&address), length) == 0) {
        return true;  // it stays open
    }
    if (handle >= 0) {
        close(handle);
    }
    return false;
}
