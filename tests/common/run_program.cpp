#include "common/run_program.h"

#include <cstdlib>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/fatal.h"

namespace {

void Redirect(const std::string& path, int flags, int descriptor) {
    const int file = open(path.c_str(), flags, 0600);
    if (file == -1 || dup2(file, descriptor) == -1) {
        _exit(126);
    }
    close(file);
}

}  // namespace

ProgramRun RunProgram(const std::vector<std::string>& command, const std::string& input,
                      const std::string& folder) {
    const ScratchFolder streams;
    WriteFile(streams.File("in"), input);
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        Redirect(streams.File("in"), O_RDONLY, 0);
        Redirect(streams.File("out"), O_WRONLY | O_CREAT, 1);
        Redirect(streams.File("err"), O_WRONLY | O_CREAT, 2);
        if (chdir(folder.c_str()) == 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    int status = 0;
    if (child == -1 || waitpid(child, &status, 0) != child) {
        ErrorExit("RunProgram: cannot run %s\n", command[0].c_str());
    }
    return {ReadFile(streams.File("out")), ReadFile(streams.File("err")),
            WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status)};
}
