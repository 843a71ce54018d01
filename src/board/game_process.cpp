#include "board/game_process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace asio = boost::asio;
namespace fs = std::filesystem;
using boost::system::error_code;

bool IsProgram(const fs::path& path) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) && access(path.c_str(), X_OK) == 0;
}

// What is the same for every program that is started: signals as a shell gives them, and a process
// group of its own, so that a Ctrl-C in the terminal reaches this program alone.
struct SpawnAttributes {
    SpawnAttributes() {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&Value);
        posix_spawnattr_setsigmask(&Value, &none);
        posix_spawnattr_setsigdefault(&Value, &all);
        posix_spawnattr_setpgroup(&Value, 0);
        posix_spawnattr_setflags(&Value, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF |
                                             POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&Value); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    posix_spawnattr_t Value{};
};

struct FileActions {
    FileActions() { posix_spawn_file_actions_init(&Value); }
    ~FileActions() { posix_spawn_file_actions_destroy(&Value); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    posix_spawn_file_actions_t Value{};
};

// Answers the error number, 0 for none.
int Spawn(const std::vector<std::string>& command, const FileActions& actions, pid_t& id) {
    std::vector<std::string> words = command;
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    const SpawnAttributes attributes;
    return posix_spawnp(&id, pointers[0], &actions.Value, &attributes.Value, pointers.data(),
                        environ);
}

void EndWhenAllIsRead(GameProcess& game) {
    if (game.OutputEnded && game.Ended && game.Id != 0) {
        game.Id = 0;
        game.OnEnd(game.Status);
    }
}

int StatusOf(int waited) {
    return WIFSIGNALED(waited) ? 128 + WTERMSIG(waited) : WEXITSTATUS(waited);
}

// One signal may stand for several children; those that nobody waits for are only buried.
void AwaitEnd(GameProcess& game) {
    game.ChildEnded.async_wait([&game](const error_code& failed, int) {
        if (failed) {
            return;
        }
        int waited = 0;
        for (pid_t id = 0; (id = waitpid(-1, &waited, WNOHANG)) > 0;) {
            if (id == game.Id) {
                game.Ended = true;
                game.Status = StatusOf(waited);
            }
        }
        EndWhenAllIsRead(game);
        AwaitEnd(game);
    });
}

void WriteUnwritten(GameProcess& game) {
    if (game.Unwritten.empty() || !game.Input.is_open()) {
        return;
    }
    game.Writing = std::exchange(game.Unwritten, "");
    asio::async_write(game.Input, asio::buffer(game.Writing),
                      [&game](const error_code&, std::size_t) {
                          // That nobody reads any more shows in the end of the child.
                          game.Writing.clear();
                          WriteUnwritten(game);
                      });
}

}  // namespace

std::string FindTalurex(std::string& searched) {
    std::error_code failed;
    const fs::path self = fs::read_symlink("/proc/self/exe", failed);
    std::vector<fs::path> folders;
    if (!failed) {
        folders.push_back(self.parent_path());
    }
    const char* path = std::getenv("PATH");
    std::string_view rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const std::string_view folder = rest.substr(0, end);
        folders.emplace_back(folder.empty() ? "." : folder);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    for (const fs::path& folder : folders) {
        if (IsProgram(folder / "talurex")) {
            return fs::absolute(folder / "talurex").string();
        }
        searched += "\n  " + folder.string();
    }
    return "";
}

std::string StartGame(GameProcess& game, const std::string& program,
                      const std::vector<std::string>& arguments) {
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
        return std::strerror(errno);
    }
    game.Input.assign(input[1]);
    game.Output.assign(output[0]);
    FileActions actions;
    posix_spawn_file_actions_adddup2(&actions.Value, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions.Value, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions.Value, output[1], STDERR_FILENO);
    std::vector<std::string> command = {program};
    command.insert(command.end(), arguments.begin(), arguments.end());
    AwaitEnd(game);
    const int failed = Spawn(command, actions, game.Id);
    close(input[0]);
    close(output[1]);
    if (failed != 0) {
        game.Id = 0;
        return std::strerror(failed);
    }
    AwaitOutput(game);
    return "";
}

void AwaitOutput(GameProcess& game) {
    if (game.Awaiting || game.OutputEnded || !game.Output.is_open()) {
        return;
    }
    game.Awaiting = true;
    game.Output.async_read_some(asio::buffer(game.Bytes),
                                [&game](const error_code& failed, std::size_t count) {
                                    game.Awaiting = false;
                                    if (failed) {
                                        game.OutputEnded = true;
                                        EndWhenAllIsRead(game);
                                    } else {
                                        game.OnOutput(std::string_view(game.Bytes.data(), count));
                                    }
                                });
}

void WriteToGame(GameProcess& game, std::string_view bytes) {
    game.Unwritten += bytes;
    if (game.Writing.empty()) {
        WriteUnwritten(game);
    }
}

void CloseGameInput(GameProcess& game) {
    error_code ignored;
    game.Input.close(ignored);
}

void SignalGame(const GameProcess& game, int number) {
    if (game.Id != 0 && !game.Ended) {
        kill(game.Id, number);
    }
}

bool StartHelper(const std::vector<std::string>& command) {
    FileActions actions;
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        posix_spawn_file_actions_addopen(&actions.Value, descriptor, "/dev/null", O_RDWR, 0);
    }
    pid_t id = 0;
    return Spawn(command, actions, id) == 0;
}
